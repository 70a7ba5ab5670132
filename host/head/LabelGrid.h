// Labels on a grid of voxels: which one a place has, and which one is nearest to a place without.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/head/Affine.h"
#include "host/head/Vector3.h"

namespace host {

using Label = std::uint16_t;  // 0 is none

// mm from a place to the middle of the nearest voxel with a label; 0: the place lies in such a voxel.
struct NearLabel {
  Label label = 0;
  double distance = 0.0;
};

class LabelGrid {
 public:
  // The first index runs fastest. Throws std::invalid_argument when a dimension is below 1, the number of
  // labels does not agree with the dimensions, or the map from indices to mm cannot be inverted.
  LabelGrid(const std::array<int, 3>& dimensions, std::vector<Label> labels, const Affine& toMm);

  // Of the voxel around a place; halves go to the higher index. 0 outside of the grid and where the place is
  // no number.
  Label at(const Vector3& mm) const;
  // That one, else the nearest within reach, mm, measured to the middles of voxels; of equally near ones the
  // one with the smallest number. The place may lie outside of the grid.
  std::optional<NearLabel> nearest(const Vector3& mm, double reach) const;

  const std::vector<Label>& labels() const { return m_levels.front().labels; }
  const std::array<int, 3>& dimensions() const { return m_levels.front().dimensions; }
  const Affine& toMm() const { return m_toMm; }

  // Every voxel: its label and the place of its middle, mm.
  template <typename Visit>
  void forEach(Visit visit) const {
    const Level& voxels = m_levels.front();
    for (std::size_t i = 0; i < voxels.labels.size(); ++i) {
      const auto width = static_cast<std::size_t>(voxels.dimensions[0]);
      const auto height = static_cast<std::size_t>(voxels.dimensions[1]);
      visit(voxels.labels[i], m_toMm({static_cast<double>(i % width), static_cast<double>(i / width % height),
                                      static_cast<double>(i / width / height)}));
    }
  }

 private:
  // Blocks of 2, 4, 8, ... voxels a side: 0 where none of them has a label. The first level are the voxels.
  struct Level {
    std::array<int, 3> dimensions{};
    std::vector<Label> labels;
    double side = 1.0;    // voxels
    double radius = 0.0;  // mm from the middle of a block to that of its farthest voxel
    std::size_t offset(const std::array<int, 3>& index) const;
  };
  struct Search;

  static Level above(const Level& fine);
  Vector3 middleOf(std::size_t level, const std::array<int, 3>& block) const;
  void look(std::size_t level, const std::array<int, 3>& block, Search& search) const;

  std::vector<Level> m_levels;
  Affine m_toMm;
  Affine m_fromMm;
};

}  // namespace host
