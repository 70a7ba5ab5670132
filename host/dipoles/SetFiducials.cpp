#include "host/dipoles/SetFiducials.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <stdexcept>

#include "host/head/HeadFile.h"
#include "host/head/VoxelAxes.h"

namespace host {

namespace {

using Points = std::array<Vector3, 3>;  // nasion, left ear, right ear

constexpr double modulesVoxel = 0.859375;  // mm, whatever MRI the points were set in

Points pointsOf(const Fiducials& fiducials) {
  return {fiducials.nasion, fiducials.leftEar, fiducials.rightEar};
}

// Nothing unless all three are set.
std::optional<Points> pointsOf(const CFiducial& set) {
  Points points;
  for (std::size_t i = 0; i < points.size(); ++i) {
    Vector3& point = points[i];
    if (set.m_points[i].getPosition(point.x, point.y, point.z) == 0) {
      return std::nullopt;
    }
  }
  return points;
}

// The largest difference of a distance between two points; not a number when one is not.
double differenceOf(const Points& a, const Points& b) {
  double worst = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const std::size_t j = (i + 1) % a.size();
    const double difference = std::abs(length(a[i] - a[j]) - length(b[i] - b[j]));
    worst = difference <= worst ? worst : difference;
  }
  return worst;
}

// The side of the voxels, mm, when they are cubes.
std::optional<double> cubeOf(const Volume& volume) {
  constexpr double mostUnequal = 0.01;  // of the side
  const Affine& map = volume.toScanner();
  const double side = length(map.column(0));
  const auto isSide = [&](int axis) {
    return std::abs(length(map.column(axis)) - side) <= mostUnequal * side;
  };
  return isSide(1) && isSide(2) ? std::optional(side) : std::nullopt;
}

std::string inMm(double value) {
  return std::isfinite(value) && std::abs(value) < 1e6 ? std::to_string(std::lround(value)) + " mm"
                                                       : "a distance that is not a number";
}

// Slice numbers sagittal, coronal, axial.
Vector3 slicesOf(const Vector3& stored) {
  constexpr double farEnd = 256.0;
  return {farEnd - stored.x, farEnd - stored.z, farEnd - stored.y};
}

// The place of three slices, whose numbers grow towards the given directions of the scanner's axes.
Vector3 placeOf(const Vector3& slices, const Volume& volume, const VoxelAxes& axes,
                const std::array<bool, 3>& growsAlong) {
  Vector3 index;
  for (std::size_t scanner = 0; scanner < 3; ++scanner) {
    const auto axis = static_cast<std::size_t>(axes.axis[scanner]);
    const double slice = slices[static_cast<int>(scanner)];
    const double last = volume.dimensions()[axis] - 1.0;
    if (!(slice >= 0.0 && slice <= last)) {
      throw std::runtime_error(
          "the fiducial points of the dipole file lie outside of this MRI: they are of another one");
    }
    index[static_cast<int>(axis)] = axes.isAlong[scanner] == growsAlong[scanner] ? slice : last - slice;
  }
  return volume.toScanner()(index);
}

}  // namespace

Fiducials fiducialsOfSet(const CDipoleFace& set, const Volume& volume) {
  const std::optional<Points> stored = pointsOf(set.m_fiducialMri);
  const std::optional<Points> head = pointsOf(set.m_fiducialCtf);
  if (!stored) {
    throw std::runtime_error("the dipole file gave no fiducial points of an MRI");
  }
  if (!head) {
    throw std::runtime_error("the dipole file gave no head sphere, so its fiducial points cannot be checked");
  }
  if (!volume.sidesStated()) {
    throw std::runtime_error(
        "this MRI does not state its sides: the fiducial points of the dipole file cannot be placed in it");
  }
  Points slices;
  std::transform(stored->begin(), stored->end(), slices.begin(), slicesOf);
  const bool isFromLeft = slices[1].x < slices[2].x;
  const std::array<bool, 3> growsAlong = {isFromLeft, false, false};
  const VoxelAxes axes(volume.toScanner());
  Points places;
  std::transform(slices.begin(), slices.end(), places.begin(),
                 [&](const Vector3& point) { return placeOf(point, volume, axes, growsAlong); });
  const double difference = differenceOf(places, *head);
  if (!(difference <= mostDifference)) {
    throw std::runtime_error("the distances between the fiducial points of the dipole file differ by " +
                             inMm(difference) + " in this MRI: it is not the one they were set in");
  }
  const Fiducials points = {places[0], places[1], places[2]};
  try {
    (void)frameIn(volume, points);
  } catch (const std::invalid_argument& error) {
    throw std::runtime_error(std::string("the fiducial points of the dipole file do not fit this MRI: ") +
                             error.what());
  }
  return points;
}

std::optional<Fiducials> measuredPoints(const CDipoleFace& set) {
  const std::optional<Points> own = pointsOf(set.m_fiducialCtf);
  if (!own || !pointsOf(set.m_fiducialMri)) {
    return std::nullopt;
  }
  const auto& [nasion, leftEar, rightEar] = *own;
  return Fiducials{nasion, leftEar, rightEar};
}

std::optional<Fiducials> slicesOfSet(const CDipoleFace& set) {
  const std::optional<Points> stored = pointsOf(set.m_fiducialMri);
  if (!stored) {
    return std::nullopt;
  }
  const auto& [nasion, leftEar, rightEar] = *stored;
  return Fiducials{slicesOf(nasion), slicesOf(leftEar), slicesOf(rightEar)};
}

namespace {

// From the head's point in the MRI by the slices that lie between the two.
Fiducials placesBySlices(const Head& head, const Fiducials& own) {
  const Fiducials& numbers = head.source.slices->numbers;
  const Vector3& spacing = head.source.slices->spacing;
  const double side = numbers.leftEar.x < numbers.rightEar.x ? 1.0 : -1.0;
  const auto place = [&](const Vector3& point, const Vector3& ownNumber, const Vector3& headNumber) {
    const Vector3 apart = ownNumber - headNumber;
    return head.frame.fromScanner(
        point + Vector3{side * apart.x * spacing.x, -apart.y * spacing.y, -apart.z * spacing.z});
  };
  return {place(head.fiducials->nasion, own.nasion, numbers.nasion),
          place(head.fiducials->leftEar, own.leftEar, numbers.leftEar),
          place(head.fiducials->rightEar, own.rightEar, numbers.rightEar)};
}

// x left, y up, z front as right, front, up. A file whose MRI was stored from right to left has x to the
// right.
Vector3 asScanner(const Vector3& point, bool isFromLeft) {
  return {isFromLeft ? -point.x : point.x, point.z, point.y};
}

}  // namespace

std::optional<Fiducials> pointsOfSetIn(const Head& head, const CDipoleFace& set) {
  if (!head.isRegistered() || head.isPhantom) {
    return std::nullopt;
  }
  const std::optional<Fiducials> slices = slicesOfSet(set);
  if (slices && head.source.slices) {
    return placesBySlices(head, *slices);
  }
  const std::optional<Fiducials> own = measuredPoints(set);
  if (!own) {
    return std::nullopt;
  }
  const bool isFromLeft = own->leftEar.x > own->rightEar.x;
  const Fiducials points = {asScanner(own->nasion, isFromLeft), asScanner(own->leftEar, isFromLeft),
                            asScanner(own->rightEar, isFromLeft)};
  try {
    const HeadFrame frame(points);
    return Fiducials{frame.fromScanner(points.nasion), frame.fromScanner(points.leftEar),
                     frame.fromScanner(points.rightEar)};
  } catch (const std::invalid_argument&) {
    return std::nullopt;
  }
}

std::string headMismatch(const Fiducials& own, const Fiducials& head) {
  const double difference = differenceOf(pointsOf(own), pointsOf(head));
  if (difference <= mostDifference) {
    return {};
  }
  return "the distances between the fiducial points differ by " + inMm(difference) +
         " from those in the dipole file: is this the same head?";
}

std::string headMismatch(const Fiducials& own, const Head& head) {
  const std::string mismatch = headMismatch(own, head.fiducials.value());
  const std::optional<double> voxel = cubeOf(*head.volume);
  if (mismatch.empty() || !voxel) {
    return mismatch;
  }
  const double scale = *voxel / modulesVoxel;
  const Fiducials inOwnVoxels = {own.nasion * scale, own.leftEar * scale, own.rightEar * scale};
  return headMismatch(inOwnVoxels, *head.fiducials).empty() ? std::string() : mismatch;
}

std::string headMismatch(const CDipoleFace& set, const Head& head) {
  const std::optional<Fiducials> own = measuredPoints(set);
  return own ? headMismatch(*own, head) : std::string();
}

}  // namespace host
