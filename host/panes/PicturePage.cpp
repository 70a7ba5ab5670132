#include "host/panes/PicturePage.h"

#include <algorithm>
#include <cstddef>

#include "host/paint/PictureText.h"

namespace host {

namespace {

constexpr Rgb bandColour{168, 24, 32};

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) {
    if (!part.empty()) {
      text += (text.empty() ? "" : ", ") + part;
    }
  }
  return text;
}

TextBlock bandOf(const PageTexts& texts, int width, double scale) {
  TextBlock band(width);
  for (const std::string& text : texts.wrong) {
    if (!text.empty()) {
      band.add(headFont(scale), "WRONG: " + text, letterInk);
    }
  }
  return band;
}

TextBlock headerOf(const PageTexts& texts, int width, double scale) {
  TextBlock header(width);
  if (!texts.title.empty()) {
    header.add(headFont(scale), texts.title, ink);
  }
  if (!texts.patientId.empty()) {
    header.add(texts.title.empty() ? headFont(scale) : textFont(scale), "Patient " + texts.patientId, ink);
  }
  for (const std::string& file : texts.files) {
    if (!file.empty()) {
      header.add(textFont(scale), file, ink);
    }
  }
  if (const std::string settings = joined(texts.settings); !settings.empty()) {
    header.add(noteFont(scale), settings, quietInk);
  }
  return header;
}

}  // namespace

Image gridOf(const std::vector<std::vector<Image>>& rows, int gap) {
  std::vector<int> widths;
  std::vector<int> heights;
  for (const std::vector<Image>& row : rows) {
    heights.push_back(0);
    for (std::size_t column = 0; column < row.size(); ++column) {
      if (column == widths.size()) {
        widths.push_back(0);
      }
      widths[column] = (std::max)(widths[column], row[column].width());
      heights.back() = (std::max)(heights.back(), row[column].height());
    }
  }
  const auto total = [&](const std::vector<int>& extents) {
    int sum = extents.empty() ? 0 : gap * (static_cast<int>(extents.size()) - 1);
    for (const int extent : extents) {
      sum += extent;
    }
    return sum;
  };
  Image image(total(widths), total(heights), pictureBackground);
  int top = 0;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    int left = 0;
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      image.paste(rows[row][column], left, top);
      left += widths[column] + gap;
    }
    top += heights[row] + gap;
  }
  return image;
}

Image pageOf(const Image& content, const PageTexts& texts, double scale) {
  const int margin = scaledPixels(12.0, scale);
  const int gap = scaledPixels(lineGap, scale);
  const int width = (std::max)(content.width(), scaledPixels(360.0, scale));
  const TextBlock band = bandOf(texts, width, scale);
  const TextBlock header = headerOf(texts, width, scale);
  TextBlock footer(width);
  for (const CaptionLine& note : texts.notes) {
    footer.add(noteFont(scale), note.text, note.colour);
  }

  const int bandHeight = band.height() > 0 ? band.height() + 2 * gap : 0;
  const int headerTop = bandHeight + margin;
  const int contentTop = headerTop + header.height() + gap;
  const int footerTop = contentTop + content.height() + 2 * gap;
  Image image(width + 2 * margin, footerTop + footer.height() + margin, pictureBackground);
  image.fill({0, 0, image.width(), bandHeight}, bandColour);
  band.draw(image, margin, gap);
  header.draw(image, margin, headerTop);
  image.paste(content, margin + (width - content.width()) / 2, contentTop);
  footer.draw(image, margin, footerTop);
  return image;
}

Image fourPanes(const Image& axial, const Image& coronal, const Image& sagittal, const Image& scene,
                PageTexts texts, double scale) {
  const int gap = scaledPixels(4.0, scale);  // between the panes
  texts.notes.push_back({radiologicalNote, quietInk});
  texts.notes.push_back({headFrameNote, quietInk});
  return pageOf(gridOf({{axial, coronal}, {sagittal, scene}}, gap), texts, scale);
}

}  // namespace host
