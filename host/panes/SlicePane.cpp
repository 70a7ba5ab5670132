#include "host/panes/SlicePane.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

#include "host/dipoles/DipoleArrows.h"
#include "host/dipoles/DipoleScene.h"
#include "host/dipoles/DipoleVisibility.h"
#include "host/head/HeadBoxOf.h"
#include "host/head/Limits.h"
#include "host/paint/PictureText.h"
#include "host/panes/PaneFiducials.h"
#include "host/panes/PaneLabels.h"
#include "host/panes/PaneLegend.h"
#include "host/panes/PaneWarnings.h"
#include "host/panes/SliceRule.h"
#include "host/picture/PictureMarks.h"
#include "host/picture/SliceCaption.h"

namespace host {

namespace {

constexpr int leastWidthForLegend = 600;  // pixels; in the small panes it would take the head's room

}  // namespace

SlicePane::SlicePane(View view) : m_view(view), m_grid(view, 1, 1, m_mmPerPixel, {}) {}

void SlicePane::resize(int width, int height) {
  m_width = (std::max)(width, 1);
  m_pictureWidth = m_width;  // until the next picture
  m_height = (std::max)(height, 1);
}

void SlicePane::zoom(double factor, int column, int row) {
  if (!(factor > 0.0 && std::isfinite(factor))) {
    return;
  }
  const double before = m_mmPerPixel;
  m_mmPerPixel = std::clamp(before / factor, finestPixel, coarsestPixel);
  const ViewAxes axes = axesOf(m_view);
  // From the middle of the pane to the pixel, before and after.
  const double change = before - m_mmPerPixel;
  m_middle[axes.column] += (column + 0.5 - m_pictureWidth * 0.5) * change;
  m_middle[axes.row] -= (row + 0.5 - m_height * 0.5) * change;
  pan(0, 0);
}

void SlicePane::pan(int columns, int rows) {
  const ViewAxes axes = axesOf(m_view);
  const auto moved = [](double mm, double by) { return std::clamp(mm + by, -headReach, headReach); };
  m_middle[axes.column] = moved(m_middle[axes.column], -columns * m_mmPerPixel);
  m_middle[axes.row] = moved(m_middle[axes.row], rows * m_mmPerPixel);
  m_isFitted = false;
}

void SlicePane::fitTo(const PaneContents& contents) {
  const HeadBox box = headBoxOf(contents.head);
  const ViewAxes axes = axesOf(m_view);
  const int border = letterBorder(m_pictureWidth, m_height, contents.scale);
  const auto mmPerPixel = [&](int axis, int pixels) {
    return (box.high[axis] - box.low[axis]) / (std::max)(pixels - 2 * border, 1);
  };
  m_mmPerPixel =
      std::clamp((std::max)(mmPerPixel(axes.column, m_pictureWidth), mmPerPixel(axes.row, m_height)),
                 finestPixel, coarsestPixel);
  m_middle = (box.low + box.high) * 0.5;
}

// The head, and every dipole of the slice with its square.
HeadBox SlicePane::boxToShow(const PaneContents& contents) const {
  HeadBox box = headBoxOf(contents.head);
  if (!contents.head.isRegistered()) {
    return box;
  }
  const SliceRule rule(contents, m_view, contents.crosshair[axesOf(m_view).slab]);
  const double around = contents.settings.glyphPixels * m_mmPerPixel;
  for (int slot = 0; slot < contents.dipoles.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = contents.dipoles.m_dipoles[slot];
    if (dipole == nullptr ||
        visibilityOf(contents.dipoles, slot, *dipole, contents.settings) != Visibility::shown) {
      continue;
    }
    const Vector3 place = placeOf(*dipole);
    const auto isWithin = [](double mm) { return std::abs(mm) < headReach; };
    const ViewAxes axes = axesOf(m_view);
    if (!rule.shows(place) || !isWithin(place[axes.column]) || !isWithin(place[axes.row])) {
      continue;
    }
    for (const int axis : {axes.column, axes.row}) {
      box.low[axis] = (std::min)(box.low[axis], place[axis] - around);
      box.high[axis] = (std::max)(box.high[axis], place[axis] + around);
    }
  }
  return box;
}

void SlicePane::showWhole(const PaneContents& contents, double mmPerPixel) {
  m_mmPerPixel = std::clamp(mmPerPixel, finestPixel, coarsestPixel);
  const HeadBox box = boxToShow(contents);
  const ViewAxes axes = axesOf(m_view);
  const int border = scaledPixels(markMargin, contents.scale) + letterFont(contents.scale).lineHeight();
  const auto pixels = [&](int axis) {
    return static_cast<int>(std::ceil((box.high[axis] - box.low[axis]) / m_mmPerPixel)) + 2 * border;
  };
  resize(pixels(axes.column), pixels(axes.row));
  m_middle = (box.low + box.high) * 0.5;
  m_isFitted = false;
  m_volume = contents.head.volume;
  m_frame = contents.head.frame;
}

bool SlicePane::isSquareSeen(const PixelPoint& at) const {
  const int before = pixelsBefore(m_glyph);
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
    bool isDrawn = false;
    for (const SceneFiducial& point : points) {
      if (std::abs(point.place[slab] - position()) <= reach) {
        if (const std::optional<PixelPoint> at = pixelOf(point.place)) {
          draw(m_picture, *at, point.letter, contents.scale);
          isDrawn = true;
        }
      }
    }
    return isDrawn;
  };
  m_hasDiamonds = drawEach(fileFiducials(contents), drawFiducialDiamond);
  m_hasRings = drawEach(headFiducials(contents), drawFiducialRing);
  drawEach(placedFiducials(contents), drawFiducialCross);
}

// Sorts every dipole into the account; those whose square can be seen into m_drawn.
void SlicePane::takeStock(const PaneContents& contents) {
  m_drawn.clear();
  m_account = {};
  m_account.view = m_view;
  m_account.position = position();
  m_account.isRegistered = contents.head.isRegistered();
  const SliceRule rule(contents, m_view, position());
  for (int slot = 0; slot < contents.dipoles.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = contents.dipoles.m_dipoles[slot];
    if (dipole == nullptr) {
      continue;
    }
    const Visibility visibility = visibilityOf(contents.dipoles, slot, *dipole, contents.settings);
    m_account.add(visibility);
    if (visibility != Visibility::shown) {
      continue;
    }
    const Vector3 place = placeOf(*dipole);
    if (!m_account.isRegistered) {
      ++m_account.unregistered;
    } else if (!rule.shows(place)) {
      ++(rule.isNear(place) ? m_account.withheld : m_account.away);
    } else if (!m_grid.holds(place)) {
      ++m_account.outside;
    } else {
      ++m_account.onSlice;
      const PixelPoint at = m_grid.pixelAt(place);
      if (!m_grid.isInPane(at)) {
        ++m_account.offPane;
      }
      if (isSquareSeen(at)) {
        m_drawn.push_back({slot, at, colourOf(contents, *dipole)});
      }
    }
  }
}

// Zero long for a dipole without an arrow, and for one straight out of the slice.
SliceArrow SlicePane::arrowOfDrawn(const PaneContents& contents, const DipoleArrows& arrows,
                                   const SliceSquare& drawn) const {
  const Vector3 arrow = arrows.of(*contents.dipoles.m_dipoles[drawn.slot]);
  const ViewAxes axes = axesOf(m_view);
  return {drawn.at, arrow[axes.column] / mmPerPixel(), -arrow[axes.row] / mmPerPixel(), drawn.colour};
}

// Squares over arrows: where a dipole lies comes first. The current one over all others.
void SlicePane::drawDipoles(const PaneContents& contents) {
  const DipoleArrows lengths(contents.dipoles, contents.settings.arrowsByMoment, contents.settings.unknown);
  std::vector<SliceArrow> arrows;
  arrows.reserve(m_drawn.size());
  for (const SliceSquare& drawn : m_drawn) {
    arrows.push_back(arrowOfDrawn(contents, lengths, drawn));
  }
  drawArrows(m_picture, arrows, contents.scale);
  drawSquares(m_picture, contents.dipoles, m_grid, m_drawn, m_glyph, scaledPixels(1.0, contents.scale));
  if (!contents.showCursor) {
    return;
  }
  for (std::size_t i = 0; i < m_drawn.size(); ++i) {
    if (m_drawn[i].slot == contents.dipoles.m_currentDipole) {
      drawArrows(m_picture, {arrows[i]}, contents.scale);
      drawCurrentRing(m_picture, m_drawn[i].at, m_glyph, contents.scale);
    }
  }
}

void SlicePane::drawNames(const PaneContents& contents) {
  if (!contents.settings.showLabels) {
    return;
  }
  std::vector<PaneLabel> labels;
  for (const SliceSquare& drawn : m_drawn) {
    labels.push_back({drawn.at, labelOf(*contents.dipoles.m_dipoles[drawn.slot]), ink});
  }
  noteLabelsLeftOut(m_texts, drawLabels(m_picture, labels, m_glyph - pixelsBefore(m_glyph),
                                        sideLetters(m_view), contents.scale));
}

void SlicePane::gatherTexts(const PaneContents& contents) {
  m_texts = {};
  m_texts.title = nameOf(m_view);
  m_texts.place = positionText(m_view, position());
  m_texts.lines.push_back({countText(m_account), ink});
  if (const std::string choice = choiceText(m_account); !choice.empty()) {
    m_texts.lines.push_back({choice, quietInk});
  }
  m_texts.warnings = headWarnings(contents.head, m_account.total);
  for (const std::string& warning : warningTexts(m_account)) {
    m_texts.warnings.push_back({warning, warningInk});
  }
}

const Image& SlicePane::paint(const PaneContents& contents) {
  checkCrosshair(contents);
  const Image legend = m_width >= leastWidthForLegend ? legendOf(contents, m_width, m_height) : Image();
  m_pictureWidth = m_width - legend.width();
  if (m_volume != contents.head.volume || m_frame != contents.head.frame) {
    m_isFitted = true;
  }
  m_volume = contents.head.volume;
  m_frame = contents.head.frame;
  if (m_isFitted) {
    fitTo(contents);
  }
  Vector3 middle = m_middle;
  middle[axesOf(m_view).slab] = contents.crosshair[axesOf(m_view).slab];
  m_grid = PaneGrid(m_view, m_pictureWidth, m_height, m_mmPerPixel, middle);
  m_glyph = std::clamp(contents.settings.glyphPixels, smallestGlyph, largestGlyph);
  takeStock(contents);
  gatherTexts(contents);

  m_picture = m_grey.picture(contents.head, m_grid.samples(), contents.window);
  if (contents.showCursor) {
    drawCrosshair(m_picture, m_grid.pixelAt(contents.crosshair));
  }
  if (contents.showCaption) {
    drawPaneTexts(m_picture, m_texts, contents.scale);  // below the dipoles: no caption hides one
  }
  drawScaleBar(m_picture, 1.0 / mmPerPixel(), contents.scale);
  drawFiducials(contents);
  drawDipoles(contents);
  drawNames(contents);
  drawSides(m_picture, sideLetters(m_view), contents.scale);
  m_picture = withLegend(std::move(m_picture), legend);
  return m_picture;
}

std::optional<PixelPoint> SlicePane::pixelOf(const Vector3& head) const {
  if (!isPlace(head)) {
    return std::nullopt;
  }
  const PixelPoint at = m_grid.pixelAt(head);
  return m_grid.isInPane(at) ? std::optional(at) : std::nullopt;
}

int SlicePane::pick(const PaneContents& contents, int column, int row) const {
  const int before = pixelsBefore(m_glyph);
  int best = -1;
  int nearest = std::numeric_limits<int>::max();
  for (const SliceSquare& drawn : m_drawn) {
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
