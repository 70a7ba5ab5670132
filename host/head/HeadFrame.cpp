#include "host/head/HeadFrame.h"

#include <stdexcept>

namespace host {

namespace {

// No head is smaller or larger; points given in cm or m fall below.
constexpr double smallestHead = 20.0;
constexpr double largestHead = 500.0;
// The sine of the smallest angle between the ear line and the line to the nasion (about 17 degrees).
constexpr double smallestSine = 0.3;

void refuse(const char* cause) {
  throw std::invalid_argument(cause);
}

Affine frameOf(const Fiducials& points) {
  if (!isFinite(points.nasion) || !isFinite(points.leftEar) || !isFinite(points.rightEar)) {
    refuse("a fiducial coordinate is not a number");
  }
  const Vector3 origin = (points.leftEar + points.rightEar) * 0.5;
  const Vector3 front = points.nasion - origin;
  const Vector3 left = points.leftEar - points.rightEar;
  const double depth = length(front);
  const double width = length(left);
  if (width < smallestHead || depth < smallestHead) {
    refuse("the fiducials lie too close together (they are expected in mm)");
  }
  if (width > largestHead || depth > largestHead) {
    refuse("the fiducials lie too far apart (they are expected in mm)");
  }
  if (length(cross(front, left)) < smallestSine * depth * width) {
    refuse("the fiducials lie nearly on one line");
  }
  if (points.leftEar.x >= points.rightEar.x) {
    refuse(
        "the left ear is not on the left of the right ear: the ears are exchanged, or left is given as "
        "positive");
  }
  if (points.nasion.y <= origin.y) {
    refuse("the nasion is not in front of the ears: points are exchanged, or back is given as positive");
  }

  const Vector3 z = front * (1.0 / depth);
  const Vector3 across = left - z * dot(left, z);
  const Vector3 x = across * (1.0 / length(across));
  const Vector3 y = cross(z, x);
  return {x, y, z, origin};
}

}  // namespace

HeadFrame::HeadFrame(const Fiducials& points)
    // An orthonormal frame passes the inversion's test by a wide margin: the value is always there.
    : m_toScanner(frameOf(points)), m_fromScanner(m_toScanner.inverse().value()) {}

}  // namespace host
