// Prints what the reader makes of a NIfTI file, for a comparison with another program: dimensions, whether
// the sides are stated, the twelve numbers of the map to scanner mm row by row, and all voxels.
#include <cstdio>
#include <exception>

#include "host/head/NiftiReader.h"

namespace {

void print(const host::Volume& volume) {
  const auto [width, height, depth] = volume.dimensions();
  std::printf("dimensions %d %d %d\n", width, height, depth);
  std::printf("sides %d\n", volume.sidesStated() ? 1 : 0);
  const host::Affine& map = volume.toScanner();
  std::printf("map");
  for (int row = 0; row < 3; ++row) {
    std::printf(" %.17g %.17g %.17g %.17g", map.column(0)[row], map.column(1)[row], map.column(2)[row],
                map.shift()[row]);
  }
  std::printf("\nvoxels");
  for (const float value : volume.voxels()) {
    std::printf(" %.9g", static_cast<double>(value));
  }
  std::printf("\n");
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: nifti_dump FILE\n", stderr);
    return 2;
  }
  try {
    print(host::readNifti(arguments[1]));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
