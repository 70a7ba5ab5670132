#include "host/picture/ScenePainter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <utility>

#include "host/paint/Rounding.h"
#include "host/paint/SceneLine.h"
#include "host/paint/SolidShapes.h"

namespace host {

namespace {

constexpr Rgb sphereColour{120, 150, 190};
// So many dipoles are drawn before it is worth knowing which parts of the picture are full; then twice as
// many.
constexpr std::size_t firstSummary = 512;

Rgb faded(Rgb colour, double depth, const SceneStyle& style) {
  const double part = style.fade * std::clamp(0.5 + 0.5 * depth / style.fadeReach, 0.0, 1.0);
  return {mixed(colour.red, style.background.red, part), mixed(colour.green, style.background.green, part),
          mixed(colour.blue, style.background.blue, part)};
}

constexpr double endless = std::numeric_limits<double>::infinity();

// Of many dipoles in one place, such as copies, the first hides the others.
bool isInPlaceOf(const ScreenPoint& one, const ScreenPoint& other) {
  return one.depth == other.depth && one.column == other.column && one.row == other.row;
}

ArrowShape arrowShape(double ballRadius) {
  return {0.3 * ballRadius, 0.8 * ballRadius, 2.4 * ballRadius};
}

void drawCircle(DepthPicture& picture, const SceneCamera& camera, const SceneSphere& sphere,
                const Vector3& first, const Vector3& second, const LineStyle& line) {
  constexpr int corners = 96;
  ScreenPoint before = camera.project(sphere.centre + first * sphere.radius);
  for (int i = 1; i <= corners; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / corners;
    const Vector3 spoke = first * std::cos(angle) + second * std::sin(angle);
    const ScreenPoint next = camera.project(sphere.centre + spoke * sphere.radius);
    drawLine(picture, before, next, line);
    before = next;
  }
}

// Its outline, and the circles in which the three planes of the head's axes cut it.
void drawSphere(DepthPicture& picture, const SceneCamera& camera, const SceneSphere& sphere, double width) {
  const LineStyle outline{sphereColour, width, 0.8, 0.25};
  const LineStyle inside{sphereColour, width, 0.35, 0.1};
  drawCircle(picture, camera, sphere, camera.right(), camera.up(), outline);
  drawCircle(picture, camera, sphere, {1, 0, 0}, {0, 1, 0}, inside);
  drawCircle(picture, camera, sphere, {0, 1, 0}, {0, 0, 1}, inside);
  drawCircle(picture, camera, sphere, {0, 0, 1}, {1, 0, 0}, inside);
}

// Circles, because nothing may hide a dipole that is no part of the head; the nearest over the others.
void drawFiducials(DepthPicture& picture, const SceneCamera& camera, const DipoleScene& scene,
                   const SceneStyle& style) {
  const double radius = fiducialRadiusIn(camera, style);
  std::vector<SceneFiducial> fiducials = scene.fiducials;
  std::sort(fiducials.begin(), fiducials.end(), [&](const SceneFiducial& one, const SceneFiducial& other) {
    return camera.project(one.place).depth > camera.project(other.place).depth;
  });
  for (const SceneFiducial& fiducial : fiducials) {
    drawCircle(picture, camera, {fiducial.place, radius}, camera.right(), camera.up(),
               {fiducialColour(fiducial.letter), 1.5 * style.lineWidth, 1.0, 0.0});
  }
}

}  // namespace

Rgb fiducialColour(char letter) {
  switch (letter) {
    case 'L':
      return {90, 150, 255};
    case 'R':
      return {255, 90, 90};
    default:
      return {90, 220, 120};
  }
}

double ballRadiusIn(const SceneCamera& camera, const SceneStyle& style) {
  constexpr double leastPixels = 1.5;
  return (std::max)(style.ballRadius, leastPixels / camera.scale());
}

double fiducialRadiusIn(const SceneCamera& camera, const SceneStyle& style) {
  return (std::max)(fiducialRadius, 4.0 * style.lineWidth / camera.scale());
}

void ScenePainter::place(const DipoleScene& scene, const SceneCamera& camera) {
  m_placed.clear();
  for (const SceneDipole& dipole : scene.dipoles) {
    m_placed.push_back({&dipole, camera.project(dipole.place)});
  }
  // The nearest first: what they hide costs little then. Equals stay in the order of their slots.
  std::sort(m_placed.begin(), m_placed.end(), [](const Placed& one, const Placed& other) {
    return one.at.depth != other.at.depth ? one.at.depth < other.at.depth
                                          : one.dipole->slot < other.dipole->slot;
  });
}

void ScenePainter::drawDipoles(DepthPicture& picture, const DipoleScene& scene, const SceneCamera& camera,
                               const SceneStyle& style) {
  place(scene, camera);
  const double radius = ballRadiusIn(camera, style);
  const ArrowShape shape = arrowShape(radius);
  std::size_t count = 0;
  std::size_t nextSummary = firstSummary;
  ScreenPoint last{endless, endless, endless};
  for (const Placed& placed : m_placed) {
    if (++count == nextSummary) {
      picture.summarise();
      nextSummary += nextSummary / 2;
    }
    const Rgb colour = faded(placed.dipole->colour, placed.at.depth, style);
    if (!isInPlaceOf(placed.at, last)) {
      drawBall(picture, placed.at, radius * camera.scale(), radius, colour);
    }
    last = placed.at;
    if (style.showArrows) {
      drawArrow(picture, camera, placed.dipole->place, placed.dipole->place + placed.dipole->arrow, shape,
                colour);
    }
  }
}

// Over dipoles that are there: where a slice is nearer, it lets a part of their colour through.
void ScenePainter::laySlicesOver(DepthPicture& picture, const std::vector<SlicePlane>& planes,
                                 const SceneCamera& camera, const SceneStyle& style) {
  if (!m_slices || m_slices->width() != picture.width() || m_slices->height() != picture.height()) {
    m_slices.emplace(picture.width(), picture.height(), style.background);
  } else {
    m_slices->clear(style.background);
  }
  for (const SlicePlane& plane : planes) {
    plane.draw(*m_slices, camera);
  }
  for (int row = 0; row < picture.height(); ++row) {
    float* depths = picture.depths(row);
    Rgb* colours = picture.colours(row);
    const float* sliceDepths = m_slices->depths(row);
    const Rgb* sliceColours = m_slices->colours(row);
    for (int column = 0; column < picture.width(); ++column) {
      if (!(sliceDepths[column] < depths[column])) {
        continue;
      }
      const Rgb slice = sliceColours[column];
      const Rgb behind = colours[column];
      const bool isDipole = depths[column] < std::numeric_limits<float>::infinity();
      const double part = style.seeThrough;
      colours[column] = isDipole
                            ? Rgb{mixed(slice.red, behind.red, part), mixed(slice.green, behind.green, part),
                                  mixed(slice.blue, behind.blue, part)}
                            : slice;
      depths[column] = sliceDepths[column];
    }
  }
}

// Slices that are seen through, fiducials, sphere.
void ScenePainter::drawOver(DepthPicture& picture, const DipoleScene& scene,
                            const std::vector<SlicePlane>& planes, const SceneCamera& camera,
                            const SceneStyle& style) {
  if (style.seeThrough > 0.0 && !planes.empty()) {
    laySlicesOver(picture, planes, camera, style);
  }
  drawFiducials(picture, camera, scene, style);
  if (style.showSphere && scene.sphere) {
    drawSphere(picture, camera, *scene.sphere, style.lineWidth);
  }
}

void ScenePainter::paint(DepthPicture& picture, const DipoleScene& scene,
                         const std::vector<SlicePlane>& planes, const SceneCamera& camera,
                         const SceneStyle& style) {
  picture.clear(style.background);
  if (!(style.seeThrough > 0.0)) {
    for (const SlicePlane& plane : planes) {
      plane.draw(picture, camera);
    }
  }
  drawDipoles(picture, scene, camera, style);
  drawOver(picture, scene, planes, camera, style);
}

const DepthPicture& ScenePainter::keptDipoles(const DipoleScene& scene, const SceneCamera& camera,
                                              const SceneStyle& style) {
  DipolesKey wanted{std::move(m_spare), camera, style};
  wanted.dipoles = scene.dipoles;
  if (m_dipoles && m_dipolesKey == wanted) {
    m_spare = std::move(wanted.dipoles);
    return *m_dipoles;
  }
  m_dipolesKey.reset();  // what fails on the way leaves nothing that counts as whole
  if (!m_dipoles || m_dipoles->width() != camera.width() || m_dipoles->height() != camera.height()) {
    m_dipoles.emplace(camera.width(), camera.height(), style.background);
  } else {
    m_dipoles->clear(style.background);
  }
  drawDipoles(*m_dipoles, scene, camera, style);
  m_dipolesKey = std::move(wanted);
  return *m_dipoles;
}

void ScenePainter::paintKeeping(DepthPicture& picture, const DipoleScene& scene,
                                const std::vector<SlicePlane>& planes, const SceneCamera& camera,
                                const SceneStyle& style) {
  if (!(style.seeThrough > 0.0) && !planes.empty()) {
    paint(picture, scene, planes, camera, style);
    return;
  }
  picture = keptDipoles(scene, camera, style);
  drawOver(picture, scene, planes, camera, style);
}

int pickDipole(const DipoleScene& scene, const std::vector<SlicePlane>& planes, const SceneCamera& camera,
               const SceneStyle& style, int column, int row) {
  const double x = column + 0.5;
  const double y = row + 0.5;
  const double radius = ballRadiusIn(camera, style);
  const double pixels = radius * camera.scale();
  double nearest = endless;
  int slot = -1;
  for (const SceneDipole& dipole : scene.dipoles) {
    const ScreenPoint at = camera.project(dipole.place);
    const double square = pixels * pixels - (x - at.column) * (x - at.column) - (y - at.row) * (y - at.row);
    if (!(square >= 0.0)) {
      continue;
    }
    const double depth = at.depth - std::sqrt(square) / camera.scale();
    if (depth < nearest) {
      nearest = depth;
      slot = dipole.slot;
    }
  }
  if (style.seeThrough > 0.0) {
    return slot;
  }
  const auto hides = [&](const SlicePlane& plane) { return plane.depthAt(camera, x, y) < nearest; };
  return std::any_of(planes.begin(), planes.end(), hides) ? -1 : slot;
}

bool isBehindSlice(const SceneDipole& dipole, const std::vector<SlicePlane>& planes,
                   const SceneCamera& camera, const SceneStyle& style) {
  const ScreenPoint at = camera.project(dipole.place);
  const double nearest = at.depth - ballRadiusIn(camera, style);
  return std::any_of(planes.begin(), planes.end(), [&](const SlicePlane& plane) {
    return plane.depthAt(camera, at.column, at.row) < nearest;
  });
}

}  // namespace host
