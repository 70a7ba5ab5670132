#define ZLIB_CONST  // zlib leaves its input alone, and says so then
#include "host/paint/PngFile.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <vector>
#include <zlib.h>

#include "host/text/SafeFile.h"

namespace host {

namespace {

constexpr std::size_t bytesPerPixel = 3;
constexpr int filterCount = 5;  // none, left, up, average of both, nearest of three

void appendNumber(std::string& bytes, std::uint32_t value) {
  for (const int shift : {24, 16, 8, 0}) {
    bytes += static_cast<char>(static_cast<unsigned char>(value >> shift));
  }
}

void appendChunk(std::string& file, std::string_view kind, std::string_view body) {
  appendNumber(file, static_cast<std::uint32_t>(body.size()));
  const std::size_t checkedFrom = file.size();
  file.append(kind).append(body);
  const auto* const checked = reinterpret_cast<const Bytef*>(file.data() + checkedFrom);
  appendNumber(file,
               static_cast<std::uint32_t>(::crc32(0, checked, static_cast<uInt>(kind.size() + body.size()))));
}

// The one of the three that is nearest to left + up - corner; the earlier one when two are.
int nearest(int left, int up, int corner) {
  const int guess = left + up - corner;
  const int fromLeft = std::abs(guess - left);
  const int fromUp = std::abs(guess - up);
  const int fromCorner = std::abs(guess - corner);
  if (fromLeft <= fromUp && fromLeft <= fromCorner) {
    return left;
  }
  return fromUp <= fromCorner ? up : corner;
}

int predicted(int filter, int left, int up, int corner) {
  switch (filter) {
    case 1:
      return left;
    case 2:
      return up;
    case 3:
      return (left + up) / 2;
    case 4:
      return nearest(left, up, corner);
    default:
      return 0;
  }
}

using Row = std::vector<std::uint8_t>;  // with one pixel of zeros in front

// What a filter leaves of a row behind the one above, and how much that is, the bytes taken as signed.
long filtered(int filter, const Row& above, const Row& row, std::string& result) {
  long sum = 0;
  result.assign(1, static_cast<char>(filter));
  for (std::size_t i = bytesPerPixel; i < row.size(); ++i) {
    const std::size_t before = i - bytesPerPixel;
    const int rest = row[i] - predicted(filter, row[before], above[i], above[before]);
    const auto byte = static_cast<std::int8_t>(rest);
    sum += std::abs(int{byte});
    result += static_cast<char>(byte);
  }
  return sum;
}

// Every row by the filter that leaves the least, which packs well.
std::string filteredRows(const Image& image) {
  const auto width = static_cast<std::size_t>(image.width());
  Row above(bytesPerPixel * (width + 1));
  Row row(above.size());
  std::string all;
  std::string best;
  std::string next;
  all.reserve(static_cast<std::size_t>(image.height()) * (bytesPerPixel * width + 1));
  for (std::size_t y = 0; y < static_cast<std::size_t>(image.height()); ++y) {
    for (std::size_t x = 0; x < width; ++x) {
      const Rgb& pixel = image.pixels()[y * width + x];
      const std::size_t at = bytesPerPixel * (x + 1);
      row[at] = pixel.red;
      row[at + 1] = pixel.green;
      row[at + 2] = pixel.blue;
    }
    long least = filtered(0, above, row, best);
    for (int filter = 1; filter < filterCount; ++filter) {
      const long sum = filtered(filter, above, row, next);
      if (sum < least) {
        least = sum;
        best.swap(next);
      }
    }
    all += best;
    row.swap(above);
  }
  return all;
}

std::string packed(const std::string& bytes) {
  z_stream stream{};
  constexpr int memory = 8;
  if (::deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, MAX_WBITS, memory, Z_FILTERED) != Z_OK) {
    throw std::runtime_error("not enough memory");
  }
  std::string result(::deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
  stream.next_in = reinterpret_cast<const Bytef*>(bytes.data());
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(result.data());
  stream.avail_out = static_cast<uInt>(result.size());
  const int end = ::deflate(&stream, Z_FINISH);
  result.resize(stream.total_out);
  ::deflateEnd(&stream);
  if (end != Z_STREAM_END) {
    throw std::runtime_error("the picture could not be packed");
  }
  return result;
}

}  // namespace

std::string pngBytes(const Image& image) {
  using namespace std::string_view_literals;
  std::string header;
  appendNumber(header, static_cast<std::uint32_t>(image.width()));
  appendNumber(header, static_cast<std::uint32_t>(image.height()));
  header += "\x08\x02\0\0\0"sv;  // 8 bits, RGB, packed and filtered as usual, from the top
  std::string file("\x89PNG\r\n\x1A\n");
  appendChunk(file, "IHDR", header);
  appendChunk(file, "sRGB", "\0"sv);
  appendChunk(file, "IDAT", packed(filteredRows(image)));
  appendChunk(file, "IEND", "");
  return file;
}

void writePng(const Image& image, const CString& path) {
  const std::string bytes = pngBytes(image);
  writeSafely(path, [&](CFile& file) { file.Write(bytes.data(), static_cast<UINT>(bytes.size())); });
}

}  // namespace host
