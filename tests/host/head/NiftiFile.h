// The bytes of NIfTI files for tests, field by field at the places that the standards give.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <zlib.h>

// Sets a number at a place, in a byte order.
template <typename Number>
void put(std::string& bytes, std::size_t offset, Number value, std::endian order) {
  char* place = bytes.data() + offset;
  std::memcpy(place, &value, sizeof(Number));
  if (order != std::endian::native) {
    std::reverse(place, place + sizeof(Number));
  }
}

struct NiftiFile {
  std::endian order = std::endian::little;
  std::array<std::int64_t, 8> dim{3, 2, 3, 4, 1, 1, 1, 1};
  int type = 16;
  std::array<double, 8> pixdim{1, 1, 1, 1, 0, 0, 0, 0};
  double slope = 0.0;
  double intercept = 0.0;
  int units = 2;
  int qformCode = 0;
  int sformCode = 1;
  std::array<double, 3> quaternion{};
  std::array<double, 3> qoffset{};
  std::array<double, 12> srow{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};
  double voxelOffset = 0.0;  // 0: right behind the header and its four bytes of extension flags
  std::string magic;         // empty: the right one
  std::string voxels;

  // Appends one voxel in the byte order of the file.
  template <typename Number>
  void add(Number value) {
    const std::size_t at = voxels.size();
    voxels.resize(at + sizeof(Number));
    put(voxels, at, value, order);
  }

  // Voxels 0, 1, 2, ... of type float for the first three dimensions.
  void count() {
    const auto total = dim[1] * dim[2] * dim[3];
    for (std::int64_t i = 0; i < total; ++i) {
      add(static_cast<float>(i));
    }
  }

  std::string version1() const {
    std::string bytes(352, '\0');
    put(bytes, 0, std::int32_t{348}, order);
    for (std::size_t i = 0; i < 8; ++i) {
      put(bytes, 40 + 2 * i, static_cast<std::int16_t>(dim[i]), order);
    }
    put(bytes, 70, static_cast<std::int16_t>(type), order);
    for (std::size_t i = 0; i < 8; ++i) {
      put(bytes, 76 + 4 * i, static_cast<float>(pixdim[i]), order);
    }
    put(bytes, 108, static_cast<float>(voxelOffset == 0.0 ? 352.0 : voxelOffset), order);
    put(bytes, 112, static_cast<float>(slope), order);
    put(bytes, 116, static_cast<float>(intercept), order);
    bytes[123] = static_cast<char>(units);
    put(bytes, 252, static_cast<std::int16_t>(qformCode), order);
    put(bytes, 254, static_cast<std::int16_t>(sformCode), order);
    for (std::size_t i = 0; i < 3; ++i) {
      put(bytes, 256 + 4 * i, static_cast<float>(quaternion[i]), order);
      put(bytes, 268 + 4 * i, static_cast<float>(qoffset[i]), order);
    }
    for (std::size_t i = 0; i < 12; ++i) {
      put(bytes, 280 + 4 * i, static_cast<float>(srow[i]), order);
    }
    bytes.replace(344, 4, magic.empty() ? std::string("n+1\0", 4) : magic);
    return bytes + voxels;
  }

  std::string version2() const {
    std::string bytes(544, '\0');
    put(bytes, 0, std::int32_t{540}, order);
    bytes.replace(4, 8, magic.empty() ? std::string("n+2\0\r\n\x1A\n", 8) : magic);
    put(bytes, 12, static_cast<std::int16_t>(type), order);
    for (std::size_t i = 0; i < 8; ++i) {
      put(bytes, 16 + 8 * i, dim[i], order);
      put(bytes, 104 + 8 * i, pixdim[i], order);
    }
    put(bytes, 168, static_cast<std::int64_t>(voxelOffset == 0.0 ? 544.0 : voxelOffset), order);
    put(bytes, 176, slope, order);
    put(bytes, 184, intercept, order);
    put(bytes, 344, qformCode, order);
    put(bytes, 348, sformCode, order);
    for (std::size_t i = 0; i < 3; ++i) {
      put(bytes, 352 + 8 * i, quaternion[i], order);
      put(bytes, 376 + 8 * i, qoffset[i], order);
    }
    for (std::size_t i = 0; i < 12; ++i) {
      put(bytes, 400 + 8 * i, srow[i], order);
    }
    put(bytes, 500, units, order);
    return bytes + voxels;
  }
};

// Packed as gzip does it, as one member.
inline std::string gzip(const std::string& bytes) {
  z_stream stream{};
  if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("deflateInit2");
  }
  std::string plain = bytes;
  std::string packed(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(plain.data());
  stream.avail_in = static_cast<uInt>(plain.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  const int result = deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  if (result != Z_STREAM_END) {
    throw std::runtime_error("deflate");
  }
  return packed;
}
