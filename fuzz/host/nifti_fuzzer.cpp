// Reads the input as a NIfTI volume: refused with a text, or a volume that holds together.
//
// The first byte decides whether the rest is packed with gzip on the way, or taken as it is.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>
#include <zlib.h>

#include "fuzz/Check.h"
#include "fuzz/FuzzFile.h"
#include "host/head/NiftiReader.h"

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const FuzzFile file("input.nii");
  if (size == 0) {
    return 0;
  }
  const bool pack = (data[0] & 1U) != 0;
  if (pack) {
    const std::vector<std::uint8_t> bytes = packed(data + 1, size - 1);
    file.write(bytes.data(), bytes.size());
  } else {
    file.write(data + 1, size - 1);
  }
  try {
    const bool isPacked = !pack && size > 2 && data[1] == 0x1F && data[2] == 0x8B;
    checkVolume(host::readNifti(file.path()), size, isPacked);
  } catch (const std::runtime_error& error) {
    check(error.what()[0] != '\0', "a refusal has a text");
  }
  return 0;
}
