#include "host/panes/ScenePane.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string>

#include "host/head/HeadBoxOf.h"
#include "host/paint/PictureText.h"
#include "host/panes/PaneFiducials.h"
#include "host/panes/PaneLegend.h"
#include "host/panes/PaneMarks.h"
#include "host/panes/PaneWarnings.h"
#include "host/panes/SliceAccount.h"
#include "host/picture/SceneMarks.h"

namespace host {

namespace {

constexpr ViewAngles firstAngles{35.0, 20.0};
constexpr double degreesPerPixel = 0.5;
constexpr double farthestCrosshair = 1000.0;  // mm
constexpr std::array<View, 3> allViews{View::axial, View::coronal, View::sagittal};

bool isSameWindow(const GreyWindow& one, const GreyWindow& other) {
  return one.low == other.low && one.high == other.high;
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
  if (!(factor > 0.0 && std::isfinite(factor)))
    return;
  m_camera.zoom(factor);
  m_isFitted = false;
}

void ScenePane::pan(int columns, int rows) {
  m_camera.pan(columns, rows);
  m_isFitted = false;
}

SceneStyle ScenePane::styleOf(const PaneContents& contents) const {
  constexpr double smallestBall = 0.5;
  constexpr double largestBall = 50.0;
  SceneStyle style;
  style.background = pictureBackground;
  style.seeThrough = 0.45;  // a slice through the crosshair must not make dipoles vanish
  style.ballRadius = std::clamp(contents.settings.ballRadius, smallestBall, largestBall);
  return style;
}

// The camera is new but for its angles: what was panned is forgotten.
void ScenePane::fitTo(const PaneContents& contents) {
  constexpr double roomAround = 1.06;
  const HeadBox box = headBoxOf(contents.head);
  const Vector3 extent = box.high - box.low;
  const double largest = (std::max)({extent.x, extent.y, extent.z}) * roomAround;
  const int border = letterBorder(m_camera.width(), m_camera.height());
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
  return contents.head.isRegistered() || isBare;
}

// Samples what is not there yet: usually the one slice that moved.
void ScenePane::renewPlanes(const PaneContents& contents) {
  const Head& head = contents.head;
  if (!isHeadShown(contents)) {
    m_planes.clear();
    m_planeKey.reset();
    return;
  }
  const bool isKept = m_planeKey && m_planeKey->volume == head.volume &&
                      isSameFrame(m_planeKey->frame, head.frame) &&
                      isSameWindow(m_planeKey->window, contents.window);
  if (!isKept)
    m_planes.clear();
  const HeadBox box = headBoxOf(head);
  for (std::size_t i = 0; i < allViews.size(); ++i) {
    const View view = allViews[i];
    const double position = contents.crosshair[axesOf(view).slab];
    if (i < m_planes.size() && m_planes[i].position() == position)
      continue;
    SlicePlane plane(*head.volume, head.frame, box, view, position, contents.window);
    if (i < m_planes.size())
      m_planes[i] = std::move(plane);
    else
      m_planes.push_back(std::move(plane));
  }
  m_planeKey = PlaneKey{head.volume, head.frame, contents.window};
}

// In the head that they were placed in, or nowhere.
void ScenePane::drawPlaced(Image& image, const PaneContents& contents) const {
  if (!isHeadShown(contents))
    return;
  for (const SceneFiducial& point : placedFiducials(contents)) {
    const ScreenPoint at = m_camera.project(point.place);
    if (at.column >= 0.0 && at.row >= 0.0 && at.column < image.width() && at.row < image.height())
      drawFiducialCross(image, {static_cast<int>(at.column), static_cast<int>(at.row)}, point.letter);
  }
}

void ScenePane::drawTexts(Image& image, const PaneContents& contents) const {
  PaneTexts texts;
  texts.title = "3D";
  texts.lines.push_back({viewText(m_camera.angles()), ink});
  texts.lines.push_back(
      {"dipoles: " + std::to_string(m_count.shown) + " of " + std::to_string(m_count.total), ink});
  SliceAccount account;
  account.switchedOff = m_count.switchedOff;
  account.filtered = m_count.filtered;
  account.nowhere = m_count.nowhere;
  if (const std::string choice = choiceText(account); !choice.empty())
    texts.lines.push_back({choice, quietInk});
  texts.warnings = headWarnings(contents.head, m_count.total);
  if (!isHeadShown(contents))
    texts.warnings.push_back({"Not registered: the MRI is not shown with the dipoles", warningInk});
  for (const std::string& warning : warningTexts(account))
    texts.warnings.push_back({warning, warningInk});
  drawPaneTexts(image, texts);
}

const Image& ScenePane::paint(const PaneContents& contents) {
  for (int axis = 0; axis < 3; ++axis)
    if (!(std::abs(contents.crosshair[axis]) <= farthestCrosshair))
      throw std::invalid_argument("the crosshair must lie within 1000 mm of the head's origin");
  const Image legend = legendOf(contents, m_width, m_height);
  const int width = m_width - legend.width();
  m_camera.resize(width, m_height);
  if (m_volume != contents.head.volume || !m_frame || !isSameFrame(*m_frame, contents.head.frame))
    m_isFitted = true;
  m_volume = contents.head.volume;
  m_frame = contents.head.frame;
  if (m_isFitted)
    fitTo(contents);
  m_count = {};
  const auto isShown = [&](int slot, const CDipoleszq& dipole) {
    const Visibility visibility = visibilityOf(contents.dipoles, slot, dipole, contents.settings);
    m_count.add(visibility);
    return visibility == Visibility::shown;
  };
  const auto colourOf = [&](const CDipoleszq& dipole) {
    return contents.colours != nullptr ? contents.colours->colorOf(dipole) : ownColour(dipole);
  };
  m_scene = sceneOf(contents.dipoles, {isShown, colourOf});
  // The set's are made up from the head sphere where its file gave none.
  if (contents.head.isRegistered())
    m_scene.fiducials = headFiducials(contents);
  renewPlanes(contents);

  const SceneStyle style = styleOf(contents);
  if (!m_depths || m_depths->width() != width || m_depths->height() != m_height)
    m_depths.emplace(width, m_height, style.background);
  m_painter.paint(*m_depths, m_scene, m_planes, m_camera, style);
  Image scene = m_depths->image();
  drawMarks(scene, m_scene, m_planes, m_camera, style);
  drawPlaced(scene, contents);
  drawTexts(scene, contents);
  m_picture = withLegend(std::move(scene), legend);
  return m_picture;
}

int ScenePane::pick(const PaneContents& contents, int column, int row) const {
  if (column < 0 || row < 0 || column >= m_camera.width() || row >= m_camera.height())
    return -1;
  const int slot = pickDipole(m_scene, m_planes, m_camera, styleOf(contents), column, row);
  return slot >= 0 && contents.dipoles.getDipole(slot) != nullptr ? slot : -1;
}

}  // namespace host
