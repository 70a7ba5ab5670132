#include "host/head/VoxelAxes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace host {

namespace {

Vector3 direction(const Affine& toScanner, int axis) {
  const Vector3& column = toScanner.column(axis);
  return column * (1.0 / length(column));
}

}  // namespace

VoxelAxes::VoxelAxes(const Affine& toScanner) {
  double best = -1.0;
  std::array<int, 3> order = {0, 1, 2};
  do {
    double sum = 0.0;
    for (int scanner = 0; scanner < 3; ++scanner) {
      sum += std::abs(direction(toScanner, order[static_cast<std::size_t>(scanner)])[scanner]);
    }
    if (sum > best) {
      best = sum;
      axis = order;
    }
  } while (std::next_permutation(order.begin(), order.end()));
  for (std::size_t scanner = 0; scanner < 3; ++scanner) {
    isAlong[scanner] = direction(toScanner, axis[scanner])[static_cast<int>(scanner)] > 0;
  }
}

}  // namespace host
