#include "host/panes/ScenePane.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "host/dipoles/DipoleArrows.h"
#include "host/dipoles/DipoleVisibility.h"
#include "host/head/HeadBoxOf.h"
#include "host/head/Limits.h"
#include "host/paint/PictureText.h"
#include "host/panes/PaneFiducials.h"
#include "host/panes/PaneLabels.h"
#include "host/panes/PaneLegend.h"
#include "host/panes/PaneWarnings.h"
#include "host/picture/PictureMarks.h"
#include "host/picture/SceneMarks.h"
#include "host/picture/SliceCaption.h"

namespace host {

namespace {

constexpr ViewAngles firstAngles{35.0, 20.0};
constexpr double degreesPerPixel = 0.5;

PixelPoint pixelOf(const ScreenPoint& at) {
  return {static_cast<int>(at.column), static_cast<int>(at.row)};
}

}  // namespace

ScenePane::ScenePane() : m_camera(1, 1) {
  m_camera.lookFrom(firstAngles);
}

void ScenePane::resize(int width, int height) {
  m_width = (std::max)(width, 1);
  m_height = (std::max)(height, 1);
}

void ScenePane::turn(int columns, int rows) {
  m_camera.turn(-degreesPerPixel * columns, degreesPerPixel * rows);
}

void ScenePane::zoom(double factor) {
  if (!(factor > 0.0 && std::isfinite(factor))) {
    return;
  }
  m_camera.zoom(factor);
  m_isFitted = false;
}

void ScenePane::pan(int columns, int rows) {
  m_camera.pan(columns, rows);
  m_isFitted = false;
}

SceneStyle ScenePane::styleOf(const PaneContents& contents) const {
  SceneStyle style;
  style.background = pictureBackground;
  style.seeThrough = 0.45;  // a slice through the crosshair must not make dipoles vanish
  style.ballRadius = std::clamp(contents.settings.ballRadius, smallestBall, largestBall);
  style.showCurrent = contents.showCursor;
  style.lineWidth *= contents.scale;
  return style;
}

// The camera is new but for its angles: what was panned is forgotten.
void ScenePane::fitTo(const PaneContents& contents) {
  constexpr double roomAround = 1.06;
  const HeadBox box = headBoxOf(contents.head);
  const Vector3 extent = box.high - box.low;
  const double largest = (std::max)({extent.x, extent.y, extent.z}) * roomAround;
  const int border = letterBorder(m_camera.width(), m_camera.height(), contents.scale);
  const int pixels = (std::min)(m_camera.width(), m_camera.height()) - 2 * border;
  SceneCamera camera(m_camera.width(), m_camera.height());
  camera.lookFrom(m_camera.angles());
  camera.setCentre((box.low + box.high) * 0.5);
  camera.setScale((std::max)(pixels, 1) / largest);
  m_camera = camera;
}

// With dipoles only where they belong; without anything that could lie wrong, always.
bool ScenePane::isHeadShown(const PaneContents& contents) const {
  const bool isBare = m_count.total == 0 && m_scene.fiducials.empty() && !m_scene.sphere;
  return contents.head.isRegistered() || (isBare && !contents.head.isAbsent);
}

std::vector<SliceRequest> ScenePane::wantedSlices(const PaneContents& contents) const {
  if (!isHeadShown(contents)) {
    return {};
  }
  if (!m_slices.empty()) {
    return m_slices;
  }
  std::vector<SliceRequest> slices;
  slices.reserve(allViews.size());
  for (const View view : allViews) {
    slices.push_back({view, contents.crosshair[axesOf(view).slab]});
  }
  return slices;
}

// Samples what is not there yet: usually the one slice that moved.
void ScenePane::renewPlanes(const PaneContents& contents) {
  const Head& head = contents.head;
  const std::vector<SliceRequest> wanted = wantedSlices(contents);
  const bool isKept = m_planeKey && m_planeKey->volume == head.volume && m_planeKey->frame == head.frame &&
                      m_planeKey->window == contents.window;
  if (!isKept || wanted.size() < m_planes.size()) {
    m_planes.clear();
  }
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const SliceRequest& slice = wanted[i];
    if (i < m_planes.size() && m_planes[i].view() == slice.view && m_planes[i].position() == slice.position) {
      continue;
    }
    SlicePlane plane(*head.volume, head.frame, headBoxOf(head), slice.view, slice.position, contents.window);
    if (i < m_planes.size()) {
      m_planes[i] = std::move(plane);
    } else {
      m_planes.push_back(std::move(plane));
    }
  }
  m_planeKey = PlaneKey{head.volume, head.frame, contents.window};
}

// What the picture shows, and how many of it.
void ScenePane::gather(const PaneContents& contents) {
  checkCrosshair(contents);
  m_count = {};
  const auto isShown = [&](int slot, const CDipoleszq& dipole) {
    const Visibility visibility = visibilityOf(contents.dipoles, slot, dipole, contents.settings);
    m_count.add(visibility);
    return visibility == Visibility::shown;
  };
  const DipoleArrows arrows(contents.dipoles, contents.settings.arrowsByMoment, contents.settings.unknown);
  m_scene = sceneOf(contents.dipoles,
                    {isShown, [&](const CDipoleszq& dipole) { return colourOf(contents, dipole); },
                     [&](const CDipoleszq& dipole) { return arrows.of(dipole); }});
  // The set's are made up from the head sphere where its file gave none.
  if (contents.head.isRegistered()) {
    m_scene.fiducials = headFiducials(contents);
  }
  renewPlanes(contents);
}

// Those of the dipole file; the placed ones in the head that they were placed in, or nowhere.
void ScenePane::drawPoints(Image& image, const PaneContents& contents) const {
  if (!isHeadShown(contents)) {
    return;
  }
  const auto drawEach = [&](const std::vector<SceneFiducial>& points, const auto& draw) {
    for (const SceneFiducial& point : points) {
      const ScreenPoint at = m_camera.project(point.place);
      if (m_camera.shows(at)) {
        draw(image, pixelOf(at), point.letter, contents.scale);
      }
    }
  };
  drawEach(fileFiducials(contents), drawFiducialDiamond);
  drawEach(placedFiducials(contents), drawFiducialCross);
}

void ScenePane::drawNames(Image& image, const PaneContents& contents, const SceneStyle& style) {
  if (!contents.settings.showLabels) {
    return;
  }
  std::vector<PaneLabel> labels;
  for (const SceneDipole& dipole : m_scene.dipoles) {
    const ScreenPoint at = m_camera.project(dipole.place);
    if (m_camera.shows(at)) {
      labels.push_back({pixelOf(at), labelOf(*contents.dipoles.m_dipoles[dipole.slot]), ink});
    }
  }
  const int around = static_cast<int>(std::ceil(ballRadiusIn(m_camera, style) * m_camera.scale()));
  noteLabelsLeftOut(m_texts, drawLabels(image, labels, around, sideLetters(m_camera.right(), m_camera.up()),
                                        contents.scale));
}

void ScenePane::gatherTexts(const PaneContents& contents) {
  m_texts = {};
  m_texts.title = "3D";
  m_texts.place = viewText(m_camera.angles());
  m_texts.lines.push_back({countText(m_count), ink});
  for (const std::string& text : {choiceText(m_count), behindText(m_count)}) {
    if (!text.empty()) {
      m_texts.lines.push_back({text, quietInk});
    }
  }
  m_texts.warnings = headWarnings(contents.head, m_count.total);
  if (!isHeadShown(contents) && !contents.head.isAbsent) {
    m_texts.warnings.push_back({"Not registered: the MRI is not shown with the dipoles", warningInk});
  }
  for (const std::string& warning : warningTexts(m_count)) {
    m_texts.warnings.push_back({warning, warningInk});
  }
}

void ScenePane::drawOver(Image& image, const PaneContents& contents, const SceneStyle& style) {
  gatherTexts(contents);
  drawMarks(image, m_scene, m_planes, m_camera, style, contents.scale);
  drawPoints(image, contents);
  if (contents.showCaption) {
    drawPaneTexts(image, m_texts, contents.scale);
  }
  drawNames(image, contents, style);
}

const Image& ScenePane::paint(const PaneContents& contents) {
  const Image legend = legendOf(contents, m_width, m_height);
  const int width = m_width - legend.width();
  m_camera.resize(width, m_height);
  if (m_volume != contents.head.volume || m_frame != contents.head.frame) {
    m_isFitted = true;
  }
  m_volume = contents.head.volume;
  m_frame = contents.head.frame;
  if (m_isFitted) {
    fitTo(contents);
  }
  gather(contents);

  const SceneStyle style = styleOf(contents);
  if (!m_depths || m_depths->width() != width || m_depths->height() != m_height) {
    m_depths.emplace(width, m_height, style.background);
  }
  m_painter.paintKeeping(*m_depths, m_scene, m_planes, m_camera, style);
  Image scene = m_depths->image();
  drawOver(scene, contents, style);
  m_picture = withLegend(std::move(scene), legend);
  return m_picture;
}

int ScenePane::pick(const PaneContents& contents, int column, int row) const {
  if (column < 0 || row < 0 || column >= m_camera.width() || row >= m_camera.height()) {
    return -1;
  }
  const int slot = pickDipole(m_scene, m_planes, m_camera, styleOf(contents), column, row);
  return slot >= 0 && contents.dipoles.getDipole(slot) != nullptr ? slot : -1;
}

}  // namespace host
