#include "host/head/LabelGrid.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace host {

namespace {

// Distances that are the same but for rounding must not hide each other's blocks.
constexpr double slack = 1e-6;  // mm

// From the middle of a cube of voxels to its farthest corner, for an edge of one voxel; mm.
double halfDiagonal(const Affine& toMm) {
  double longest = 0.0;
  for (const double y : {-0.5, 0.5}) {
    for (const double z : {-0.5, 0.5}) {
      longest = (std::max)(longest, length(toMm.column(0) * 0.5 + toMm.column(1) * y + toMm.column(2) * z));
    }
  }
  return longest;
}

Affine inverted(const Affine& map) {
  const std::optional<Affine> inverse = map.inverse();
  if (!inverse) {
    throw std::invalid_argument("the map from voxels to mm cannot be inverted");
  }
  return *inverse;
}

}  // namespace

struct LabelGrid::Search {
  Vector3 place;  // mm
  double square;  // of the distance of the best so far, or of the reach
  Label label = 0;
};

std::size_t LabelGrid::Level::offset(const std::array<int, 3>& index) const {
  const auto width = static_cast<std::size_t>(dimensions[0]);
  const auto height = static_cast<std::size_t>(dimensions[1]);
  return (static_cast<std::size_t>(index[2]) * height + static_cast<std::size_t>(index[1])) * width +
         static_cast<std::size_t>(index[0]);
}

LabelGrid::LabelGrid(const std::array<int, 3>& dimensions, std::vector<Label> labels, const Affine& toMm)
    : m_toMm(toMm), m_fromMm(inverted(toMm)) {
  std::size_t count = 1;
  for (const int extent : dimensions) {
    if (extent < 1) {
      throw std::invalid_argument("a grid of labels has at least one voxel a side");
    }
    count *= static_cast<std::size_t>(extent);
  }
  if (labels.size() != count) {
    throw std::invalid_argument("the labels do not agree with the dimensions");
  }
  const double half = halfDiagonal(toMm);
  m_levels.push_back({dimensions, std::move(labels), 1.0, 0.0});
  while (m_levels.back().labels.size() > 1) {
    m_levels.push_back(above(m_levels.back()));
    m_levels.back().radius = (m_levels.back().side - 1.0) * half;
  }
}

LabelGrid::Level LabelGrid::above(const Level& fine) {
  Level coarse;
  std::size_t count = 1;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    coarse.dimensions.at(axis) = (fine.dimensions.at(axis) + 1) / 2;
    count *= static_cast<std::size_t>(coarse.dimensions.at(axis));
  }
  coarse.side = fine.side * 2.0;
  coarse.labels.assign(count, 0);
  std::size_t from = 0;
  for (int k = 0; k < fine.dimensions[2]; ++k) {
    for (int j = 0; j < fine.dimensions[1]; ++j) {
      const std::size_t row = coarse.offset({0, j / 2, k / 2});
      for (int i = 0; i < fine.dimensions[0]; ++i, ++from) {
        Label& block = coarse.labels[row + static_cast<std::size_t>(i / 2)];
        block = static_cast<Label>(block | fine.labels[from]);
      }
    }
  }
  return coarse;
}

Label LabelGrid::at(const Vector3& mm) const {
  const Vector3 index = m_fromMm(mm);
  const Level& voxels = m_levels.front();
  std::array<int, 3> voxel{};
  for (int axis = 0; axis < 3; ++axis) {
    const double nearest = std::floor(index[axis] + 0.5);
    const auto place = static_cast<std::size_t>(axis);
    if (!(nearest >= 0.0 && nearest < static_cast<double>(voxels.dimensions.at(place)))) {
      return 0;
    }
    voxel.at(place) = static_cast<int>(nearest);
  }
  return voxels.labels[voxels.offset(voxel)];
}

std::optional<NearLabel> LabelGrid::nearest(const Vector3& mm, double reach) const {
  if (const Label own = at(mm); own != 0) {
    return NearLabel{own, 0.0};
  }
  Search search{mm, reach * reach};
  look(m_levels.size() - 1, {0, 0, 0}, search);
  if (search.label == 0) {
    return std::nullopt;
  }
  return NearLabel{search.label, std::sqrt(search.square)};
}

Vector3 LabelGrid::middleOf(std::size_t level, const std::array<int, 3>& block) const {
  const double side = m_levels[level].side;
  const double half = (side - 1.0) / 2.0;
  return m_toMm({side * block[0] + half, side * block[1] + half, side * block[2] + half});
}

void LabelGrid::look(std::size_t level, const std::array<int, 3>& block, Search& search) const {
  if (level == 0) {
    const Vector3 away = middleOf(0, block) - search.place;
    const double square = dot(away, away);
    const Label label = m_levels[0].labels[m_levels[0].offset(block)];
    const bool isNearer =
        square < search.square || (square == search.square && (search.label == 0 || label < search.label));
    if (isNearer) {
      search.square = square;
      search.label = label;
    }
    return;
  }
  // The nearest first.
  struct Child {
    double distance;  // mm at least, to any of its voxels
    std::array<int, 3> block;
  };
  std::array<Child, 8> children{};
  std::size_t count = 0;
  const Level& fine = m_levels[level - 1];
  for (int corner = 0; corner < 8; ++corner) {
    const std::array<int, 3> child = {block[0] * 2 + corner % 2, block[1] * 2 + corner / 2 % 2,
                                      block[2] * 2 + corner / 4};
    const bool isThere = child[0] < fine.dimensions[0] && child[1] < fine.dimensions[1] &&
                         child[2] < fine.dimensions[2] && fine.labels[fine.offset(child)] != 0;
    if (!isThere) {
      continue;
    }
    const double distance = length(middleOf(level - 1, child) - search.place) - fine.radius;
    std::size_t at = count++;
    for (; at > 0 && children.at(at - 1).distance > distance; --at) {
      children.at(at) = children.at(at - 1);
    }
    children.at(at) = {distance, child};
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (children.at(i).distance <= std::sqrt(search.square) + slack) {
      look(level - 1, children.at(i).block, search);
    }
  }
}

}  // namespace host
