#include "host/dipoles/DipoleScene.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "host/head/Limits.h"
#include "host/paint/Rounding.h"

namespace host {

namespace {

constexpr double farthestPlace = 100'000.0;  // mm

Vector3 vectorOf(const double (&values)[3]) {
  return {values[0], values[1], values[2]};
}

// The library's own is slow, and needed only where squares leave the range of numbers.
double sizeOf(const Vector3& vector) {
  const double square = dot(vector, vector);
  return square > 1e-200 && square < 1e200 ? std::sqrt(square) : std::hypot(vector.x, vector.y, vector.z);
}

// The module's floats are bytes / 256.
std::uint8_t byteOf(float part) {
  return part > 0.0F ? roundedByte(static_cast<double>((std::min)(part * 256.0F, 255.0F))) : 0;
}

void addDipole(DipoleScene& scene, int slot, const CDipoleszq& dipole, const SceneChoice& choice) {
  ++scene.shown;
  const Vector3 place = placeOf(dipole);
  if (isPlace(place)) {
    scene.dipoles.push_back({slot, place, choice.colourOf(dipole), choice.arrowOf(dipole)});
  } else {
    ++scene.nowhere;
  }
}

void addFiducials(DipoleScene& scene, const CDipoleFace3On3DView& dipoles) {
  struct Point {
    CFiducial::PointIndex index;
    char letter;
  };
  if (dipoles.getShowFiducialPt() == 0) {
    return;
  }
  for (const Point& point :
       {Point{CFiducial::nasion, 'N'}, {CFiducial::leftEar, 'L'}, {CFiducial::rightEar, 'R'}}) {
    Vector3 place;
    const CFiduciaryPtzq& stored = dipoles.m_fiducialCtf.m_points[point.index];
    if (stored.getPosition(place.x, place.y, place.z) != 0 && isPlace(place)) {
      scene.fiducials.push_back({point.letter, place});
    }
  }
}

std::optional<SceneSphere> sphereOf(const CDipoleFace3On3DView& dipoles) {
  const auto isRadius = [](double mm) { return mm > 0.0 && mm <= farthestPlace; };
  const SceneSphere fitted{vectorOf(dipoles.m_sphereCtf.m_center), dipoles.m_sphereCtf.m_radius};
  if (isRadius(fitted.radius) && isPlace(fitted.centre)) {
    return fitted;
  }
  if (isRadius(dipoles.m_sphereLocational.m_radius)) {
    return SceneSphere{{}, dipoles.m_sphereLocational.m_radius};
  }
  return std::nullopt;
}

}  // namespace

bool isSwitchedOn(const CDipoleFace3On3DView& dipoles, int slot, const CDipoleszq& dipole) {
  if (dipoles.showAllDipole() == 0) {
    return false;
  }
  if (dipoles.m_showCurrentDipoleOnly != 0) {
    return slot == dipoles.m_currentDipole;
  }
  return dipole.m_show != 0;
}

bool isPlace(const Vector3& point) {
  const auto isNear = [](double mm) { return std::abs(mm) <= farthestPlace; };  // no for what is no number
  return isNear(point.x) && isNear(point.y) && isNear(point.z);
}

std::optional<Vector3> directionOf(const CDipoles& dipole) {
  const Vector3 orientation = vectorOf(dipole.m_orientation);
  const double size = sizeOf(orientation);
  if (!(size > 0.0) || !std::isfinite(size)) {
    return std::nullopt;
  }
  return Vector3{orientation.x / size, orientation.y / size, orientation.z / size};
}

Vector3 arrowOf(const CDipoles& dipole) {
  if (dipole.m_showOrientation == 0 || !(dipole.m_orientationLength > 0.0)) {
    return {};
  }
  return directionOf(dipole).value_or(Vector3()) * (std::min)(dipole.m_orientationLength, longestLength);
}

Rgb ownColour(const CDipoles& dipole) {
  const float(&colour)[3] = dipole.m_colorF;
  return {byteOf(colour[0]), byteOf(colour[1]), byteOf(colour[2])};
}

DipoleScene sceneOf(const CDipoleFace3On3DView& dipoles) {
  return sceneOf(dipoles,
                 {[&](int slot, const CDipoleszq& dipole) { return isSwitchedOn(dipoles, slot, dipole); },
                  ownColour, arrowOf});
}

DipoleScene sceneOf(const CDipoleFace3On3DView& dipoles, const SceneChoice& choice) {
  DipoleScene scene;
  scene.dipoles.reserve(static_cast<std::size_t>((std::max)(dipoles.m_totalDipoles, 0)));
  for (int slot = 0; slot < dipoles.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = dipoles.m_dipoles[slot];
    if (dipole == nullptr) {
      continue;
    }
    ++scene.total;
    if (choice.isShown(slot, *dipole)) {
      addDipole(scene, slot, *dipole, choice);
    } else {
      ++scene.switchedOff;
    }
  }
  if (findDipole(scene, dipoles.m_currentDipole) != nullptr) {
    scene.currentSlot = dipoles.m_currentDipole;
  }
  addFiducials(scene, dipoles);
  scene.sphere = sphereOf(dipoles);
  return scene;
}

const SceneDipole* findDipole(const DipoleScene& scene, int slot) {
  const auto at =
      std::lower_bound(scene.dipoles.begin(), scene.dipoles.end(), slot,
                       [](const SceneDipole& dipole, int wanted) { return dipole.slot < wanted; });
  return at != scene.dipoles.end() && at->slot == slot ? &*at : nullptr;
}

}  // namespace host
