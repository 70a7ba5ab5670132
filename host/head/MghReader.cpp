#include "host/head/MghReader.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/head/ByteReader.h"
#include "host/head/Limits.h"
#include "host/head/VoxelReader.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

constexpr std::size_t headerSize = 284;
constexpr std::size_t dimensionsAt = 4;
constexpr std::size_t typeAt = 20;
constexpr std::size_t hasGeometryAt = 28;
constexpr std::size_t spacingAt = 30;
constexpr std::size_t axesAt = 42;
constexpr std::size_t centreAt = 78;
constexpr double mostSkew = 1e-3;  // of an axis' length, and of the cosine between two

using Bytes = std::span<const std::byte>;

[[noreturn]] void refuse(const std::string& cause) {
  throw std::runtime_error(cause);
}

std::int32_t numberAt(Bytes bytes, std::size_t offset) {
  return host::numberAt<std::int32_t>(bytes, offset, std::endian::big);
}

VoxelType typeOf(std::int32_t code) {
  switch (code) {
    case 0:
      return VoxelType::uint8;
    case 1:
      return VoxelType::int32;
    case 3:
      return VoxelType::float32;
    case 4:
      return VoxelType::int16;
    case 10:
      return VoxelType::uint16;
    default:
      refuse("the voxel type " + std::to_string(code) + " cannot be read");
  }
}

struct Header {
  VoxelFormat format;
  std::int32_t frames = 1;
};

Header headerOf(Bytes bytes) {
  if (const std::int32_t version = numberAt(bytes, 0); version != 1) {
    refuse("an MGH file of version " + std::to_string(version) +
           ", where 1 can be read: it may hold no picture");
  }
  Header header;
  header.format.order = std::endian::big;
  std::uint64_t voxels = 1;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const std::int32_t extent = numberAt(bytes, dimensionsAt + axis * sizeof(std::int32_t));
    countVoxels(voxels, extent);
    header.format.dimensions[axis] = extent;
  }
  header.frames = numberAt(bytes, dimensionsAt + 3 * sizeof(std::int32_t));
  if (header.frames < 1) {
    refuse(std::to_string(header.frames) + " frames");
  }
  header.format.type = typeOf(numberAt(bytes, typeAt));
  return header;
}

struct Geometry {
  Vector3 spacing = {1, 1, 1};
  std::array<Vector3, 3> axes = {{{-1, 0, 0}, {0, 0, -1}, {0, 1, 0}}};  // what such files mean without any
  Vector3 centre;
};

Geometry geometryOf(Bytes bytes) {
  Geometry geometry;
  geometry.spacing = tripleAt<float>(bytes, spacingAt, std::endian::big);
  geometry.centre = tripleAt<float>(bytes, centreAt, std::endian::big);
  for (std::size_t i = 0; i < 3; ++i) {
    const double spacing = geometry.spacing[static_cast<int>(i)];
    if (!(spacing >= finestVoxel && spacing <= coarsestVoxel)) {
      refuse("voxels of " + shortest(spacing) + " mm, where 0.1 to 10 can be read");
    }
    geometry.axes[i] = tripleAt<float>(bytes, axesAt + i * 3 * sizeof(float), std::endian::big);
    if (!(std::abs(length(geometry.axes[i]) - 1.0) <= mostSkew)) {
      refuse("the direction of axis " + std::to_string(i + 1) + " has the length " +
             shortest(length(geometry.axes[i])) + " instead of 1");
    }
    for (std::size_t j = 0; j < i; ++j) {
      if (!(std::abs(dot(geometry.axes[i], geometry.axes[j])) <= mostSkew)) {
        refuse("axes " + std::to_string(j + 1) + " and " + std::to_string(i + 1) +
               " stand at no right angle");
      }
    }
  }
  if (!isFinite(geometry.centre)) {
    refuse("the place of the volume's centre is not a number");
  }
  return geometry;
}

// The centre that is given is that of half the size, half a voxel behind the middle.
Affine mapOf(const Geometry& geometry, const std::array<int, 3>& dimensions) {
  std::array<Vector3, 3> columns;
  Vector3 shift = geometry.centre;
  for (std::size_t i = 0; i < 3; ++i) {
    columns[i] = geometry.axes[i] * geometry.spacing[static_cast<int>(i)];
    shift = shift - columns[i] * (dimensions[i] / 2.0);
  }
  return {columns[0], columns[1], columns[2], shift};
}

HeadSource sourceOf(std::int16_t hasGeometry, const Header& header, bool isPacked) {
  HeadSource source;
  source.format = isPacked ? "MGZ" : "MGH";
  source.space = hasGeometry == 1 ? MriSpace::scanner : MriSpace::middle;
  source.hasSurfaceFrame = hasGeometry == 1;
  source.sides = hasGeometry == 1 ? "the directions of the axes in the file" : "nothing";
  if (hasGeometry != 1) {
    source.unplaceable = "the file says that it does not know how its axes lie in the patient (" +
                         std::to_string(hasGeometry) + " instead of 1)";
    source.sides += ": " + source.unplaceable;
  }
  if (header.frames > 1) {
    source.remarks.push_back({Doubt::note, "The file holds " + std::to_string(header.frames) +
                                               " volumes; the first one is shown"});
  }
  return source;
}

}  // namespace

ReadHead readMgh(ByteSource& source) {
  std::array<std::byte, headerSize> bytes{};
  if (source.read(bytes) < headerSize) {
    refuse("the file is cut off within its header");
  }
  const Header header = headerOf(bytes);
  const auto hasGeometry = host::numberAt<std::int16_t>(bytes, hasGeometryAt, std::endian::big);
  const Geometry geometry = hasGeometry == 1 ? geometryOf(bytes) : Geometry();
  const std::uint64_t wanted = headerSize + header.format.bytes() * static_cast<std::uint64_t>(header.frames);
  if (const auto plain = source.plainSize(); header.frames > 1 && plain && *plain < wanted) {
    refuse("the file is cut off: its " + std::to_string(header.frames) + " volumes need " +
           std::to_string(wanted) + " bytes, " + std::to_string(*plain) + " are there");
  }
  goToVoxels(source, headerSize, 0, header.format);
  std::vector<float> voxels = readVoxels(source, header.format);
  if (header.frames == 1) {
    source.finish();
  }
  return {Volume(header.format.dimensions, std::move(voxels), mapOf(geometry, header.format.dimensions),
                 hasGeometry == 1),
          sourceOf(hasGeometry, header, !source.plainSize()), std::nullopt};
}

}  // namespace host
