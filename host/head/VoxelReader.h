// Voxels out of a file's bytes.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/head/ByteSource.h"

namespace host {

// The voxel types that can be read; the values are NIfTI's codes.
enum class VoxelType : int {
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

std::size_t bytesPerVoxel(VoxelType type);

// 2^28 voxels take 1 GB of memory; a head at half a millimetre has a quarter of that.
constexpr std::uint64_t mostVoxels = std::uint64_t{1} << 28U;

std::uint64_t voxelCount(const std::array<int, 3>& dimensions);

// Multiplies a number of voxels by an extent. Throws std::runtime_error when an extent is below 1 or
// there are more than mostVoxels.
void countVoxels(std::uint64_t& voxels, std::int64_t extent);

struct VoxelFormat {
  std::array<int, 3> dimensions{};
  std::endian order = std::endian::native;
  VoxelType type = VoxelType::uint8;
  double slope = 1.0;  // value = slope * stored + intercept
  double intercept = 0.0;

  std::uint64_t bytes() const { return voxelCount(dimensions) * bytesPerVoxel(type); }
};

// Goes to the place of the first voxel, that many bytes on, `before` bytes having been read. Throws
// std::runtime_error when the file is too short for the voxels behind it.
void goToVoxels(ByteSource& source, std::uint64_t before, std::uint64_t gap, const VoxelFormat& format);

// The voxels that stand next; what is not finite becomes 0. Throws std::runtime_error when they are cut
// off. A plain file was weighed by goToVoxels; a packed one may promise anything: its voxels take memory
// as they arrive.
std::vector<float> readVoxels(ByteSource& source, const VoxelFormat& format);

}  // namespace host
