#include "host/head/NiftiReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/head/ByteReader.h"
#include "host/head/ByteSource.h"
#include "host/head/NiftiHeader.h"
#include "host/text/PathText.h"

namespace host {

namespace {

std::string cutOff(std::uint64_t found, std::uint64_t wanted) {
  return "the file is cut off: " + std::to_string(found) + " of " + std::to_string(wanted) +
         " bytes of voxels are there";
}

NiftiHeader readHeader(ByteSource& source) {
  std::array<std::byte, nifti2HeaderSize> bytes{};
  const std::span all(bytes);
  if (source.read(all.first(4)) < 4) {
    throw std::runtime_error("not a NIfTI file: it ends before its header");
  }
  const std::size_t size = niftiHeaderSize(all.first<4>());
  if (size == 0) {
    throw std::runtime_error("not a NIfTI file: it does not begin with the size of a header");
  }
  if (source.read(all.subspan(4, size - 4)) < size - 4) {
    throw std::runtime_error("the file is cut off within its header");
  }
  NiftiHeader header = parseNiftiHeader(all.first(size));

  const std::uint64_t gap = header.voxelOffset - size;
  const std::uint64_t wanted = header.voxelCount() * header.bytesPerVoxel();
  if (const auto plain = source.plainSize(); plain && *plain < header.voxelOffset + wanted) {
    throw std::runtime_error(cutOff(*plain - (std::min)(*plain, header.voxelOffset), wanted));
  }
  if (source.skip(gap) < gap) {
    throw std::runtime_error(cutOff(0, wanted));
  }
  return header;
}

float toFloat(double value) {
  constexpr double most = std::numeric_limits<float>::max();
  return std::isnan(value) ? 0.0F : static_cast<float>(std::clamp(value, -most, most));
}

template <typename Number>
void appendVoxels(std::span<const std::byte> bytes, const NiftiHeader& header, std::vector<float>& voxels) {
  for (std::size_t offset = 0; offset < bytes.size(); offset += sizeof(Number)) {
    const auto stored = static_cast<double>(numberAt<Number>(bytes, offset, header.order));
    voxels.push_back(std::isfinite(stored) ? toFloat(stored * header.slope + header.intercept) : 0.0F);
  }
}

void append(std::span<const std::byte> bytes, const NiftiHeader& header, std::vector<float>& voxels) {
  switch (header.type) {
    case NiftiType::uint8:
      return appendVoxels<std::uint8_t>(bytes, header, voxels);
    case NiftiType::int8:
      return appendVoxels<std::int8_t>(bytes, header, voxels);
    case NiftiType::int16:
      return appendVoxels<std::int16_t>(bytes, header, voxels);
    case NiftiType::uint16:
      return appendVoxels<std::uint16_t>(bytes, header, voxels);
    case NiftiType::int32:
      return appendVoxels<std::int32_t>(bytes, header, voxels);
    case NiftiType::uint32:
      return appendVoxels<std::uint32_t>(bytes, header, voxels);
    case NiftiType::int64:
      return appendVoxels<std::int64_t>(bytes, header, voxels);
    case NiftiType::uint64:
      return appendVoxels<std::uint64_t>(bytes, header, voxels);
    case NiftiType::float32:
      return appendVoxels<float>(bytes, header, voxels);
    case NiftiType::float64:
      return appendVoxels<double>(bytes, header, voxels);
  }
}

std::vector<float> readVoxels(ByteSource& source, const NiftiHeader& header) {
  const std::uint64_t count = header.voxelCount();
  const std::uint64_t wanted = count * header.bytesPerVoxel();
  std::vector<float> voxels;
  // A plain file was weighed already. A packed one may promise anything: its voxels are taken as they arrive.
  if (source.plainSize()) {
    voxels.reserve(static_cast<std::size_t>(count));
  }
  std::vector<std::byte> block(std::size_t{1} << 20U);
  for (std::uint64_t done = 0; done < wanted;) {
    const auto piece = static_cast<std::size_t>((std::min<std::uint64_t>)(wanted - done, block.size()));
    const std::size_t got = source.read(std::span(block).first(piece));
    if (got < piece) {
      throw std::runtime_error(cutOff(done + got, wanted));
    }
    append(std::span(block).first(piece), header, voxels);
    done += piece;
  }
  return voxels;
}

// The check sum of packed data stands at their end: read on to it, unless a long series follows.
void checkEnd(ByteSource& source, const NiftiHeader& header) {
  constexpr std::uint64_t longestTail = std::uint64_t{1} << 24U;
  if (!header.series && !source.plainSize()) {
    source.skip(longestTail);
  }
}

}  // namespace

Volume readNifti(const std::filesystem::path& path) {
  try {
    ByteSource source(path);
    const NiftiHeader header = readHeader(source);
    std::vector<float> voxels = readVoxels(source, header);
    checkEnd(source, header);
    return {header.dimensions, std::move(voxels), header.toScanner, header.sidesStated};
  } catch (const std::bad_alloc&) {
    throw std::runtime_error(utf8Of(textOf(path)) + ": there is not enough memory for the volume");
  } catch (const std::exception& error) {
    throw std::runtime_error(utf8Of(textOf(path)) + ": " + error.what());
  }
}

}  // namespace host
