// What a CTF MRI file of any version says of its picture, and how far it can be believed.
//
// Its voxels stand sagittal slice after sagittal slice, and within a slice row after row: from the front to
// the back, the rows from the top down. Sagittal slices count from the patient's left to the right, or, when
// the file says "left on right", from the right to the left. The fiducial points are numbers of voxels along
// the same axes.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "host/head/HeadSource.h"

namespace host {

// The number of the first voxel along each axis. Readers of the format disagree whether it is 1 or 0; most
// say 1. A wrong choice moves the points by one voxel against the picture.
inline constexpr double firstVoxelNumber = 1.0;

struct CtfMri {
  static constexpr int fewest = 2;  // voxels along each axis
  static constexpr int most = 512;

  std::string version;             // "2.2"
  int size = 0;                    // voxels along each of the three axes
  int bytesPerVoxel = 0;           // 1 or 2
  std::optional<int> orientation;  // 0 left on left, 1 left on right; nothing in 4.x
  Vector3 spacing;                 // sagittal, coronal, axial mm
  // Numbers sagittal, coronal, axial; nothing when one is missing.
  std::optional<Fiducials> points;
  // From head mm to voxel numbers, row after row; nothing when the version has none.
  std::optional<std::array<double, 16>> matrix;
};

// Throws std::runtime_error when there is no such picture: size, bytes of a voxel, spacing.
void checkCtfPicture(const CtfMri& mri);

// The points and the sides of a picture that was checked.
struct CtfPlaces {
  bool isMirrored = false;  // sagittal slices are stored from the right to the left
  bool sidesKnown = false;
  std::optional<Fiducials> fiducials;  // scanner mm, that is: mm around the volume's middle
  HeadSource source;
};

// From indices of a volume (coronal, axial, sagittal from the left) to mm around its middle.
Affine ctfToScanner(const CtfMri& mri);

// Throws std::runtime_error when the points contradict how the file says that it is stored, or the matrix
// contradicts their sides. Nothing is ever repaired by guessing.
CtfPlaces ctfPlaces(const CtfMri& mri);

}  // namespace host
