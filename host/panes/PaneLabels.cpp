#include "host/panes/PaneLabels.h"

#include <algorithm>
#include <cstddef>

#include "host/paint/PictureText.h"
#include "host/text/PathText.h"

namespace host {

namespace {

// Which pixels are taken.
class TakenPixels {
 public:
  TakenPixels(int width, int height)
      : m_width(width),
        m_height(height),
        m_taken(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

  bool isFree(const PixelBox& box) const {
    if (box.left < 0 || box.top < 0 || box.right > m_width || box.bottom > m_height) {
      return false;
    }
    for (int row = box.top; row < box.bottom; ++row) {
      const auto first = m_taken.begin() + offset(box.left, row);
      if (std::find(first, first + box.width(), true) != first + box.width()) {
        return false;
      }
    }
    return true;
  }

  void take(const PixelBox& box) {
    const int left = std::clamp(box.left, 0, m_width);
    const int right = std::clamp(box.right, left, m_width);
    for (int row = (std::max)(box.top, 0); row < (std::min)(box.bottom, m_height); ++row) {
      std::fill_n(m_taken.begin() + offset(left, row), right - left, true);
    }
  }

 private:
  std::ptrdiff_t offset(int column, int row) const {
    return static_cast<std::ptrdiff_t>(row) * m_width + column;
  }

  int m_width;
  int m_height;
  std::vector<bool> m_taken;
};

}  // namespace

std::string labelOf(const CDipoleszq& dipole) {
  constexpr int longest = 32;
  if (dipole.m_label.IsEmpty()) {
    return "#" + std::to_string(dipole.m_number);
  }
  return utf8Of(dipole.m_label.GetLength() > longest ? dipole.m_label.Left(longest) + _T("...")
                                                     : dipole.m_label);
}

int drawLabels(Image& image, const std::vector<PaneLabel>& labels, int around, const SideLetters& letters,
               double scale) {
  const StrokeFont font = noteFont(scale);
  const int gap = scaledPixels(3.0, scale);
  TakenPixels taken(image.width(), image.height());
  const int clear = letterFont(scale).lineHeight() / 2;
  for (const PixelBox& letter : sideBoxes(image, letters, scale)) {
    taken.take({letter.left - clear, letter.top, letter.right + clear, letter.bottom});
  }
  for (const PaneLabel& label : labels) {
    taken.take({label.at.column - around, label.at.row - around, label.at.column + around + 1,
                label.at.row + around + 1});
  }
  int left = 0;
  for (const PaneLabel& label : labels) {
    const int width = font.width(label.text);
    const int height = font.lineHeight();
    const auto [column, row] = label.at;
    const int beside = around + gap;
    const PixelPoint corners[] = {{column + beside, row - height / 2},
                                  {column - beside - width, row - height / 2},
                                  {column - width / 2, row - beside - height},
                                  {column - width / 2, row + beside},
                                  {column + beside, row - beside - height},
                                  {column + beside, row + beside},
                                  {column - beside - width, row - beside - height},
                                  {column - beside - width, row + beside}};
    const auto boxAt = [&](const PixelPoint& corner) {
      return PixelBox{corner.column - 1, corner.row - 1, corner.column + width + 1, corner.row + height + 1};
    };
    const auto at = std::find_if(std::begin(corners), std::end(corners),
                                 [&](const PixelPoint& corner) { return taken.isFree(boxAt(corner)); });
    if (at == std::end(corners)) {
      ++left;
      continue;
    }
    taken.take(boxAt(*at));
    drawEdged(image, font, at->column, at->row, label.text, label.colour);
  }
  return left;
}

void noteLabelsLeftOut(PaneTexts& texts, int labels) {
  if (labels > 0) {
    texts.lines.push_back(
        {std::to_string(labels) + (labels == 1 ? " label has no room" : " labels have no room"), quietInk});
  }
}

}  // namespace host
