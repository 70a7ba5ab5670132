#include "host/head/NiftiBytes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "host/head/Gzip.h"
#include "host/head/NiftiHeader.h"

namespace host {

namespace {

constexpr std::size_t dataAt = 352;

template <typename Number>
void put(std::span<std::byte> bytes, std::size_t offset, Number value) {
  static_assert(std::endian::native == std::endian::little);
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

// The rotation of the voxel axes as a quaternion (a, b, c, d) with a >= 0, and the side of the third axis.
struct Turn {
  std::array<double, 3> quaternion{};  // b, c, d
  double side = 1.0;
  bool isTurn = false;  // else the axes do not stand at right angles
};

Turn turnOf(const Affine& map) {
  constexpr double mostSkew = 1e-4;
  std::array<Vector3, 3> axes;
  for (int i = 0; i < 3; ++i) {
    axes[static_cast<std::size_t>(i)] = map.column(i) * (1.0 / length(map.column(i)));
  }
  Turn turn;
  turn.isTurn = std::abs(dot(axes[0], axes[1])) < mostSkew && std::abs(dot(axes[0], axes[2])) < mostSkew &&
                std::abs(dot(axes[1], axes[2])) < mostSkew;
  if (dot(cross(axes[0], axes[1]), axes[2]) < 0) {
    turn.side = -1.0;
    axes[2] = axes[2] * -1.0;
  }
  const auto& [x, y, z] = axes;
  // Each of these is four times the square of a part; the largest one is safe to divide by.
  const std::array<double, 4> squares = {1 + x.x + y.y + z.z, 1 + x.x - y.y - z.z, 1 - x.x + y.y - z.z,
                                         1 - x.x - y.y + z.z};
  const auto largest = std::max_element(squares.begin(), squares.end()) - squares.begin();
  const double twice = std::sqrt(squares.at(static_cast<std::size_t>(largest)));  // twice the part
  const double ab = y.z - z.y;
  const double ac = z.x - x.z;
  const double ad = x.y - y.x;
  const double bc = x.y + y.x;
  const double bd = x.z + z.x;
  const double cd = y.z + z.y;
  const std::array<std::array<double, 4>, 4> rows = {{{squares[0], ab, ac, ad},
                                                      {ab, squares[1], bc, bd},
                                                      {ac, bc, squares[2], cd},
                                                      {ad, bd, cd, squares[3]}}};
  const std::array<double, 4>& row = rows.at(static_cast<std::size_t>(largest));
  const double sign = row[0] < 0 ? -1.0 : 1.0;
  for (std::size_t i = 0; i < 3; ++i) {
    turn.quaternion[i] = sign * row[i + 1] / (2.0 * twice);
  }
  return turn;
}

}  // namespace

std::vector<std::byte> niftiHeader(const NiftiLayout& layout) {
  for (const int extent : layout.dimensions) {
    if (extent > INT16_MAX) {
      throw std::runtime_error("the volume is too large for a NIfTI-1 file: " + std::to_string(extent) +
                               " voxels along an axis");
    }
  }
  std::vector<std::byte> header(dataAt);
  put(header, 0, std::int32_t{nifti1HeaderSize});
  const Affine& map = layout.toMm;
  const Turn turn = turnOf(map);
  put(header, 40, std::int16_t{3});
  put(header, 76, static_cast<float>(turn.side));
  for (std::size_t i = 0; i < 7; ++i) {
    const bool isAxis = i < 3;
    put(header, 42 + 2 * i, static_cast<std::int16_t>(isAxis ? layout.dimensions.at(i) : 1));
    put(header, 80 + 4 * i, static_cast<float>(isAxis ? length(map.column(static_cast<int>(i))) : 0.0));
  }
  put(header, 70, static_cast<std::int16_t>(layout.type));
  put(header, 72, static_cast<std::int16_t>(8 * bytesPerVoxel(layout.type)));
  put(header, 108, static_cast<float>(dataAt));
  put(header, 112, layout.slope);
  put(header, 116, layout.intercept);
  put(header, 123, std::uint8_t{2});  // mm
  put(header, 124, static_cast<float>(layout.shown.high));
  put(header, 128, static_cast<float>(layout.shown.low));
  const bool isAroundMiddle = layout.space == MriSpace::middle;
  const int whole = static_cast<int>(isAroundMiddle ? MriSpace::aligned : layout.space);
  // NIfTI-2 has room for larger codes.
  const auto code = static_cast<std::int16_t>(layout.areSidesKnown ? (std::min)(whole, INT16_MAX) : 0);
  put(header, 252, turn.isTurn ? code : std::int16_t{0});
  put(header, 254, code);
  for (int row = 0; row < 3; ++row) {
    const auto at = static_cast<std::size_t>(row);
    put(header, 256 + 4 * at, static_cast<float>(turn.quaternion.at(at)));
    put(header, 268 + 4 * at, static_cast<float>(map.shift()[row]));
    for (int column = 0; column < 3; ++column) {
      put(header, 280 + 16 * at + 4 * static_cast<std::size_t>(column),
          static_cast<float>(map.column(column)[row]));
    }
    put(header, 292 + 16 * at, static_cast<float>(map.shift()[row]));
  }
  if (isAroundMiddle) {
    std::memcpy(header.data() + 148, niftiAroundMiddle, std::strlen(niftiAroundMiddle));
  }
  constexpr std::string_view mark = "n+1";
  std::memcpy(header.data() + 344, mark.data(), mark.size());
  return header;
}

VoxelType smallestVoxelType(const std::vector<float>& voxels) {
  constexpr float mostUnsigned = 65535;
  constexpr float mostSigned = 32767;
  constexpr float leastSigned = -32768;
  float least = 0;
  float most = 0;
  for (const float value : voxels) {
    if (value != std::trunc(value)) {
      return VoxelType::float32;
    }
    least = (std::min)(least, value);
    most = (std::max)(most, value);
  }
  if (least >= 0 && most <= mostUnsigned) {
    return VoxelType::uint16;
  }
  return least >= leastSigned && most <= mostSigned ? VoxelType::int16 : VoxelType::float32;
}

std::string packedNifti(const NiftiLayout& layout, std::span<const std::byte> voxels) {
  std::string bytes;
  Gzip packed(Gzip::thorough, [&](std::span<const std::byte> more) {
    bytes.append(reinterpret_cast<const char*>(more.data()), more.size());
  });
  packed.add(niftiHeader(layout));
  packed.add(voxels);
  packed.finish();
  return bytes;
}

}  // namespace host
