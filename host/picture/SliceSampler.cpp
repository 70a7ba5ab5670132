#include "host/picture/SliceSampler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace host {

namespace {

// The voxel indices along one row of samples: linear in the column.
struct IndexRow {
  Vector3 start;
  Vector3 step;

  Vector3 at(int column) const {
    return {start.x + step.x * column, start.y + step.y * column, start.z + step.z * column};
  }
};

// Columns first <= column < end.
struct Columns {
  int first;
  int end;
};

class RowSampler {
 public:
  explicit RowSampler(const Volume& volume)
      : m_volume(volume),
        m_voxels(volume.voxels().data()),
        m_alongY(volume.dimensions()[0]),
        m_alongZ(m_alongY * volume.dimensions()[1]) {}

  void sample(const IndexRow& row, int columns, float* values) const {
    const Columns inside = columnsInside(row, columns);
    for (int column = 0; column < inside.first; ++column) {
      values[column] = static_cast<float>(m_volume.sampleIndex(row.at(column)));
    }
    for (int column = inside.first; column < inside.end; ++column) {
      values[column] = static_cast<float>(between(row.at(column)));
    }
    for (int column = inside.end; column < columns; ++column) {
      values[column] = static_cast<float>(m_volume.sampleIndex(row.at(column)));
    }
  }

 private:
  // Whether all eight voxels around an index are there.
  bool isInside(const Vector3& index) const {
    for (int axis = 0; axis < 3; ++axis) {
      if (!(index[axis] >= 0.0 && index[axis] < m_volume.dimensions()[static_cast<std::size_t>(axis)] - 1)) {
        return false;
      }
    }
    return true;
  }

  // The columns whose samples lie between voxels: one run, because the row is a straight line.
  Columns columnsInside(const IndexRow& row, int columns) const {
    double low = 0.0;
    double high = columns - 1.0;
    for (int axis = 0; axis < 3; ++axis) {
      const double last = m_volume.dimensions()[static_cast<std::size_t>(axis)] - 1.0;
      const double step = row.step[axis];
      if (step == 0.0) {
        continue;
      }
      const double one = -row.start[axis] / step;
      const double other = (last - row.start[axis]) / step;
      low = (std::max)(low, (std::min)(one, other));
      high = (std::min)(high, (std::max)(one, other));
    }
    if (!(low <= high)) {
      return {0, 0};
    }
    Columns run{static_cast<int>(std::ceil(low)), static_cast<int>(std::floor(high)) + 1};
    // The ends by the very numbers that the samples are taken at.
    while (run.first < run.end && !isInside(row.at(run.first))) {
      ++run.first;
    }
    while (run.first < run.end && !isInside(row.at(run.end - 1))) {
      --run.end;
    }
    return run;
  }

  // As Volume::sampleIndex, for an index that isInside.
  double between(const Vector3& index) const {
    const auto i = static_cast<std::ptrdiff_t>(index.x);
    const auto j = static_cast<std::ptrdiff_t>(index.y);
    const auto k = static_cast<std::ptrdiff_t>(index.z);
    const double x = index.x - static_cast<double>(i);
    const double y = index.y - static_cast<double>(j);
    const double z = index.z - static_cast<double>(k);
    const float* voxel = m_voxels + k * m_alongZ + j * m_alongY + i;
    const auto alongX = [x](const float* at) {
      const auto one = static_cast<double>(at[0]);
      return one + (static_cast<double>(at[1]) - one) * x;
    };
    const auto alongY = [&](const float* at) {
      const double one = alongX(at);
      return one + (alongX(at + m_alongY) - one) * y;
    };
    const double one = alongY(voxel);
    return one + (alongY(voxel + m_alongZ) - one) * z;
  }

  const Volume& m_volume;
  const float* m_voxels;
  std::ptrdiff_t m_alongY;
  std::ptrdiff_t m_alongZ;
};

}  // namespace

std::vector<float> sampleSlice(const Volume& volume, const HeadFrame& frame, const SampleGrid& grid) {
  const Affine toIndex = volume.fromScanner().after(frame.toScanner());
  const Vector3 step = toIndex(grid.first + grid.perColumn) - toIndex(grid.first);
  const RowSampler sampler(volume);
  const auto columns = static_cast<std::size_t>(grid.columns);
  std::vector<float> values(columns * static_cast<std::size_t>(grid.rows));
  for (int row = 0; row < grid.rows; ++row) {
    const IndexRow line{toIndex(grid.first + grid.perRow * row), step};
    sampler.sample(line, grid.columns, values.data() + static_cast<std::size_t>(row) * columns);
  }
  return values;
}

Image greyPicture(std::span<const float> values, int columns, int rows, const GreyWindow& window) {
  constexpr double half = 0.5;
  Image image(columns, rows, {});
  const float* value = values.data();
  // Half a step more and cut off: that is rounding, and quicker than the library's. What is no number, by a
  // window without a width, is black.
  for (int row = 0; row < rows; ++row) {
    Rgb* pixels = image.row(row);
    for (int column = 0; column < columns; ++column, ++value) {
      const double part = (static_cast<double>(*value) - window.low) / (window.high - window.low);
      const auto grey = static_cast<std::uint8_t>((part > 0.0 ? (std::min)(part, 1.0) : 0.0) * 255.0 + half);
      pixels[column] = {grey, grey, grey};
    }
  }
  return image;
}

}  // namespace host
