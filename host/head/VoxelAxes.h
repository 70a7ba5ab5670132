// Which axis of a volume's voxels lies nearest to each axis of the scanner, and whether it runs along it.
#pragma once

#include <array>

#include "host/head/Affine.h"

namespace host {

struct VoxelAxes {
  std::array<int, 3> axis{};  // for right, anterior, superior; each axis once
  std::array<bool, 3> isAlong{};

  explicit VoxelAxes(const Affine& toScanner);
};

}  // namespace host
