// One volume of an MRI or CT: grey values on a grid of voxels, and the map from voxel indices to scanner mm
// (right, anterior, superior positive). Index (0, 0, 0) is the centre of the first voxel. The first index
// runs fastest.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/head/Affine.h"
#include "host/head/Vector3.h"

namespace host {

// The grey values that are shown as black and as white.
struct GreyWindow {
  double low = 0.0;
  double high = 1.0;

  std::uint8_t grey(double value) const;

  friend bool operator==(const GreyWindow&, const GreyWindow&) = default;
};

class Volume {
 public:
  // Throws std::invalid_argument when a dimension is below 1, the number of voxels does not agree with the
  // dimensions, or the map cannot be inverted. Voxels that are not finite become 0. `sidesStated` is whether
  // the source says how the voxel axes lie in the patient; without it left and right are only assumed.
  Volume(const std::array<int, 3>& dimensions, std::vector<float> voxels, const Affine& toScanner,
         bool sidesStated = true);

  const std::array<int, 3>& dimensions() const { return m_dimensions; }
  const std::vector<float>& voxels() const { return m_voxels; }
  const Affine& toScanner() const { return m_toScanner; }
  const Affine& fromScanner() const { return m_fromScanner; }
  bool sidesStated() const { return m_sidesStated; }

  // The voxel at an index inside the dimensions.
  float voxel(int i, int j, int k) const { return m_voxels[offset(i, j, k)]; }
  // The value of everything outside: 0, or the lowest voxel where there are negative ones (air in a CT).
  double background() const { return m_background; }
  // Trilinear between voxel centres, fading to the background within one voxel outside of the grid.
  double sampleScanner(const Vector3& mm) const { return sampleIndex(m_fromScanner(mm)); }
  double sampleIndex(const Vector3& index) const;

  // From the 2nd to the 99.5th percentile of the voxels that are not background.
  const GreyWindow& window() const { return m_window; }

 private:
  std::size_t offset(int i, int j, int k) const {
    const auto width = static_cast<std::size_t>(m_dimensions[0]);
    const auto height = static_cast<std::size_t>(m_dimensions[1]);
    return (static_cast<std::size_t>(k) * height + static_cast<std::size_t>(j)) * width +
           static_cast<std::size_t>(i);
  }
  double voxelOrBackground(int i, int j, int k) const;

  std::array<int, 3> m_dimensions;
  std::vector<float> m_voxels;
  Affine m_toScanner;
  Affine m_fromScanner;
  bool m_sidesStated;
  double m_background = 0.0;
  GreyWindow m_window;
};

}  // namespace host
