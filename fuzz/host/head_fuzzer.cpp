// Reads the input as the MRI of a head: refused with a text, or a volume that holds together, whose own
// points make a head frame with the left on the left.
//
// The first byte decides whether the rest is packed with gzip on the way, or taken as it is, and, by
// HEAD_STARTS, how the file begins, so that the input stays in the reader of that format.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>
#include <zlib.h>

#include "fuzz/Check.h"
#include "fuzz/FuzzFile.h"
#include "host/head/HeadFrame.h"
#include "host/head/HeadReader.h"

namespace {

std::vector<std::uint8_t> packed(const std::uint8_t* data, std::size_t size) {
  constexpr int gzip = 16 + MAX_WBITS;
  z_stream stream{};
  check(deflateInit2(&stream, 1, Z_DEFLATED, gzip, 8, Z_DEFAULT_STRATEGY) == Z_OK, "the packer starts");
  std::vector<std::uint8_t> result(deflateBound(&stream, static_cast<uLong>(size)));
  std::vector<Bytef> source(data, data + size);
  stream.next_in = source.data();
  stream.avail_in = static_cast<uInt>(size);
  stream.next_out = result.data();
  stream.avail_out = static_cast<uInt>(result.size());
  check(deflate(&stream, Z_FINISH) == Z_STREAM_END, "the packer ends");
  result.resize(stream.total_out);
  deflateEnd(&stream);
  return result;
}

void checkVolume(const host::Volume& volume, std::size_t bytes, bool isPacked) {
  std::size_t count = 1;
  for (const int extent : volume.dimensions()) {
    check(extent >= 1, "every extent is at least one voxel");
    count *= static_cast<std::size_t>(extent);
  }
  check(volume.voxels().size() == count, "there is one value for each voxel");
  // Packed data unpack to at most about a thousand times as much.
  check(count <= (isPacked ? bytes * 1100 : bytes), "no voxel is invented");
  for (const float voxel : volume.voxels()) {
    check(std::isfinite(voxel), "every voxel is a number");
  }
  check(std::isfinite(volume.background()), "the background is a number");
  check(std::isfinite(volume.sampleIndex({0.25, 0.5, 0.75})), "a sample is a number");
  (void)volume.window();
}

void checkHead(const host::ReadHead& head, std::size_t bytes, bool isPacked) {
  checkVolume(head.volume, bytes, isPacked);
  check(!head.source.format.empty() && !head.source.sides.empty(), "it is told what the file is");
  check(head.volume.sidesStated() || !head.fiducials, "no points without sides");
  if (head.fiducials) {
    check(head.source.unplaceable.empty(), "points are those of a head that dipoles may be placed in");
    const host::HeadFrame frame(*head.fiducials);  // throws std::invalid_argument, which nothing here takes
    check(frame.toScanner({1, 0, 0}).x < frame.toScanner({0, 0, 0}).x, "left is on the left");
  }
}

// What each file begins with, whatever the input says; empty: the input says it.
constexpr std::array<std::string_view, 2> starts = {HEAD_STARTS};

void begin(std::vector<std::uint8_t>& bytes, std::string_view start) {
  std::copy_n(start.begin(), std::min(start.size(), bytes.size()), bytes.begin());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const FuzzFile file("input");
  if (size == 0) {
    return 0;
  }
  const bool pack = (data[0] & 1U) != 0;
  const bool isPacked = !pack && size > 2 && data[1] == 0x1F && data[2] == 0x8B;
  std::vector<std::uint8_t> bytes(data + 1, data + size);
  if (!isPacked) {
    begin(bytes, starts.at((data[0] & 2U) != 0 ? 1 : 0));
  }
  if (pack) {
    bytes = packed(bytes.data(), bytes.size());
  }
  file.write(bytes.data(), bytes.size());
  try {
    host::HeadReading reading;
    reading.takesCtf21 = (data[0] & 4U) != 0;
    checkHead(host::readHead(file.path(), reading), size, isPacked);
  } catch (const std::runtime_error& error) {
    check(error.what()[0] != '\0', "a refusal has a text");
  }
  return 0;
}
