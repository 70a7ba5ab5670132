#include "host/picture/ScenePicture.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "host/head/HeadBox.h"
#include "host/paint/PictureText.h"
#include "host/picture/SceneMarks.h"
#include "host/picture/SliceCaption.h"

namespace host {

namespace {

constexpr double farthest = 300.0;  // mm from the middle of the picture
constexpr double leastHalf = 50.0;  // mm
// Pixels between what the picture shows and its border, for the letters, and below for scale bar and axes.
constexpr int besideView = 46;
constexpr int belowView = 80;
constexpr int leastWidth = 360;
constexpr int margin = 12;  // around the whole picture

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
  [[nodiscard]] bool isEmpty() const { return m_isEmpty; }
  [[nodiscard]] Vector3 middle() const { return (m_low + m_high) * 0.5; }
  [[nodiscard]] double extent(int axis) const { return m_high[axis] - m_low[axis]; }

 private:
  bool m_isEmpty = true;
  Vector3 m_low;
  Vector3 m_high;
};

bool isHeadFound(const HeadBox& box) {
  return box.high.x > box.low.x && box.high.y > box.low.y && box.high.z > box.low.z;
}

// The middle of the head, else of the sphere, else of the dipoles.
Vector3 centreOf(const DipoleScene& scene, const std::optional<HeadBox>& head) {
  if (head)
    return (head->low + head->high) * 0.5;
  if (scene.sphere)
    return scene.sphere->centre;
  Bounds bounds;
  for (const SceneDipole& dipole : scene.dipoles)
    bounds.add(dipole.place, 0.0);
  return bounds.isEmpty() ? Vector3{} : bounds.middle();
}

// What is in the picture, mm to the right and up from the camera's centre.
Bounds viewBounds(const DipoleScene& scene, const std::optional<HeadBox>& head, const SceneCamera& camera,
                  const SceneStyle& style) {
  Bounds bounds;
  const auto add = [&](const Vector3& point, double around) {
    const Vector3 from = point - camera.centre();
    const double right = dot(from, camera.right());
    const double up = dot(from, camera.up());
    if (std::abs(right) <= farthest && std::abs(up) <= farthest)
      bounds.add({right, up, 0.0}, around);
  };
  add(camera.centre(), leastHalf);
  if (head)
    for (const double x : {head->low.x, head->high.x})
      for (const double y : {head->low.y, head->high.y})
        for (const double z : {head->low.z, head->high.z})
          add({x, y, z}, 0.0);
  if (style.showSphere && scene.sphere && scene.sphere->radius <= farthest)
    add(scene.sphere->centre, scene.sphere->radius);
  for (const SceneDipole& dipole : scene.dipoles) {
    add(dipole.place, style.ballRadius);
    if (style.showArrows)
      add(dipole.place + dipole.arrow, style.ballRadius);
  }
  for (const SceneFiducial& fiducial : scene.fiducials)
    add(fiducial.place, fiducialRadius);
  return bounds;
}

SceneCamera cameraFor(const DipoleScene& scene, const std::optional<HeadBox>& head,
                      const ScenePictureOptions& options) {
  SceneCamera camera(1, 1);
  camera.lookFrom(options.angles);
  camera.setCentre(centreOf(scene, head));
  camera.setScale(1.0 / options.mmPerPixel);
  const Bounds bounds = viewBounds(scene, head, camera, options.style);
  const auto pixels = [&](int axis) {
    return static_cast<int>(std::ceil(bounds.extent(axis) / options.mmPerPixel));
  };
  camera.resize((std::max)(pixels(0), 1), (std::max)(pixels(1), 1));
  camera.pan(-bounds.middle().x * camera.scale(), bounds.middle().y * camera.scale());
  return camera;
}

// The smallest box around everything that is drawn; the whole picture when nothing is.
PixelBox contentOf(const Image& image, Rgb background) {
  PixelBox box{image.width(), image.height(), 0, 0};
  for (int row = 0; row < image.height(); ++row)
    for (int column = 0; column < image.width(); ++column)
      if (image.pixel(column, row) != background)
        box = {(std::min)(box.left, column), (std::min)(box.top, row), (std::max)(box.right, column + 1),
               (std::max)(box.bottom, row + 1)};
  return box.right > box.left ? box : PixelBox{0, 0, image.width(), image.height()};
}

// Cuts the empty border off, gives the marks room, and moves the camera along.
Image trimmed(const Image& view, SceneCamera& camera, Rgb background) {
  const PixelBox content = contentOf(view, background);
  const int width = (std::max)(content.width() + 2 * besideView, leastWidth);
  const int height = content.height() + besideView + belowView;
  const int left = (width - content.width()) / 2;
  Image image(width, height, background);
  image.paste(view.cropped(content), left, besideView);
  camera.pan((view.width() - width) * 0.5 + left - content.left,
             (view.height() - height) * 0.5 + besideView - content.top);
  camera.resize(width, height);
  return image;
}

// The slice of each view that stands behind every dipole and arrow, seen by this viewer, as far as the head
// reaches.
std::vector<SliceRequest> slicesBehind(const DipoleScene& scene, const HeadBox& head,
                                       const SceneCamera& camera, const SceneStyle& style) {
  std::vector<SliceRequest> slices;
  for (const View view : {View::axial, View::coronal, View::sagittal}) {
    const int axis = axesOf(view).slab;
    const double side = camera.toViewer()[axis] >= 0.0 ? 1.0 : -1.0;  // where the viewer stands
    double position = (head.low[axis] + head.high[axis]) * 0.5;
    const auto stepBehind = [&](double mm) {
      // A whole mm, a little farther.
      const double behind = side * std::floor(side * mm - style.ballRadius - 0.5);
      if (behind >= head.low[axis] && behind <= head.high[axis] && (behind - position) * side < 0.0)
        position = behind;
    };
    for (const SceneDipole& dipole : scene.dipoles) {
      stepBehind(dipole.place[axis]);
      if (style.showArrows)
        stepBehind(dipole.place[axis] + dipole.arrow[axis]);
    }
    slices.push_back({view, position});
  }
  return slices;
}

std::vector<SlicePlane> planesOf(const DipoleScene& scene, const std::optional<SceneHead>& head,
                                 const std::optional<HeadBox>& box, const SceneCamera& camera,
                                 const ScenePictureOptions& options) {
  std::vector<SlicePlane> planes;
  if (!head || !box)
    return planes;
  const std::vector<SliceRequest> slices =
      options.slices.empty() ? slicesBehind(scene, *box, camera, options.style) : options.slices;
  for (const SliceRequest& slice : slices)
    planes.emplace_back(head->volume, head->frame, *box, slice.view, slice.position);
  return planes;
}

// Every pixel the mean of two by two.
Image halved(const Image& large) {
  Image image(large.width() / 2, large.height() / 2, {});
  for (int row = 0; row < image.height(); ++row)
    for (int column = 0; column < image.width(); ++column) {
      const Rgb a = large.pixel(2 * column, 2 * row);
      const Rgb b = large.pixel(2 * column + 1, 2 * row);
      const Rgb c = large.pixel(2 * column, 2 * row + 1);
      const Rgb d = large.pixel(2 * column + 1, 2 * row + 1);
      const auto mean = [](int sum) { return static_cast<std::uint8_t>((sum + 2) / 4); };
      image.setPixel(column, row,
                     {mean(a.red + b.red + c.red + d.red), mean(a.green + b.green + c.green + d.green),
                      mean(a.blue + b.blue + c.blue + d.blue)});
    }
  return image;
}

Image paint(const DipoleScene& scene, const std::vector<SlicePlane>& planes, const SceneCamera& camera,
            const SceneStyle& style) {
  DepthPicture picture(camera.width(), camera.height(), style.background);
  ScenePainter painter;
  painter.paint(picture, scene, planes, camera, style);
  return std::move(picture.image());
}

// Twice as large and then halved, so that edges are smooth; not so for pictures that are huge already.
Image paintSmoothly(const DipoleScene& scene, const std::vector<SlicePlane>& planes,
                    const SceneCamera& camera, SceneStyle style) {
  constexpr int hugePixels = 10'000'000;
  if (camera.width() > hugePixels / camera.height())
    return paint(scene, planes, camera, style);
  SceneCamera large = camera;
  large.resize(2 * camera.width(), 2 * camera.height());
  large.setScale(2.0 * camera.scale());
  style.lineWidth *= 2.0;
  return halved(paint(scene, planes, large, style));
}

SceneReport reportOf(const DipoleScene& scene, const std::vector<SlicePlane>& planes,
                     const SceneCamera& camera, const SceneStyle& style) {
  SceneReport report;
  report.total = scene.total;
  report.drawn = static_cast<int>(scene.dipoles.size());
  report.switchedOff = scene.switchedOff;
  report.nowhere = scene.nowhere;
  for (const SceneDipole& dipole : scene.dipoles) {
    const ScreenPoint at = camera.project(dipole.place);
    const bool isInside =
        at.column >= 0.0 && at.row >= 0.0 && at.column < camera.width() && at.row < camera.height();
    if (!isInside)
      ++report.outside;
    else if (isBehindSlice(dipole, planes, camera, style))
      ++report.behindSlice;
  }
  return report;
}

std::string dipolesText(int count) {
  return std::to_string(count) + (count == 1 ? " dipole" : " dipoles");
}

TextBlock headerOf(const ScenePictureOptions& options, const std::optional<SceneHead>& head,
                   const SceneCamera& camera, int width) {
  TextBlock header(width);
  if (!options.title.empty())
    header.add(headFont(), options.title, ink);
  if (!options.patientId.empty())
    header.add(textFont(), "Patient " + options.patientId, ink);
  header.add(textFont(), "3D " + viewText(camera.angles()), ink);
  if (head && !head->volume.sidesStated())
    header.add(textFont(), "The MRI file does not say which side is left: the sides are not certain",
               warningInk);
  return header;
}

// Where left is, in words where the picture shows it well.
std::string sidesText(const SceneCamera& camera) {
  constexpr double clearly = 0.5;
  const double left = camera.right().x;
  if (std::abs(left) < clearly)
    return "The letters at the edges are the patient's sides.";
  return std::string("The patient's left is on the ") + (left > 0.0 ? "right" : "left") + " of the picture.";
}

TextBlock footerOf(const DipoleScene& scene, const std::vector<SlicePlane>& planes, const SceneCamera& camera,
                   const SceneReport& report, int width) {
  TextBlock footer(width);
  footer.add(textFont(), countText(report), ink);
  for (const std::string& warning : warningTexts(report))
    footer.add(textFont(), warning, warningInk);
  std::string slices;
  for (const SlicePlane& plane : planes)
    slices += (slices.empty() ? "Slices " : ", ") + positionText(plane.view(), plane.position());
  if (!slices.empty())
    footer.add(noteFont(), slices + ".", quietInk);
  if (!scene.fiducials.empty())
    footer.add(noteFont(), "Circles N, L, R: nasion and ears as the dipole file has them.", quietInk);
  footer.add(noteFont(), sidesText(camera), quietInk);
  return footer;
}

Image frame(const Image& view, const TextBlock& header, const TextBlock& footer) {
  const int viewTop = margin + header.height() + lineGap;
  const int footerTop = viewTop + view.height() + 2 * lineGap;
  Image image(view.width() + 2 * margin, footerTop + footer.height() + margin, pictureBackground);
  header.draw(image, margin, margin);
  image.paste(view, margin, viewTop);
  footer.draw(image, margin, footerTop);
  return image;
}

}  // namespace

std::string countText(const SceneReport& report) {
  return "dipoles: " + std::to_string(report.drawn) + " of " + std::to_string(report.total);
}

std::vector<std::string> warningTexts(const SceneReport& report) {
  std::vector<std::string> texts;
  if (report.behindSlice > 0)
    texts.push_back(dipolesText(report.behindSlice) + " hidden behind a slice");
  if (report.outside > 0)
    texts.push_back(dipolesText(report.outside) + " outside of the picture");
  if (report.switchedOff > 0)
    texts.push_back(dipolesText(report.switchedOff) + " switched off");
  if (report.nowhere > 0)
    texts.push_back(dipolesText(report.nowhere) + " without a valid location");
  return texts;
}

ScenePicture drawScene(const CDipoleFace3On3DView& dipoles, const std::optional<SceneHead>& head,
                       const ScenePictureOptions& options) {
  if (!(options.mmPerPixel >= 0.1 && options.mmPerPixel <= 5.0))
    throw std::invalid_argument("a pixel must have 0.1 to 5 mm");
  if (!(options.style.ballRadius > 0.0 && options.style.ballRadius <= 50.0))
    throw std::invalid_argument("the radius of a ball must be above 0 and at most 50 mm");
  const DipoleScene scene = sceneOf(dipoles);
  std::optional<HeadBox> box;
  if (head) {
    const HeadBox found = findHead(head->volume, head->frame);
    if (isHeadFound(found))
      box = found;
  }
  SceneCamera camera = cameraFor(scene, box, options);
  const std::vector<SlicePlane> planes = planesOf(scene, head, box, camera, options);
  Image view = trimmed(paintSmoothly(scene, planes, camera, options.style), camera, options.style.background);
  drawMarks(view, scene, planes, camera, options.style);

  ScenePicture picture;
  picture.report = reportOf(scene, planes, camera, options.style);
  picture.image = frame(view, headerOf(options, head, camera, view.width()),
                        footerOf(scene, planes, camera, picture.report, view.width()));
  return picture;
}

}  // namespace host
