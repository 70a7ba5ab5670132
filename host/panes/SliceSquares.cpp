#include "host/panes/SliceSquares.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "host/paint/BitmapCanvas.h"
#include "host/paint/PictureText.h"
#include "host/picture/DisplayOverride.h"

namespace host {

namespace {

constexpr double endless = 1e6;  // mm, farther than any depth that a dipole can have
constexpr int pixelsPerCell = 1;

COLORREF colorRef(Rgb colour) {
  return RGB(colour.red, colour.green, colour.blue);
}

// Dark around a bright square, bright around a dark one: seen over bone as over the ventricles.
Rgb edgeColour(Rgb colour) {
  constexpr int dark = 3 * 60;
  return colour.red + colour.green + colour.blue < dark ? ink : edgeInk;
}

PixelBox boxAround(const PixelPoint& at, int size) {
  const int left = at.column - pixelsBefore(size);
  const int top = at.row - pixelsBefore(size);
  return {left, top, left + size, top + size};
}

// Which pixels of a picture are covered.
class Cover {
 public:
  explicit Cover(const Image& image) : m_width(image.width()), m_height(image.height()) {
    m_pixels.resize(image.pixels().size());
  }

  // False when the box was covered already, all that lies inside of the picture.
  bool add(const PixelBox& box) {
    const int left = std::clamp(box.left, 0, m_width);
    const int right = std::clamp(box.right, left, m_width);
    bool isNew = false;
    for (int row = (std::max)(box.top, 0); row < (std::min)(box.bottom, m_height); ++row) {
      const auto first = m_pixels.begin() + static_cast<std::ptrdiff_t>(row) * m_width + left;
      const auto end = first + (right - left);
      isNew = isNew || std::find(first, end, open) != end;
      std::fill(first, end, covered);
    }
    return isNew;
  }

 private:
  static constexpr std::uint8_t open = 0;
  static constexpr std::uint8_t covered = 1;

  int m_width;
  int m_height;
  std::vector<std::uint8_t> m_pixels;
};

// By the module, as it draws on one slice that holds all depths: the rule of its axial slices, which shows
// nothing below the origin, does not count.
void drawSquare(CDipoleszq& dipole, CDC& dc, const PaneGrid& grid, int size, Rgb colour) {
  const double mm = grid.mmPerPixel();
  const double half = grid.halfExtent();
  const DisplayOverride display(dipole, size, colorRef(colour));
  dipole.setDimensionXYZ(grid.cells(), grid.cells(), grid.cells());
  switch (grid.view()) {
    case View::axial:
      dipole.drawDipoleAxial(&dc, -endless, endless, pixelsPerCell, half, mm, half, mm);
      return;
    case View::coronal:
      dipole.drawDipoleCoronal(&dc, -endless, endless, pixelsPerCell, half, mm, half, mm);
      return;
    case View::sagittal:
      dipole.drawDipoleSagittal(&dc, -endless, endless, pixelsPerCell, half, mm, half, mm);
      return;
  }
}

}  // namespace

void drawSquares(Image& image, CDipoleFace9File& dipoles, const PaneGrid& grid,
                 const std::vector<SliceSquare>& squares, int size, int edge) {
  if (squares.empty()) {
    return;
  }
  const auto current = std::find_if(squares.begin(), squares.end(), [&](const SliceSquare& square) {
    return square.slot == dipoles.m_currentDipole;
  });
  // In the order of the slots, but nothing covers the current one.
  std::vector<const SliceSquare*> order;
  order.reserve(squares.size() + 1);
  for (const SliceSquare& square : squares) {
    order.push_back(&square);
  }
  if (current != squares.end()) {
    order.push_back(&*current);
  }
  // No edge covers a square.
  for (const SliceSquare* square : order) {
    image.fill(boxAround(square->at, size + 2 * edge), edgeColour(square->colour));
  }
  // In a full set most squares lie below others: the module need not draw what would not be seen.
  Cover cover(image);
  for (auto square = order.rbegin(); square != order.rend(); ++square) {
    if (!cover.add(boxAround((*square)->at, size))) {
      *square = nullptr;
    }
  }
  BitmapCanvas canvas(image);
  // The module hangs a square to the right of and below its pixel.
  canvas.dc().SetViewportOrg(-grid.origin().column - pixelsBefore(size),
                             -grid.origin().row - pixelsBefore(size));
  for (const SliceSquare* square : order) {
    if (square != nullptr) {
      drawSquare(*dipoles.m_dipoles[square->slot], canvas.dc(), grid, size, square->colour);
    }
  }
  canvas.copyTo(image);
}

}  // namespace host
