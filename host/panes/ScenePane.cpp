#include "host/panes/ScenePane.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
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

// The smallest and the largest place along each axis.
class Bounds {
 public:
  void add(const Vector3& point, double around) {
    for (int axis = 0; axis < 3; ++axis) {
      m_low[axis] = m_isEmpty ? point[axis] - around : (std::min)(m_low[axis], point[axis] - around);
      m_high[axis] = m_isEmpty ? point[axis] + around : (std::max)(m_high[axis], point[axis] + around);
    }
    m_isEmpty = false;
  }
  bool isEmpty() const { return m_isEmpty; }
  Vector3 middle() const { return (m_low + m_high) * 0.5; }
  double extent(int axis) const { return m_high[axis] - m_low[axis]; }

 private:
  bool m_isEmpty = true;
  Vector3 m_low;
  Vector3 m_high;
};

// The middle of the head, else of the sphere, else of the dipoles.
Vector3 centreOf(const DipoleScene& scene, const std::optional<HeadBox>& head) {
  if (head) {
    return (head->low + head->high) * 0.5;
  }
  if (scene.sphere) {
    return scene.sphere->centre;
  }
  Bounds bounds;
  for (const SceneDipole& dipole : scene.dipoles) {
    bounds.add(dipole.place, 0.0);
  }
  return bounds.isEmpty() ? Vector3{} : bounds.middle();
}

// What is in the picture, mm to the right and up from the camera's centre.
Bounds viewBounds(const DipoleScene& scene, const std::optional<HeadBox>& head, const SceneCamera& camera,
                  const SceneStyle& style) {
  constexpr double leastHalf = 50.0;  // mm
  Bounds bounds;
  const auto add = [&](const Vector3& point, double around) {
    const Vector3 from = point - camera.centre();
    const double right = dot(from, camera.right());
    const double up = dot(from, camera.up());
    if (std::abs(right) <= headReach && std::abs(up) <= headReach) {
      bounds.add({right, up, 0.0}, around);
    }
  };
  add(camera.centre(), leastHalf);
  if (head) {
    for (const double x : {head->low.x, head->high.x}) {
      for (const double y : {head->low.y, head->high.y}) {
        for (const double z : {head->low.z, head->high.z}) {
          add({x, y, z}, 0.0);
        }
      }
    }
  }
  if (style.showSphere && scene.sphere && scene.sphere->radius <= headReach) {
    add(scene.sphere->centre, scene.sphere->radius);
  }
  for (const SceneDipole& dipole : scene.dipoles) {
    add(dipole.place, style.ballRadius);
    if (style.showArrows) {
      add(dipole.place + dipole.arrow, style.ballRadius);
    }
  }
  for (const SceneFiducial& fiducial : scene.fiducials) {
    add(fiducial.place, fiducialRadius);
  }
  return bounds;
}

// The smallest box around everything that is drawn; the whole picture when nothing is.
PixelBox contentOf(const Image& image, Rgb background) {
  PixelBox box{image.width(), image.height(), 0, 0};
  for (int row = 0; row < image.height(); ++row) {
    for (int column = 0; column < image.width(); ++column) {
      if (image.pixel(column, row) != background) {
        box = {(std::min)(box.left, column), (std::min)(box.top, row), (std::max)(box.right, column + 1),
               (std::max)(box.bottom, row + 1)};
      }
    }
  }
  return box.right > box.left ? box : PixelBox{0, 0, image.width(), image.height()};
}

// Every pixel the mean of two by two.
Image halved(const Image& large) {
  Image image(large.width() / 2, large.height() / 2, {});
  const auto mean = [](int sum) { return static_cast<std::uint8_t>((sum + 2) / 4); };
  for (int row = 0; row < image.height(); ++row) {
    for (int column = 0; column < image.width(); ++column) {
      const Rgb a = large.pixel(2 * column, 2 * row);
      const Rgb b = large.pixel(2 * column + 1, 2 * row);
      const Rgb c = large.pixel(2 * column, 2 * row + 1);
      const Rgb d = large.pixel(2 * column + 1, 2 * row + 1);
      image.setPixel(column, row,
                     {mean(a.red + b.red + c.red + d.red), mean(a.green + b.green + c.green + d.green),
                      mean(a.blue + b.blue + c.blue + d.blue)});
    }
  }
  return image;
}

bool isInside(const ScreenPoint& at, const SceneCamera& camera) {
  return at.column >= 0.0 && at.row >= 0.0 && at.column < camera.width() && at.row < camera.height();
}

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

void ScenePane::aimAtAll(const PaneContents& contents, double mmPerPixel) {
  std::optional<HeadBox> box;
  if (isHeadShown(contents)) {
    box = headBoxOf(contents.head);
  }
  SceneCamera camera(1, 1);
  camera.lookFrom(m_camera.angles());
  camera.setCentre(centreOf(m_scene, box));
  camera.setScale(1.0 / mmPerPixel);
  const Bounds bounds = viewBounds(m_scene, box, camera, styleOf(contents));
  const auto pixels = [&](int axis) {
    return (std::max)(static_cast<int>(std::ceil(bounds.extent(axis) / mmPerPixel)), 1);
  };
  camera.resize(pixels(0), pixels(1));
  camera.pan(-bounds.middle().x * camera.scale(), bounds.middle().y * camera.scale());
  m_camera = camera;
}

// Cuts the empty border off, gives the marks room, and moves the camera along.
void ScenePane::trim(Image& view, const SceneStyle& style, double scale) {
  const int beside = scaledPixels(46.0, scale);
  const int below = scaledPixels(80.0, scale);
  const int leastWidth = scaledPixels(360.0, scale);
  const PixelBox content = contentOf(view, style.background);
  const int width = (std::max)(content.width() + 2 * beside, leastWidth);
  const int height = content.height() + beside + below;
  const int left = (width - content.width()) / 2;
  Image image(width, height, style.background);
  image.paste(view.cropped(content), left, beside);
  m_camera.pan((view.width() - width) * 0.5 + left - content.left,
               (view.height() - height) * 0.5 + beside - content.top);
  m_camera.resize(width, height);
  resize(width, height);
  view = std::move(image);
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

// In the head that they were placed in, or nowhere.
void ScenePane::drawPlaced(Image& image, const PaneContents& contents) const {
  if (!isHeadShown(contents)) {
    return;
  }
  for (const SceneFiducial& point : placedFiducials(contents)) {
    const ScreenPoint at = m_camera.project(point.place);
    if (isInside(at, m_camera)) {
      drawFiducialCross(image, pixelOf(at), point.letter, contents.scale);
    }
  }
}

void ScenePane::drawNames(Image& image, const PaneContents& contents, const SceneStyle& style) {
  if (!contents.settings.showLabels) {
    return;
  }
  std::vector<PaneLabel> labels;
  for (const SceneDipole& dipole : m_scene.dipoles) {
    const ScreenPoint at = m_camera.project(dipole.place);
    if (isInside(at, m_camera)) {
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
  drawPlaced(image, contents);
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

// Twice as large and then halved, so that edges are smooth; not so for pictures that are huge already.
Image ScenePane::paintSmoothly(SceneStyle style) {
  constexpr int hugePixels = 10'000'000;
  const bool isHuge = m_camera.width() > hugePixels / m_camera.height();
  SceneCamera camera = m_camera;
  if (!isHuge) {
    camera.resize(2 * m_camera.width(), 2 * m_camera.height());
    camera.setScale(2.0 * m_camera.scale());
    style.lineWidth *= 2.0;
  }
  DepthPicture picture(camera.width(), camera.height(), style.background);
  m_painter.paint(picture, m_scene, m_planes, camera, style);
  return isHuge ? std::move(picture.image()) : halved(picture.image());
}

void ScenePane::countHidden(const SceneStyle& style) {
  for (const SceneDipole& dipole : m_scene.dipoles) {
    if (!isInside(m_camera.project(dipole.place), m_camera)) {
      ++m_count.offPane;
    } else if (isBehindSlice(dipole, m_planes, m_camera, style)) {
      ++m_count.behindSlice;
    }
  }
}

const Image& ScenePane::paintWhole(const PaneContents& contents, double mmPerPixel) {
  gather(contents);
  aimAtAll(contents, std::clamp(mmPerPixel, finestPixel, coarsestPixel));
  m_isFitted = false;
  m_volume = contents.head.volume;
  m_frame = contents.head.frame;
  const SceneStyle style = styleOf(contents);
  m_picture = paintSmoothly(style);
  trim(m_picture, style, contents.scale);
  countHidden(style);
  drawOver(m_picture, contents, style);
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
