#include "bench/host/BenchHead.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <stdexcept>
#include <vector>
#include <zlib.h>

namespace {

constexpr int extent = 256;
constexpr double middle = 0.5 * (extent - 1);
constexpr int gzip = 16 + MAX_WBITS;  // zlib: with gzip's header

// Puts numbers at their places in a header, in one order of bytes.
class Header {
 public:
  Header(std::size_t size, std::endian order) : m_bytes(size, '\0'), m_order(order) {}

  template <typename Number>
  void put(std::size_t at, Number value) {
    std::array<char, sizeof(Number)> bytes{};
    std::memcpy(bytes.data(), &value, sizeof(Number));
    if (m_order != std::endian::native) {
      std::reverse(bytes.begin(), bytes.end());
    }
    std::copy(bytes.begin(), bytes.end(), m_bytes.begin() + static_cast<std::ptrdiff_t>(at));
  }

  template <typename Number>
  void putAll(std::size_t at, const std::vector<Number>& values) {
    for (const Number value : values) {
      put(at, value);
      at += sizeof(Number);
    }
  }

  void text(std::size_t at, const std::string& text) {
    std::copy(text.begin(), text.end(), m_bytes.begin() + static_cast<std::ptrdiff_t>(at));
  }

  const std::string& bytes() const { return m_bytes; }

 private:
  std::string m_bytes;
  std::endian m_order;
};

std::string niftiHeader() {
  Header header(352, std::endian::native);
  header.put(0, std::int32_t{348});
  header.putAll<std::int16_t>(40, {3, extent, extent, extent, 1, 1, 1, 1});
  header.put(70, std::int16_t{4});   // the type
  header.put(72, std::int16_t{16});  // bits
  header.putAll<float>(76, {1, 1, 1, 1, 1, 1, 1, 1});
  header.put(108, 352.0F);   // where the voxels begin
  header.put(123, char{2});  // mm
  header.put(254, std::int16_t{1});
  constexpr auto first = static_cast<float>(-middle);
  header.putAll<float>(280, {1, 0, 0, first, 0, 1, 0, first, 0, 0, 1, first});
  header.text(344, "n+1");
  return header.bytes();
}

std::string ctfHeader() {
  Header header(1028, std::endian::big);
  header.text(0, "CTF_MRI_FORMAT VER 2.2");
  header.putAll<std::int16_t>(32, {extent, 2, 4095, 0});
  header.putAll<float>(40, {1, 1, 1});
  header.putAll<std::int16_t>(52,
                              {128, 36, 130, 53, 123, 152, 207, 123, 152});  // nasion, left ear, right ear
  return header.bytes();
}

std::string mghHeader() {
  Header header(284, std::endian::big);
  header.putAll<std::int32_t>(0, {1, extent, extent, extent, 1, 4});
  header.put(28, std::int16_t{1});
  header.putAll<float>(30, {1, 1, 1, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0});
  return header.bytes();
}

void appendVoxels(std::string& bytes, std::endian order) {
  std::minstd_rand random(3);
  for (int k = 0; k < extent; ++k) {
    for (int j = 0; j < extent; ++j) {
      for (int i = 0; i < extent; ++i) {
        const double radius = std::hypot(i - middle, j - middle, k - middle);
        const auto grain = static_cast<int>(random() % 60);
        const int value = radius > 100.0 ? grain / 30 : radius > 92.0 ? 800 + grain : 300 + grain;
        const auto low = static_cast<char>(value & 0xFF);
        const auto high = static_cast<char>(value >> 8);
        bytes += order == std::endian::big ? high : low;
        bytes += order == std::endian::big ? low : high;
      }
    }
  }
}

}  // namespace

std::string benchHead(BenchHeadFormat format) {
  std::string bytes = format == BenchHeadFormat::nifti ? niftiHeader()
                      : format == BenchHeadFormat::ctf ? ctfHeader()
                                                       : mghHeader();
  bytes.reserve(bytes.size() + std::size_t{2} * extent * extent * extent);
  appendVoxels(bytes, format == BenchHeadFormat::nifti ? std::endian::native : std::endian::big);
  return bytes;
}

std::string gzipped(const std::string& bytes) {
  z_stream stream{};
  if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, gzip, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("zlib does not start");
  }
  std::string source = bytes;
  std::string packed(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(source.data());
  stream.avail_in = static_cast<uInt>(source.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  const int end = deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  if (end != Z_STREAM_END) {
    throw std::runtime_error("zlib does not end");
  }
  return packed;
}

std::string gunzipped(const std::string& packed, std::size_t size) {
  z_stream stream{};
  std::string source = packed;
  std::string bytes(size, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(source.data());
  stream.avail_in = static_cast<uInt>(source.size());
  stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
  stream.avail_out = static_cast<uInt>(bytes.size());
  const bool isWhole = inflateInit2(&stream, gzip) == Z_OK && inflate(&stream, Z_FINISH) == Z_STREAM_END;
  inflateEnd(&stream);
  if (!isWhole) {
    throw std::runtime_error("zlib does not unpack it");
  }
  return bytes;
}
