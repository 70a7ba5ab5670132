#include "host/picture/SceneMarks.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/paint/PictureText.h"
#include "host/paint/SceneLine.h"
#include "host/picture/SliceCaption.h"

namespace host {

namespace {

constexpr int margin = 10;  // pixels between the marks and the border

constexpr Rgb axisColour(int axis) {
  return axis == 0 ? Rgb{255, 120, 110} : axis == 1 ? Rgb{120, 230, 130} : Rgb{120, 170, 255};
}

void drawText(Image& image, const StrokeFont& font, double centreX, double centreY, const std::string& text,
              Rgb colour) {
  if (!(std::abs(centreX) < 40'000.0 && std::abs(centreY) < 40'000.0))
    return;  // far outside
  drawEdged(image, font, static_cast<int>(std::lround(centreX)) - font.width(text) / 2,
            static_cast<int>(std::lround(centreY)) - font.lineHeight() / 2, text, colour);
}

void drawSides(Image& image, const SceneCamera& camera) {
  const StrokeFont& font = letterFont();
  const double width = image.width();
  const double height = image.height();
  const double fromTop = margin + font.lineHeight() * 0.5;
  const auto beside = [&](const std::string& text) { return margin + font.width(text) * 0.5; };
  const std::string right = sidesOf(camera.right());
  const std::string left = sidesOf(camera.right() * -1.0);
  drawText(image, font, width - beside(right), height * 0.5, right, letterInk);
  drawText(image, font, beside(left), height * 0.5, left, letterInk);
  drawText(image, font, width * 0.5, fromTop, sidesOf(camera.up()), letterInk);
  drawText(image, font, width * 0.5, height - fromTop, sidesOf(camera.up() * -1.0), letterInk);
}

// The head's axes as the viewer sees their directions: x to L, y to S, z to A.
void drawAxes(Image& image, const SceneCamera& camera) {
  constexpr double reach = 26.0;
  constexpr double letterReach = 38.0;
  constexpr int leastPicture = 220;  // pixels: in a smaller one they would stand over the head
  constexpr double leastSeen = 0.2;  // an axis along the line of sight has no direction in the picture
  if ((std::min)(image.width(), image.height()) < leastPicture)
    return;
  const double x = image.width() - margin - letterReach - 8.0;
  const double y = image.height() - margin - letterReach - 8.0;
  constexpr std::array<const char*, 3> letters{"L", "S", "A"};
  for (int axis = 0; axis < 3; ++axis) {
    const double right = camera.right()[axis];
    const double down = -camera.up()[axis];
    const double seen = std::hypot(right, down);
    if (seen < leastSeen)
      continue;
    drawLine(image, {x, y}, {x + right * reach, y + down * reach}, {axisColour(axis), 2.5});
    const double letterAt = reach * seen + (letterReach - reach);
    drawText(image, noteFont(), x + right / seen * letterAt, y + down / seen * letterAt,
             letters[static_cast<std::size_t>(axis)], axisColour(axis));
  }
}

void drawScaleBar(Image& image, const SceneCamera& camera) {
  constexpr double leastBar = 12.0;
  // In a narrow picture what the letters in the middle leave.
  const double room =
      image.width() * 0.5 - 3.0 * margin - letterFont().width("IA") * 0.5 - textFont().width("50 mm");
  const double mm = scaleBarMm(camera.scale(), (std::min)(room, image.width() * 0.25));
  const double left = margin + 1.5;
  const double right = left + mm * camera.scale();
  if (right - left > room || right - left < leastBar)
    return;
  const double y = image.height() - margin - textFont().lineHeight() * 0.5;
  for (const LineStyle& line : {LineStyle{edgeInk, 4.0}, LineStyle{ink, 2.0}}) {
    drawLine(image, {left, y}, {right, y}, line);
    drawLine(image, {left, y - 5.0}, {left, y + 5.0}, line);
    drawLine(image, {right, y - 5.0}, {right, y + 5.0}, line);
  }
  const std::string text = std::to_string(static_cast<int>(mm)) + " mm";
  drawText(image, textFont(), right + 8.0 + textFont().width(text) * 0.5, y, text, ink);
}

// Whether anything that the scene holds stands before a place of the picture at that depth.
bool isHidden(const ScreenPoint& at, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
              const SceneCamera& camera, const SceneStyle& style) {
  const auto covers = [&](const Vector3& centre, double radius) {
    const ScreenPoint ball = camera.project(centre);
    const double mm = std::hypot(ball.column - at.column, ball.row - at.row) / camera.scale();
    return mm < radius && ball.depth - std::sqrt(radius * radius - mm * mm) < at.depth;
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
                       const SceneCamera& camera, const SceneStyle& style) {
  for (const SceneFiducial& fiducial : scene.fiducials) {
    const ScreenPoint at = faceOf(fiducial.place, fiducialRadius, camera);
    if (isHidden(at, scene, planes, camera, style))
      continue;
    const double above = fiducialRadiusIn(camera, style) * camera.scale() + textFont().lineHeight() * 0.5;
    drawText(image, textFont(), at.column, at.row - above, std::string(1, fiducial.letter),
             fiducialColour(fiducial.letter));
  }
}

void markCurrent(Image& image, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
                 const SceneCamera& camera, const SceneStyle& style) {
  const SceneDipole* current = findDipole(scene, scene.currentSlot);
  if (current == nullptr)
    return;
  const ScreenPoint at = camera.project(current->place);
  const double radius = ballRadiusIn(camera, style) * camera.scale() + 4.0;
  const ScreenPoint face = faceOf(current->place, ballRadiusIn(camera, style), camera);
  const Rgb colour = isHidden(face, scene, planes, camera, style) ? quietInk : letterInk;
  drawRing(image, at, radius, {edgeInk, 4.0});
  drawRing(image, at, radius, {colour, 2.0});
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

std::string sidesOf(const Vector3& direction) {
  constexpr double leastPart = 0.2588;  // the cosine of 75 degrees
  struct Side {
    double part;
    char letter;
  };
  std::array<Side, 3> sides{{{direction.x, direction.x > 0.0 ? 'L' : 'R'},
                             {direction.y, direction.y > 0.0 ? 'S' : 'I'},
                             {direction.z, direction.z > 0.0 ? 'A' : 'P'}}};
  // Rounded, so that directions halfway between two sides always name the same first.
  const auto closeness = [](const Side& side) { return std::lround(std::abs(side.part) * 1e6); };
  std::stable_sort(sides.begin(), sides.end(),
                   [&](const Side& one, const Side& other) { return closeness(one) > closeness(other); });
  std::string text;
  for (const Side& side : sides)
    if (std::abs(side.part) > leastPart * length(direction))
      text += side.letter;
  return text;
}

std::string viewText(const ViewAngles& angles) {
  for (const Standpoint standpoint : allStandpoints) {
    const ViewAngles standard = anglesOf(standpoint);
    if (angles.pitch == standard.pitch && std::remainder(angles.yaw - standard.yaw, 360.0) == 0.0)
      return textOf(standpoint);
  }
  return "yaw " + formatMm(angles.yaw) + ", pitch " + formatMm(angles.pitch) + " degrees";
}

double scaleBarMm(double pixelsPerMm, double mostPixels) {
  double best = 1.0;
  for (const double mm : {2.0, 5.0, 10.0, 20.0, 50.0, 100.0, 200.0, 500.0, 1000.0})
    if (mm * pixelsPerMm <= mostPixels)
      best = mm;
  return best;
}

void drawMarks(Image& image, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
               const SceneCamera& camera, const SceneStyle& style) {
  if (style.showCurrent)
    markCurrent(image, scene, planes, camera, style);
  drawFiducialNames(image, scene, planes, camera, style);
  drawSides(image, camera);
  drawAxes(image, camera);
  drawScaleBar(image, camera);
}

}  // namespace host
