#include "host/head/NiftiWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>
#include <zlib.h>

#include "host/head/NiftiHeader.h"
#include "host/text/PathText.h"
#include "host/text/SafeFile.h"

namespace host {

namespace {

constexpr std::size_t dataAt = 352;

// The file, packed or not, as it grows.
class Target {
 public:
  Target(CFile& file, bool isPacked) : m_file(file), m_isPacked(isPacked) {
    constexpr int gzip = 16 + MAX_WBITS;
    constexpr int memory = 8;
    if (isPacked &&
        ::deflateInit2(&m_stream, Z_BEST_SPEED, Z_DEFLATED, gzip, memory, Z_DEFAULT_STRATEGY) != Z_OK) {
      throw std::bad_alloc();
    }
  }
  ~Target() {
    if (m_isPacked) {
      ::deflateEnd(&m_stream);
    }
  }
  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;

  void write(std::span<std::byte> bytes) {
    if (m_isPacked) {
      pack(bytes, Z_NO_FLUSH);
    } else {
      m_file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    }
  }
  void finish() {
    if (m_isPacked) {
      pack({}, Z_FINISH);
    }
  }

 private:
  void pack(std::span<std::byte> bytes, int flush) {
    std::vector<std::byte> block(std::size_t{1} << 16U);
    m_stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    m_stream.avail_in = static_cast<uInt>(bytes.size());
    do {
      m_stream.next_out = reinterpret_cast<Bytef*>(block.data());
      m_stream.avail_out = static_cast<uInt>(block.size());
      ::deflate(&m_stream, flush);
      m_file.Write(block.data(), static_cast<UINT>(block.size() - m_stream.avail_out));
    } while (m_stream.avail_out == 0);
  }

  CFile& m_file;
  bool m_isPacked;
  z_stream m_stream{};
};

template <typename Number>
void put(std::span<std::byte> bytes, std::size_t offset, Number value) {
  static_assert(std::endian::native == std::endian::little);
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

VoxelType smallestType(const std::vector<float>& voxels) {
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

std::vector<std::byte> headerOf(const Volume& volume, VoxelType type, bool isScannerFrame) {
  std::vector<std::byte> header(dataAt);
  put(header, 0, std::int32_t{nifti1HeaderSize});
  const Affine& map = volume.toScanner();
  const Turn turn = turnOf(map);
  put(header, 40, std::int16_t{3});
  put(header, 76, static_cast<float>(turn.side));
  for (std::size_t i = 0; i < 7; ++i) {
    const bool isAxis = i < 3;
    put(header, 42 + 2 * i, static_cast<std::int16_t>(isAxis ? volume.dimensions().at(i) : 1));
    put(header, 80 + 4 * i, static_cast<float>(isAxis ? length(map.column(static_cast<int>(i))) : 0.0));
  }
  put(header, 70, static_cast<std::int16_t>(type));
  put(header, 72, static_cast<std::int16_t>(8 * bytesPerVoxel(type)));
  put(header, 108, static_cast<float>(dataAt));
  put(header, 112, 1.0F);
  put(header, 123, std::uint8_t{2});  // mm
  const auto code = static_cast<std::int16_t>(!volume.sidesStated() ? 0 : isScannerFrame ? 1 : 2);
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
  if (!isScannerFrame) {
    std::memcpy(header.data() + 148, niftiAroundMiddle, std::strlen(niftiAroundMiddle));
  }
  constexpr std::string_view mark = "n+1";
  std::memcpy(header.data() + 344, mark.data(), mark.size());
  return header;
}

template <typename Number>
void writeVoxels(Target& target, const std::vector<float>& voxels) {
  constexpr std::size_t blockSize = std::size_t{1} << 18U;
  std::vector<Number> block;
  for (std::size_t done = 0; done < voxels.size(); done += block.size()) {
    block.resize((std::min)(blockSize, voxels.size() - done));
    std::transform(voxels.begin() + static_cast<std::ptrdiff_t>(done),
                   voxels.begin() + static_cast<std::ptrdiff_t>(done + block.size()), block.begin(),
                   [](float value) { return static_cast<Number>(value); });
    target.write(std::as_writable_bytes(std::span(block)));
  }
}

}  // namespace

void writeNifti(const CString& path, const Volume& volume, bool isScannerFrame) {
  for (const int extent : volume.dimensions()) {
    if (extent > INT16_MAX) {
      throw std::runtime_error("the volume is too large for a NIfTI-1 file: " + std::to_string(extent) +
                               " voxels along an axis");
    }
  }
  const VoxelType type = smallestType(volume.voxels());
  writeSafely(path, [&](CFile& file) {
    Target target(file, hasEnding(path, ".gz"));
    std::vector<std::byte> header = headerOf(volume, type, isScannerFrame);
    target.write(header);
    if (type == VoxelType::uint16) {
      writeVoxels<std::uint16_t>(target, volume.voxels());
    } else if (type == VoxelType::int16) {
      writeVoxels<std::int16_t>(target, volume.voxels());
    } else {
      writeVoxels<float>(target, volume.voxels());
    }
    target.finish();
  });
}

}  // namespace host
