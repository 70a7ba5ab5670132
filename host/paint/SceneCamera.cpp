#include "host/paint/SceneCamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

#include "host/head/Limits.h"

namespace host {

namespace {

constexpr double leastScale = 0.05;
constexpr double mostScale = 20.0;

void mustBeFinite(bool isFine) {
  if (!isFine) {
    throw std::invalid_argument("a number of the view is not finite");
  }
}

// Exact where the standard views need it, so that a slice seen from its edge has no width.
double sine(double degrees) {
  const double turns = std::remainder(degrees, 360.0);
  if (turns == 90.0 || turns == -90.0) {
    return turns / 90.0;
  }
  if (std::abs(turns) == 180.0) {
    return 0.0;
  }
  return std::sin(turns * (std::numbers::pi / 180.0));
}

double cosine(double degrees) {
  return sine(90.0 - std::abs(std::remainder(degrees, 360.0)));
}

}  // namespace

std::string_view nameOf(Standpoint standpoint) {
  switch (standpoint) {
    case Standpoint::left:
      return "left";
    case Standpoint::right:
      return "right";
    case Standpoint::front:
      return "front";
    case Standpoint::back:
      return "back";
    case Standpoint::top:
      return "top";
    case Standpoint::bottom:
      break;
  }
  return "bottom";
}

ViewAngles anglesOf(Standpoint standpoint) {
  switch (standpoint) {
    case Standpoint::left:
      return {90.0, 0.0};
    case Standpoint::right:
      return {-90.0, 0.0};
    case Standpoint::front:
      return {0.0, 0.0};
    case Standpoint::back:
      return {180.0, 0.0};
    case Standpoint::top:
      return {180.0, 90.0};
    case Standpoint::bottom:
      break;
  }
  return {0.0, -90.0};
}

SceneCamera::SceneCamera(int width, int height) : m_width(width), m_height(height) {}

void SceneCamera::resize(int width, int height) {
  m_width = width;
  m_height = height;
}

void SceneCamera::lookFrom(const ViewAngles& angles) {
  mustBeFinite(std::isfinite(angles.yaw) && std::isfinite(angles.pitch));
  m_angles = {std::remainder(angles.yaw, 360.0), std::clamp(angles.pitch, -90.0, 90.0)};
  const double yawSine = sine(m_angles.yaw);
  const double yawCosine = cosine(m_angles.yaw);
  const double pitchSine = sine(m_angles.pitch);
  const double pitchCosine = cosine(m_angles.pitch);
  m_right = {yawCosine, 0.0, -yawSine};
  m_up = {-yawSine * pitchSine, pitchCosine, -yawCosine * pitchSine};
  m_toViewer = {yawSine * pitchCosine, pitchSine, yawCosine * pitchCosine};
}

void SceneCamera::setCentre(const Vector3& head) {
  mustBeFinite(isFinite(head));
  m_centre = head;
}

void SceneCamera::setScale(double pixelsPerMm) {
  mustBeFinite(std::isfinite(pixelsPerMm));
  m_scale = std::clamp(pixelsPerMm, leastScale, mostScale);
}

void SceneCamera::pan(double columns, double rows) {
  mustBeFinite(std::isfinite(columns) && std::isfinite(rows));
  m_panRight = std::clamp(m_panRight + columns / m_scale, -longestLength, longestLength);
  m_panUp = std::clamp(m_panUp - rows / m_scale, -longestLength, longestLength);
}

Vector3 SceneCamera::unproject(double column, double row) const {
  const double right = (column - m_width * 0.5) / m_scale - m_panRight;
  const double up = (m_height * 0.5 - row) / m_scale - m_panUp;
  return m_centre + m_right * right + m_up * up;
}

}  // namespace host
