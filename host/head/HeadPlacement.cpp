#include "host/head/HeadPlacement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

namespace host {

namespace {

constexpr double mostSkew = 1e-3;
constexpr std::array<Vector3, 3> conformedAxes = {{{-1, 0, 0}, {0, 0, -1}, {0, 1, 0}}};

Vector3 spacingOf(const Affine& toScanner) {
  return {length(toScanner.column(0)), length(toScanner.column(1)), length(toScanner.column(2))};
}

bool isConformed(const Volume& volume) {
  const auto& [width, height, depth] = volume.dimensions();
  const Vector3 spacing = spacingOf(volume.toScanner());
  bool result = width == height && height == depth;
  for (int axis = 0; axis < 3; ++axis) {
    const Vector3 apart = volume.toScanner().column(axis) * (1.0 / spacing[axis]) -
                          conformedAxes.at(static_cast<std::size_t>(axis));
    result = result && length(apart) <= mostSkew && std::abs(spacing[axis] / spacing[0] - 1.0) <= mostSkew;
  }
  return result;
}

// From voxel indices: as if the axes ran as in a conformed MRI, around half the size.
Affine surfaceOfVoxels(const Volume& volume) {
  const Vector3 spacing = spacingOf(volume.toScanner());
  std::array<Vector3, 3> columns;
  Vector3 shift;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    columns.at(axis) = conformedAxes.at(axis) * spacing[static_cast<int>(axis)];
    shift = shift - columns.at(axis) * (volume.dimensions().at(axis) / 2.0);
  }
  return {columns[0], columns[1], columns[2], shift};
}

Fiducials mapped(const Affine& map, const Fiducials& points) {
  return {map(points.nasion), map(points.leftEar), map(points.rightEar)};
}

double largestDistance(const Fiducials& one, const Fiducials& other) {
  return (std::max)({length(one.nasion - other.nasion), length(one.leftEar - other.leftEar),
                     length(one.rightEar - other.rightEar)});
}

// Points around the middle of a volume lie nowhere in the scanner, and the other way round.
void checkSpace(const FramedPoints& points, const Head& head) {
  const MriSpace own = head.source.space;
  if (points.space && (points.space == MriSpace::middle) != (own == MriSpace::middle)) {
    throw std::invalid_argument("they are of another MRI: their millimetres are " + textOf(*points.space) +
                                ", those of this MRI are " + textOf(own));
  }
}

}  // namespace

Affine surfaceToScanner(const Head& head) {
  const HeadSource& source = head.source;
  if (!source.unplaceable.empty()) {
    throw std::invalid_argument("no points can be placed in this MRI: " + source.unplaceable);
  }
  const Affine& voxels = head.volume->toScanner();
  if (source.hasSurfaceFrame && !(dot(voxels.column(0), cross(voxels.column(1), voxels.column(2))) < 0.0)) {
    throw std::invalid_argument(
        "this MRI is stored as the mirror image of those that surfaces are made from, which have voxels to "
        "the "
        "left, down and to the front (T1.mgz): surface RAS is not known in it");
  }
  if (!source.hasSurfaceFrame && !(source.space != MriSpace::middle && isConformed(*head.volume))) {
    throw std::invalid_argument(
        "surface RAS is not known in this MRI: it takes the MGH or MGZ file that the surfaces were made from "
        "(T1.mgz), or a NIfTI file with the same voxels in the same order");
  }
  // The columns of a volume's map are never flat.
  return voxels.after(surfaceOfVoxels(*head.volume).inverse().value());
}

Fiducials inScanner(const FramedPoints& points, const Head& head) {
  switch (points.frame) {
    case PointFrame::scanner:
      checkSpace(points, head);
      return points.points;
    case PointFrame::surface:
      return mapped(surfaceToScanner(head), points.points);
    case PointFrame::head:
      break;
  }
  throw std::invalid_argument(
      "they are in the head frame, and a transform to the MRI (*-trans.fif) has to place them");
}

HeadPlacement placedBy(const Affine& headToSurface, const std::optional<FramedPoints>& known,
                       const Head& head) {
  const Affine toScanner = surfaceToScanner(head).after(headToSurface);
  if (!known) {
    // Near enough to be inside of any head's MRI.
    constexpr double reach = 50.0;
    return {mapped(toScanner, {{0, reach, 0}, {-reach, 0, 0}, {reach, 0, 0}}), std::nullopt};
  }
  const Fiducials own = known->frame == PointFrame::head
                            ? known->points
                            : mapped(toScanner.inverse().value(), inScanner(*known, head));
  const Fiducials onAxes = {{0, own.nasion.y, 0}, {own.leftEar.x, 0, 0}, {own.rightEar.x, 0, 0}};
  return {mapped(toScanner, onAxes), largestDistance(own, onAxes)};
}

}  // namespace host
