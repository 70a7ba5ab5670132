#include "host/panes/SlicePane.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

#include "host/dipoles/DipoleScene.h"
#include "host/dipoles/DipoleVisibility.h"
#include "host/head/HeadBoxOf.h"
#include "host/paint/BitmapCanvas.h"
#include "host/paint/PictureText.h"
#include "host/panes/PaneFiducials.h"
#include "host/panes/PaneLegend.h"
#include "host/panes/PaneWarnings.h"
#include "host/picture/DipoleOverlay.h"
#include "host/picture/DisplayOverride.h"
#include "host/picture/SliceCaption.h"

namespace host {

namespace {

constexpr double finest = 0.1;  // mm per pixel
constexpr double coarsest = 5.0;
constexpr double farthestMiddle = 300.0;  // mm
constexpr double farthestSlice = 1000.0;  // mm
constexpr int largestGlyph = 64;          // pixels
constexpr int edgePixels = 1;             // around a square
// Wider than any depth that a dipole can have: one slice holds them all.
constexpr double endlessSpacing = 1e6;  // mm
constexpr int pixelsPerCell = 1;
constexpr int leastWidthForLegend = 600;  // pixels; in the small panes it would take the head's room

double toleranceOf(const PaneContents& contents) {
  const double own = contents.settings.thinnestSlice * 0.5;
  if (contents.dipoles.getShowDipole2DOverlap() == 0)
    return own;
  return (std::max)(own, contents.settings.toleranceMm.value_or(std::numeric_limits<double>::infinity()));
}

Rgb colourOf(const PaneContents& contents, const CDipoleszq& dipole) {
  return contents.colours != nullptr ? contents.colours->colorOf(dipole) : ownColour(dipole);
}

COLORREF colorRef(Rgb colour) {
  return RGB(colour.red, colour.green, colour.blue);
}

// Dark around a bright square, bright around a dark one: seen over bone as over the ventricles.
Rgb edgeColour(Rgb colour) {
  constexpr int dark = 3 * 60;
  return colour.red + colour.green + colour.blue < dark ? ink : edgeInk;
}

// The module's volume: the pane's grid in the plane, one slice along the third axis.
void setVolume(CDipoleFace2On2DView& dipoles, const PaneGrid& grid) {
  Vector3 spacing{grid.mmPerPixel(), grid.mmPerPixel(), grid.mmPerPixel()};
  spacing[axesOf(grid.view()).slab] = endlessSpacing;
  const SliceGeometry& geometry = grid.geometry();
  dipoles.setDimensionXYZ(geometry.pixels(0), geometry.pixels(1), geometry.pixels(2));
  dipoles.setSpaceXYZ(spacing.x, spacing.y, spacing.z);
}

// Every dipole that is switched on; on axial slices by the module's rule only those from the origin up.
void drawWholeSet(CDipoleFace2On2DView& dipoles, CDC& dc, const PaneGrid& grid) {
  const int slice = grid.geometry().pixels(axesOf(grid.view()).slab) / 2;
  drawSlice(dipoles, dc, grid.view(), slice);
}

// The same square for one dipole, wherever it lies.
void drawOne(CDipoleszq& dipole, CDC& dc, const PaneGrid& grid) {
  const SliceGeometry& geometry = grid.geometry();
  const double mm = grid.mmPerPixel();
  dipole.setDimensionXYZ(geometry.pixels(0), geometry.pixels(1), geometry.pixels(2));
  const Vector3 half{geometry.halfExtent(0), geometry.halfExtent(1), geometry.halfExtent(2)};
  switch (grid.view()) {
    case View::axial:
      dipole.drawDipoleAxial(&dc, -endlessSpacing, endlessSpacing, pixelsPerCell, half.x, mm, half.z, mm);
      return;
    case View::coronal:
      dipole.drawDipoleCoronal(&dc, -endlessSpacing, endlessSpacing, pixelsPerCell, half.x, mm, half.y, mm);
      return;
    case View::sagittal:
      dipole.drawDipoleSagittal(&dc, -endlessSpacing, endlessSpacing, pixelsPerCell, half.y, mm, half.z, mm);
      return;
  }
}

}  // namespace

SlicePane::SlicePane(View view) : m_view(view), m_grid(view, 1, 1, m_mmPerPixel, {}) {}

void SlicePane::resize(int width, int height) {
  m_width = (std::max)(width, 1);
  m_pictureWidth = m_width;  // until the next picture
  m_height = (std::max)(height, 1);
}

void SlicePane::zoom(double factor, int column, int row) {
  if (!(factor > 0.0 && std::isfinite(factor)))
    return;
  const double before = m_mmPerPixel;
  m_mmPerPixel = std::clamp(before / factor, finest, coarsest);
  const ViewAxes axes = axesOf(m_view);
  // From the middle of the pane to the pixel, before and after.
  const double change = before - m_mmPerPixel;
  m_middle[axes.column] += (column + 0.5 - m_pictureWidth * 0.5) * change;
  m_middle[axes.row] -= (row + 0.5 - m_height * 0.5) * change;
  pan(0, 0);
}

void SlicePane::pan(int columns, int rows) {
  const ViewAxes axes = axesOf(m_view);
  const auto moved = [](double mm, double by) {
    return std::clamp(mm + by, -farthestMiddle, farthestMiddle);
  };
  m_middle[axes.column] = moved(m_middle[axes.column], -columns * m_mmPerPixel);
  m_middle[axes.row] = moved(m_middle[axes.row], rows * m_mmPerPixel);
  m_isFitted = false;
}

void SlicePane::fitTo(const Head& head) {
  const HeadBox box = headBoxOf(head);
  const ViewAxes axes = axesOf(m_view);
  const int border = letterBorder(m_pictureWidth, m_height);
  const auto mmPerPixel = [&](int axis, int pixels) {
    return (box.high[axis] - box.low[axis]) / (std::max)(pixels - 2 * border, 1);
  };
  m_mmPerPixel = std::clamp(
      (std::max)(mmPerPixel(axes.column, m_pictureWidth), mmPerPixel(axes.row, m_height)), finest, coarsest);
  m_middle = (box.low + box.high) * 0.5;
}

bool SlicePane::isSquareSeen(const PixelPoint& at) const {
  const int before = (m_glyph - 1) / 2;
  const int after = m_glyph - before;
  return at.column + after > 0 && at.row + after > 0 && at.column - before < m_pictureWidth &&
         at.row - before < m_height;
}

// Those near enough to the slice: the placed ones over the head's own.
void SlicePane::drawFiducials(const PaneContents& contents) {
  constexpr double leastReach = 2.0;  // mm
  const int slab = axesOf(m_view).slab;
  const double reach = (std::max)(toleranceOf(contents), leastReach);
  const auto drawEach = [&](const std::vector<SceneFiducial>& points, const auto& draw) {
    for (const SceneFiducial& point : points)
      if (std::abs(point.place[slab] - position()) <= reach)
        if (const std::optional<PixelPoint> at = pixelOf(point.place))
          draw(m_picture, *at, point.letter);
  };
  drawEach(headFiducials(contents), drawFiducialRing);
  drawEach(placedFiducials(contents), drawFiducialCross);
}

// Sorts every dipole into the account; those whose square can be seen into m_drawn.
void SlicePane::takeStock(const PaneContents& contents) {
  m_drawn.clear();
  m_account = {};
  m_account.view = m_view;
  m_account.position = position();
  m_account.isRegistered = contents.head.isRegistered();
  const int slab = axesOf(m_view).slab;
  const double tolerance = toleranceOf(contents);
  VisibleCount count;
  for (int slot = 0; slot < contents.dipoles.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = contents.dipoles.m_dipoles[slot];
    if (dipole == nullptr)
      continue;
    const Visibility visibility = visibilityOnSlices(contents.dipoles, slot, *dipole, contents.settings);
    count.add(visibility);
    if (visibility != Visibility::shown)
      continue;
    const Vector3 place = placeOf(*dipole);
    if (!m_account.isRegistered) {
      ++m_account.unregistered;
    } else if (!(std::abs(place[slab] - position()) <= tolerance)) {
      ++m_account.away;
    } else if (!m_grid.holds(place)) {
      ++m_account.outside;
    } else {
      ++m_account.onSlice;
      const PixelPoint at = m_grid.pixelAt(place);
      if (!m_grid.isInPane(at))
        ++m_account.offPane;
      if (isSquareSeen(at))
        m_drawn.push_back({slot, at});
    }
  }
  m_account.total = count.total;
  m_account.switchedOff = count.switchedOff;
  m_account.filtered = count.filtered;
  m_account.nowhere = count.nowhere;
}

// The squares of the dipoles that are switched on, centred on their pixels.
void SlicePane::drawSquares(CDipoleFace9File& dipoles, CDC& dc, int size) const {
  // The module hangs a square to the right of and below its pixel.
  const int shift = (size - 1) / 2;
  dc.SetViewportOrg(-m_grid.origin().column - shift, -m_grid.origin().row - shift);
  drawWholeSet(dipoles, dc, m_grid);
  CDipoleszq* current = nullptr;
  for (const Drawn& drawn : m_drawn) {
    CDipoleszq& dipole = *dipoles.m_dipoles[drawn.slot];
    // The module's rule withholds what lies below the origin; a viewer must not lose it.
    if (m_view == View::axial && dipole.m_location[1] < 0.0)
      drawOne(dipole, dc, m_grid);
    if (drawn.slot == dipoles.m_currentDipole)
      current = &dipole;
  }
  // Nothing covers the current one.
  if (current != nullptr)
    drawOne(*current, dc, m_grid);
}

void SlicePane::drawDipoles(const PaneContents& contents) {
  if (m_drawn.empty())
    return;
  CDipoleFace9File& dipoles = contents.dipoles;
  BitmapCanvas canvas(m_picture);
  {
    DisplayOverride display(dipoles);
    setVolume(dipoles, m_grid);
    for (const int edge : {edgePixels, 0}) {
      const int size = m_glyph + 2 * edge;
      for (const Drawn& drawn : m_drawn) {
        const Rgb colour = colourOf(contents, *dipoles.m_dipoles[drawn.slot]);
        display.show(drawn.slot, size, colorRef(edge > 0 ? edgeColour(colour) : colour));
      }
      drawSquares(dipoles, canvas.dc(), size);
    }
  }
  canvas.copyTo(m_picture);
}

// Zero long for a dipole without an arrow, and for one straight out of the slice.
SliceArrow SlicePane::arrowOfDrawn(const PaneContents& contents, const Drawn& drawn) const {
  const CDipoleszq& dipole = *contents.dipoles.m_dipoles[drawn.slot];
  const Vector3 arrow = arrowOf(dipole);
  const ViewAxes axes = axesOf(m_view);
  return {drawn.at, arrow[axes.column] / mmPerPixel(), -arrow[axes.row] / mmPerPixel(),
          colourOf(contents, dipole)};
}

std::vector<SliceArrow> SlicePane::arrowsOf(const PaneContents& contents) const {
  std::vector<SliceArrow> arrows;
  arrows.reserve(m_drawn.size());
  for (const Drawn& drawn : m_drawn)
    arrows.push_back(arrowOfDrawn(contents, drawn));
  return arrows;
}

void SlicePane::markCurrent(const PaneContents& contents) {
  for (const Drawn& drawn : m_drawn)
    if (drawn.slot == contents.dipoles.m_currentDipole) {
      drawArrows(m_picture, {arrowOfDrawn(contents, drawn)});
      drawCurrentRing(m_picture, drawn.at, m_glyph);
    }
}

void SlicePane::drawTexts(const PaneContents& contents) {
  PaneTexts texts;
  texts.title = nameOf(m_view);
  texts.lines.push_back({positionText(m_view, position()), ink});
  texts.lines.push_back({countText(m_account), ink});
  if (const std::string choice = choiceText(m_account); !choice.empty())
    texts.lines.push_back({choice, quietInk});
  texts.warnings = headWarnings(contents.head, m_account.total);
  for (const std::string& warning : warningTexts(m_account))
    texts.warnings.push_back({warning, warningInk});
  drawPaneTexts(m_picture, texts);
  drawScaleBar(m_picture, mmPerPixel());
}

const Image& SlicePane::paint(const PaneContents& contents) {
  const double slice = contents.crosshair[axesOf(m_view).slab];
  for (int axis = 0; axis < 3; ++axis)
    if (!(std::abs(contents.crosshair[axis]) <= farthestSlice))
      throw std::invalid_argument("the crosshair must lie within 1000 mm of the head's origin");
  const Image legend = m_width >= leastWidthForLegend ? legendOf(contents, m_width, m_height) : Image();
  m_pictureWidth = m_width - legend.width();
  if (m_volume != contents.head.volume || !m_frame || !isSameFrame(*m_frame, contents.head.frame))
    m_isFitted = true;
  m_volume = contents.head.volume;
  m_frame = contents.head.frame;
  if (m_isFitted)
    fitTo(contents.head);
  Vector3 middle = m_middle;
  middle[axesOf(m_view).slab] = slice;
  m_grid = PaneGrid(m_view, m_pictureWidth, m_height, m_mmPerPixel, middle);
  m_glyph = std::clamp(contents.settings.glyphPixels, 1, largestGlyph);
  takeStock(contents);

  m_picture = m_grey.picture(contents.head, m_grid.samples(), contents.window);
  drawCrosshair(m_picture, m_grid.pixelAt(contents.crosshair));
  drawTexts(contents);  // below the dipoles: no caption hides one
  drawFiducials(contents);
  // Squares over arrows: where a dipole lies comes first. The current one over all others.
  drawArrows(m_picture, arrowsOf(contents));
  drawDipoles(contents);
  markCurrent(contents);
  drawSides(m_picture, m_view);
  m_picture = withLegend(std::move(m_picture), legend);
  return m_picture;
}

std::optional<PixelPoint> SlicePane::pixelOf(const Vector3& head) const {
  if (!isPlace(head))
    return std::nullopt;
  const PixelPoint at = m_grid.pixelAt(head);
  return m_grid.isInPane(at) ? std::optional(at) : std::nullopt;
}

int SlicePane::pick(const PaneContents& contents, int column, int row) const {
  const int before = (m_glyph - 1) / 2;
  int best = -1;
  int nearest = std::numeric_limits<int>::max();
  for (const Drawn& drawn : m_drawn) {
    const int across = column - drawn.at.column;
    const int down = row - drawn.at.row;
    const bool isHit =
        across >= -before && down >= -before && across < m_glyph - before && down < m_glyph - before;
    const int distance = across * across + down * down;
    if (isHit && distance < nearest && contents.dipoles.getDipole(drawn.slot) != nullptr) {
      nearest = distance;
      best = drawn.slot;
    }
  }
  return best;
}

}  // namespace host
