#include "host/picture/SceneMarks.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/paint/PictureText.h"
#include "host/paint/SceneLine.h"
#include "host/picture/PictureMarks.h"
#include "host/picture/SliceCaption.h"

namespace host {

namespace {

constexpr Rgb axisColour(int axis) {
  return axis == 0 ? Rgb{255, 120, 110} : axis == 1 ? Rgb{120, 230, 130} : Rgb{120, 170, 255};
}

void drawText(Image& image, const StrokeFont& font, double centreX, double centreY, const std::string& text,
              Rgb colour) {
  if (!(std::abs(centreX) < 40'000.0 && std::abs(centreY) < 40'000.0)) {
    return;  // far outside
  }
  drawEdged(image, font, static_cast<int>(std::lround(centreX)) - font.width(text) / 2,
            static_cast<int>(std::lround(centreY)) - font.lineHeight() / 2, text, colour);
}

// The head's axes as the viewer sees their directions: x to L, y to S, z to A.
void drawAxes(Image& image, const SceneCamera& camera, double scale) {
  const double reach = 26.0 * scale;
  const double letterReach = 38.0 * scale;
  const double fromBorder = letterReach + 18.0 * scale;
  constexpr int leastPicture = 220;  // pixels: in a smaller one they would stand over the head
  constexpr double leastSeen = 0.2;  // an axis along the line of sight has no direction in the picture
  if ((std::min)(image.width(), image.height()) < leastPicture * scale) {
    return;
  }
  const double x = image.width() - fromBorder;
  const double y = image.height() - fromBorder;
  constexpr std::array<const char*, 3> letters{"L", "S", "A"};
  for (int axis = 0; axis < 3; ++axis) {
    const double right = camera.right()[axis];
    const double down = -camera.up()[axis];
    const double seen = std::hypot(right, down);
    if (seen < leastSeen) {
      continue;
    }
    drawLine(image, {x, y}, {x + right * reach, y + down * reach}, {axisColour(axis), 2.5 * scale});
    const double letterAt = reach * seen + (letterReach - reach);
    drawText(image, noteFont(scale), x + right / seen * letterAt, y + down / seen * letterAt,
             letters[static_cast<std::size_t>(axis)], axisColour(axis));
  }
}

// Whether anything that the scene holds stands before a place of the picture at that depth.
bool isHidden(const ScreenPoint& at, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
              const SceneCamera& camera, const SceneStyle& style) {
  const auto covers = [&](const Vector3& centre, double radius) {
    const ScreenPoint ball = camera.project(centre);
    const double right = (ball.column - at.column) / camera.scale();
    const double down = (ball.row - at.row) / camera.scale();
    const double square = radius * radius - right * right - down * down;
    return square > 0.0 && ball.depth - std::sqrt(square) < at.depth;
  };
  const double radius = ballRadiusIn(camera, style);
  return std::any_of(
             planes.begin(), planes.end(),
             [&](const SlicePlane& plane) { return plane.depthAt(camera, at.column, at.row) < at.depth; }) ||
         std::any_of(scene.fiducials.begin(), scene.fiducials.end(),
                     [&](const SceneFiducial& other) { return covers(other.place, fiducialRadius); }) ||
         std::any_of(scene.dipoles.begin(), scene.dipoles.end(),
                     [&](const SceneDipole& dipole) { return covers(dipole.place, radius); });
}

// The nearest point of a ball, a little nearer still, so that the ball does not hide itself.
ScreenPoint faceOf(const Vector3& centre, double radius, const SceneCamera& camera) {
  ScreenPoint at = camera.project(centre);
  at.depth -= radius + 1e-6;
  return at;
}

// Only where its circle is seen: else the name would stand at another one.
void drawFiducialNames(Image& image, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
                       const SceneCamera& camera, const SceneStyle& style, double scale) {
  const StrokeFont font = textFont(scale);
  for (const SceneFiducial& fiducial : scene.fiducials) {
    const ScreenPoint at = faceOf(fiducial.place, fiducialRadius, camera);
    if (isHidden(at, scene, planes, camera, style)) {
      continue;
    }
    const double above = fiducialRadiusIn(camera, style) * camera.scale() + font.lineHeight() * 0.5;
    drawText(image, font, at.column, at.row - above, std::string(1, fiducial.letter),
             fiducialColour(fiducial.letter));
  }
}

void markCurrent(Image& image, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
                 const SceneCamera& camera, const SceneStyle& style, double scale) {
  const SceneDipole* current = findDipole(scene, scene.currentSlot);
  if (current == nullptr) {
    return;
  }
  const ScreenPoint at = camera.project(current->place);
  const double radius = ballRadiusIn(camera, style) * camera.scale() + 4.0 * scale;
  const ScreenPoint face = faceOf(current->place, ballRadiusIn(camera, style), camera);
  const Rgb colour = isHidden(face, scene, planes, camera, style) ? quietInk : letterInk;
  drawEdgedRing(image, at, radius, colour, scale);
}

std::string textOf(Standpoint standpoint) {
  switch (standpoint) {
    case Standpoint::left:
      return "from the patient's left";
    case Standpoint::right:
      return "from the patient's right";
    case Standpoint::front:
      return "from the front";
    case Standpoint::back:
      return "from the back";
    case Standpoint::top:
      return "from above";
    case Standpoint::bottom:
      break;
  }
  return "from below";
}

}  // namespace

std::string viewText(const ViewAngles& angles) {
  for (const Standpoint standpoint : allStandpoints) {
    const ViewAngles standard = anglesOf(standpoint);
    if (angles.pitch == standard.pitch && std::remainder(angles.yaw - standard.yaw, 360.0) == 0.0) {
      return textOf(standpoint);
    }
  }
  return "yaw " + formatMm(angles.yaw) + ", pitch " + formatMm(angles.pitch) + " degrees";
}

void drawMarks(Image& image, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
               const SceneCamera& camera, const SceneStyle& style, double scale) {
  if (style.showCurrent) {
    markCurrent(image, scene, planes, camera, style, scale);
  }
  drawFiducialNames(image, scene, planes, camera, style, scale);
  drawSides(image, sideLetters(camera.right(), camera.up()), scale);
  drawAxes(image, camera, scale);
  drawScaleBar(image, camera.scale(), scale);
}

}  // namespace host
