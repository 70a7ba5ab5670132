#include "host/picture/DipoleOverlay.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "host/paint/BitmapCanvas.h"

namespace host {

namespace {

// The slices that are asked of the module for one picture.
struct SliceRange {
  View view;
  int centre;
  int first;
  int last;
};

SliceRange rangeOf(const CDipoleFace8Import01_CTF& dipoles, const SliceGeometry& geometry, View view,
                   double position, double overlapMm) {
  const int centre = geometry.sliceAt(view, position);
  // The smallest part of a slice is forgiven, so that 0.3 mm go three times into 0.9 mm.
  const bool overlaps = dipoles.getShowDipole2DOverlap() != 0;
  const auto neighbours = overlaps ? static_cast<int>(overlapMm / geometry.mmPerPixel() + 1e-9) : 0;
  // An axial slice shows all from the origin up to it: the highest neighbour shows what the others do.
  const int first = view == View::axial ? centre + neighbours : centre - neighbours;
  return {view, centre, first, centre + neighbours};
}

Vector3 locationOf(const CDipoleszq& dipole) {
  return {dipole.m_location[0], dipole.m_location[1], dipole.m_location[2]};
}

// The side of a dipole's square in whole pixels, as the module takes it; 0 when there is nothing to see.
int squareSize(const CDipoleszq& dipole) {
  constexpr double largest = 32767.0;
  return dipole.m_size >= 1.0 ? static_cast<int>((std::min)(dipole.m_size, largest)) : 0;
}

bool isInShownSlices(const SliceGeometry& geometry, const SliceRange& range, double depth) {
  for (int slice = range.first; slice <= range.last; ++slice)
    if (geometry.slab(range.view, slice).holds(depth))
      return true;
  return false;
}

std::optional<Slab> shownDepths(const SliceGeometry& geometry, const SliceRange& range) {
  const Slab shown{geometry.slab(range.view, range.first).from, geometry.slab(range.view, range.last).to};
  if (shown.from > shown.to)
    return std::nullopt;
  return shown;
}

struct Square {
  SliceGeometry::Pixel corner;
  int size = 0;
};

// Sorts every dipole into the account; returns the squares that the module will draw.
std::vector<Square> takeStock(const CDipoleFace8Import01_CTF& dipoles, const SliceGeometry& geometry,
                              const SliceRange& range, double overlapMm, OverlayReport& report) {
  std::vector<Square> squares;
  const int slabAxis = axesOf(range.view).slab;
  const bool setShown = dipoles.isShowDipoleArray() != 0;
  const double closest = dipoles.getShowDipole2DOverlap() != 0 ? overlapMm : geometry.mmPerPixel() * 0.5;
  for (int index = 0; index < dipoles.m_totalDipoles; ++index) {
    const CDipoleszq* dipole = dipoles.getDipole(index);
    if (dipole == nullptr)
      continue;
    ++report.total;
    const Vector3 location = locationOf(*dipole);
    if (!isFinite(location)) {
      ++report.nowhere;
      continue;
    }
    const int size = squareSize(*dipole);
    const bool visible = setShown && dipole->m_display == 1 && size > 0;
    const double depth = location[slabAxis];
    if (!isInShownSlices(geometry, range, depth)) {
      if (visible && std::abs(depth - report.position) <= closest)
        ++report.withheld;
    } else if (!visible) {
      ++report.switchedOff;
    } else {
      squares.push_back({geometry.pixelOf(range.view, location), size});
      if (!geometry.holds(range.view, location))
        ++report.outside;
    }
  }
  report.drawn = static_cast<int>(squares.size());
  return squares;
}

// How far the squares are moved to the left and up: half their size when they share one, else not at all.
int centringShift(const std::vector<Square>& squares) {
  const auto otherSize = [&](const Square& square) { return square.size != squares.front().size; };
  if (squares.empty() || std::any_of(squares.begin(), squares.end(), otherSize))
    return 0;
  return (squares.front().size - 1) / 2;
}

std::optional<PixelBox> boxAround(const std::vector<Square>& squares, int shift, const Image& picture) {
  std::optional<PixelBox> box;
  for (const Square& square : squares) {
    const int left = std::clamp(square.corner.column - shift, 0, picture.width());
    const int top = std::clamp(square.corner.row - shift, 0, picture.height());
    const int right = std::clamp(square.corner.column - shift + square.size, 0, picture.width());
    const int bottom = std::clamp(square.corner.row - shift + square.size, 0, picture.height());
    if (!box)
      box = PixelBox{left, top, right, bottom};
    box = PixelBox{(std::min)(box->left, left), (std::min)(box->top, top), (std::max)(box->right, right),
                   (std::max)(box->bottom, bottom)};
  }
  return box;
}

}  // namespace

void drawSlice(CDipoleFace2On2DView& dipoles, CDC& dc, View view, int slice) {
  constexpr int pixelsPerCell = 1;
  switch (view) {
    case View::axial:
      dipoles.drawDipoleAxial(&dc, slice, pixelsPerCell);
      return;
    case View::coronal:
      dipoles.drawDipoleCoronal(&dc, slice, pixelsPerCell);
      return;
    case View::sagittal:
      dipoles.drawDipoleSagittal(&dc, slice, pixelsPerCell);
      return;
  }
}

OverlayReport drawDipoles(CDipoleFace8Import01_CTF& dipoles, const SliceGeometry& geometry, View view,
                          double position, double overlapMm, Image& picture) {
  constexpr double widestOverlap = 1000.0;
  if (!(overlapMm >= 0.0 && overlapMm <= widestOverlap))
    throw std::invalid_argument("the overlap must be 0 to 1000 mm");
  const SliceRange range = rangeOf(dipoles, geometry, view, position, overlapMm);
  OverlayReport report;
  report.view = view;
  report.position = geometry.slicePosition(view, range.centre);
  report.shown = shownDepths(geometry, range);
  const std::vector<Square> squares = takeStock(dipoles, geometry, range, overlapMm, report);
  if (squares.empty())
    return report;

  const int shift = centringShift(squares);
  report.squares = boxAround(squares, shift, picture);
  dipoles.setDimensionXYZ(geometry.pixels(0), geometry.pixels(1), geometry.pixels(2));
  dipoles.setSpaceXYZ(geometry.mmPerPixel(), geometry.mmPerPixel(), geometry.mmPerPixel());
  BitmapCanvas canvas(picture);
  canvas.dc().SetViewportOrg(-shift, -shift);
  for (int slice = range.first; slice <= range.last; ++slice)
    drawSlice(dipoles, canvas.dc(), view, slice);
  canvas.copyTo(picture);
  return report;
}

}  // namespace host
