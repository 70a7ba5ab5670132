// NIfTI-1 files as bytes.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "host/head/Affine.h"
#include "host/head/MriSpace.h"
#include "host/head/Volume.h"
#include "host/head/VoxelReader.h"

namespace host {

struct NiftiLayout {
  std::array<int, 3> dimensions{};
  Affine toMm;  // from voxel indices; the sform and, when its axes stand at right angles, the qform
  VoxelType type = VoxelType::uint8;
  MriSpace space = MriSpace::scanner;  // of the millimetres; those around the middle stand in the description
  bool areSidesKnown = true;           // else neither map has a code
  float slope = 1.0F;                  // value = slope * stored + intercept
  float intercept = 0.0F;
  GreyWindow shown{0.0, 0.0};  // which values to show as black and white; both 0: nothing is said
};

// What stands before the voxels. Throws std::runtime_error when a dimension is too large for the format.
std::vector<std::byte> niftiHeader(const NiftiLayout& layout);

// Of voxels: two bytes for whole numbers from 0 to 65535, or from -32768 to 32767, else floats.
VoxelType smallestVoxelType(const std::vector<float>& voxels);

// The whole file, packed with gzip as small as it gets. Throws as niftiHeader does.
std::string packedNifti(const NiftiLayout& layout, std::span<const std::byte> voxels);

}  // namespace host
