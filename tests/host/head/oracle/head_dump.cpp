// Prints what the readers make of the file of a head, for a comparison with other programs: dimensions,
// whether the sides are stated, the twelve numbers of the map to scanner mm row by row, and all voxels.
// With --all also what the file says of itself, each line behind a name; with --ctf-2.1 it takes such
// files.
#include <cstdio>
#include <exception>
#include <string_view>

#include "host/head/HeadReader.h"

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

void print(const char* name, const host::Vector3& point) {
  std::printf("%s %.17g %.17g %.17g\n", name, point.x, point.y, point.z);
}

void print(const host::ReadHead& head) {
  std::printf("format %s\n", head.source.format.c_str());
  std::printf("sides-by %s\n", head.source.sides.c_str());
  std::printf("matrix %s\n", head.source.matrix.c_str());
  std::printf("frame %s\n", head.source.space == host::MriSpace::middle ? "middle" : "scanner");
  std::printf("unplaceable %s\n", head.source.unplaceable.c_str());
  for (const host::HeadRemark& remark : head.source.remarks) {
    std::printf("remark%d %s\n", static_cast<int>(remark.doubt), remark.text.c_str());
  }
  if (head.fiducials) {
    print("nasion", head.fiducials->nasion);
    print("left", head.fiducials->leftEar);
    print("right", head.fiducials->rightEar);
  }
}

}  // namespace

int main(int count, char** arguments) {
  host::HeadReading reading;
  bool all = false;
  const char* path = nullptr;
  for (int i = 1; i < count; ++i) {
    const std::string_view argument = arguments[i];
    all = all || argument == "--all";
    reading.takesCtf21 = reading.takesCtf21 || argument == "--ctf-2.1";
    path = argument.starts_with("--") ? path : arguments[i];
  }
  if (path == nullptr) {
    std::fputs("usage: head_dump [--all] [--ctf-2.1] FILE\n", stderr);
    return 2;
  }
  try {
    const host::ReadHead head = host::readHead(path, reading);
    print(head.volume);
    if (all) {
      print(head);
    }
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
