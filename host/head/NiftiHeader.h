// The header of a NIfTI-1 (348 bytes) or NIfTI-2 (540 bytes) file, as far as a picture needs it. Lengths are
// in mm, whatever unit the file names. Layout: the NIfTI-1 and NIfTI-2 standards.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "host/head/Affine.h"

namespace host {

// The voxel types that can be read; the values are the file's codes.
enum class NiftiType : int {
  uint8 = 2,
  int16 = 4,
  int32 = 8,
  float32 = 16,
  float64 = 64,
  int8 = 256,
  uint16 = 512,
  uint32 = 768,
  int64 = 1024,
  uint64 = 1280,
};

struct NiftiHeader {
  std::endian order = std::endian::native;
  // The first three dimensions; a series in time is read as its first volume.
  std::array<int, 3> dimensions{};
  // Whether more than one volume follows.
  bool series = false;
  NiftiType type = NiftiType::uint8;
  std::uint64_t voxelOffset = 0;  // bytes from the start of the file
  double slope = 1.0;             // value = slope * stored + intercept
  double intercept = 0.0;
  Affine toScanner;
  bool sidesStated = false;  // by sform or qform; the voxel size alone says nothing about the patient's sides

  std::uint64_t voxelCount() const;
  std::size_t bytesPerVoxel() const;
};

constexpr std::size_t nifti1HeaderSize = 348;
constexpr std::size_t nifti2HeaderSize = 540;
// 2^28 voxels take 1 GB of memory; a head at half a millimetre has a quarter of that.
constexpr std::uint64_t mostVoxels = std::uint64_t{1} << 28U;

// How long the header is that begins with these first four bytes; 0 when they begin no NIfTI header.
std::size_t niftiHeaderSize(std::span<const std::byte, 4> start);
// Throws std::runtime_error with the cause when the header, of the size above, is not one that can be used.
NiftiHeader parseNiftiHeader(std::span<const std::byte> bytes);

}  // namespace host
