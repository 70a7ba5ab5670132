// A volume as the module's registration counts in it: mm from the corner where its axes begin, a voxel's
// index times its size; x to the left, y up, z to the front, each along the voxels' axis that is nearest.
#pragma once

#include <array>

#include "host/head/HeadFrame.h"
#include "host/head/Volume.h"

namespace host {

class CornerGrid {
 public:
  explicit CornerGrid(const Volume& volume);

  const std::array<int, 3>& dimension() const { return m_dimension; }  // voxels
  const std::array<float, 3>& spacing() const { return m_spacing; }    // mm

  // Of a place in scanner mm.
  Vector3 operator()(const Vector3& scanner) const;

 private:
  Affine m_fromScanner;
  std::array<int, 3> m_axis{};      // of the voxels, for x, y and z
  std::array<bool, 3> m_isAlong{};  // whether that runs as x, y, z do
  std::array<int, 3> m_dimension{};
  std::array<float, 3> m_spacing{};
};

}  // namespace host
