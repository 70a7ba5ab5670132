// The 3D pane's picture of everything that it shows, as large as that is.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "host/head/HeadBoxOf.h"
#include "host/head/Limits.h"
#include "host/paint/PictureText.h"
#include "host/panes/ScenePane.h"
#include "host/picture/SceneMarks.h"

namespace host {

namespace {

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

}  // namespace

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
    if (!m_camera.shows(m_camera.project(dipole.place))) {
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

}  // namespace host
