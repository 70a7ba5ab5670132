#include "host/head/VoxelReader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>

#include "host/head/ByteReader.h"

namespace host {

namespace {

std::string cutOff(std::uint64_t found, std::uint64_t wanted) {
  return "the file is cut off: " + std::to_string(found) + " of " + std::to_string(wanted) +
         " bytes of voxels are there";
}

float toFloat(double value) {
  constexpr double most = std::numeric_limits<float>::max();
  return std::isnan(value) ? 0.0F : static_cast<float>(std::clamp(value, -most, most));
}

template <typename Number>
void appendVoxels(std::span<const std::byte> bytes, const VoxelFormat& format, std::vector<float>& voxels) {
  for (std::size_t offset = 0; offset < bytes.size(); offset += sizeof(Number)) {
    const auto stored = static_cast<double>(numberAt<Number>(bytes, offset, format.order));
    voxels.push_back(std::isfinite(stored) ? toFloat(stored * format.slope + format.intercept) : 0.0F);
  }
}

void append(std::span<const std::byte> bytes, const VoxelFormat& format, std::vector<float>& voxels) {
  switch (format.type) {
    case VoxelType::uint8:
      return appendVoxels<std::uint8_t>(bytes, format, voxels);
    case VoxelType::int8:
      return appendVoxels<std::int8_t>(bytes, format, voxels);
    case VoxelType::int16:
      return appendVoxels<std::int16_t>(bytes, format, voxels);
    case VoxelType::uint16:
      return appendVoxels<std::uint16_t>(bytes, format, voxels);
    case VoxelType::int32:
      return appendVoxels<std::int32_t>(bytes, format, voxels);
    case VoxelType::uint32:
      return appendVoxels<std::uint32_t>(bytes, format, voxels);
    case VoxelType::int64:
      return appendVoxels<std::int64_t>(bytes, format, voxels);
    case VoxelType::uint64:
      return appendVoxels<std::uint64_t>(bytes, format, voxels);
    case VoxelType::float32:
      return appendVoxels<float>(bytes, format, voxels);
    case VoxelType::float64:
      return appendVoxels<double>(bytes, format, voxels);
  }
}

}  // namespace

std::size_t bytesPerVoxel(VoxelType type) {
  switch (type) {
    case VoxelType::uint8:
    case VoxelType::int8:
      return 1;
    case VoxelType::int16:
    case VoxelType::uint16:
      return 2;
    case VoxelType::int32:
    case VoxelType::uint32:
    case VoxelType::float32:
      return 4;
    default:
      return 8;
  }
}

std::uint64_t voxelCount(const std::array<int, 3>& dimensions) {
  std::uint64_t count = 1;
  for (const int extent : dimensions) {
    count *= static_cast<std::uint64_t>(extent);
  }
  return count;
}

void countVoxels(std::uint64_t& voxels, std::int64_t extent) {
  if (extent < 1) {
    throw std::runtime_error("an extent of " + std::to_string(extent) + " voxels");
  }
  if (extent > std::numeric_limits<std::int32_t>::max() ||
      voxels > mostVoxels / static_cast<std::uint64_t>(extent)) {
    throw std::runtime_error("the volume is too large: more than " + std::to_string(mostVoxels) + " voxels");
  }
  voxels *= static_cast<std::uint64_t>(extent);
}

void goToVoxels(ByteSource& source, std::uint64_t before, std::uint64_t gap, const VoxelFormat& format) {
  const std::uint64_t wanted = format.bytes();
  const std::uint64_t start = before + gap;
  if (const auto plain = source.plainSize(); plain && *plain < start + wanted) {
    throw std::runtime_error(cutOff(*plain - (std::min)(*plain, start), wanted));
  }
  if (source.skip(gap) < gap) {
    throw std::runtime_error(cutOff(0, wanted));
  }
}

std::vector<float> readVoxels(ByteSource& source, const VoxelFormat& format) {
  const std::uint64_t wanted = format.bytes();
  std::vector<float> voxels;
  if (source.plainSize()) {
    voxels.reserve(static_cast<std::size_t>(voxelCount(format.dimensions)));
  }
  std::vector<std::byte> block(std::size_t{1} << 20U);
  for (std::uint64_t done = 0; done < wanted;) {
    const auto piece = static_cast<std::size_t>((std::min<std::uint64_t>)(wanted - done, block.size()));
    const std::size_t got = source.read(std::span(block).first(piece));
    if (got < piece) {
      throw std::runtime_error(cutOff(done + got, wanted));
    }
    append(std::span(block).first(piece), format, voxels);
    done += piece;
  }
  return voxels;
}

}  // namespace host
