// Reads the input as the files that MNE keeps beside a head: refused with a text, or points and a transform
// that are what they should be.
//
// The first bit of the first byte decides which of the two the rest is, the second one whether it begins as
// such a file does, whatever stands there.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "fuzz/Check.h"
#include "host/head/FifFile.h"

namespace {

constexpr std::array<char, 12> start = {0, 0, 0, 100, 0, 0, 0, 31, 0, 0, 0, 20};

void checkPoints(const std::string& bytes) {
  const host::Fiducials points = host::fifPoints(bytes).points;
  for (const host::Vector3& point : {points.nasion, points.leftEar, points.rightEar}) {
    check(isFinite(point), "every point is a number");
  }
}

void checkTransform(const std::string& bytes) {
  const host::Affine map = host::fifHeadToSurface(bytes);
  constexpr double most = 2e-3;
  for (int axis = 0; axis < 3; ++axis) {
    check(std::abs(length(map.column(axis)) - 1.0) < most, "nothing is stretched");
  }
  const double volume = dot(map.column(0), cross(map.column(1), map.column(2)));
  check(std::abs(volume - 1.0) < 3 * most, "nothing is mirrored or sheared");
  check(isFinite(map.shift()), "the shift is a number");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  std::string bytes(data + 1, data + size);
  if ((data[0] & 2U) != 0) {
    std::copy_n(start.begin(), std::min(start.size(), bytes.size()), bytes.begin());
  }
  (void)host::isFif(bytes);
  try {
    (data[0] & 1U) != 0 ? checkTransform(bytes) : checkPoints(bytes);
  } catch (const std::invalid_argument& error) {
    check(error.what()[0] != '\0', "a refusal has a text");
  }
  return 0;
}
