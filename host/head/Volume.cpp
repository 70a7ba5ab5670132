#include "host/head/Volume.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace host {

namespace {

std::size_t voxelCount(const std::array<int, 3>& dimensions) {
  std::size_t count = 1;
  for (const int extent : dimensions) {
    if (extent < 1) {
      throw std::invalid_argument("a volume needs at least one voxel along each axis");
    }
    count *= static_cast<std::size_t>(extent);
  }
  return count;
}

Affine invert(const Affine& toScanner) {
  const auto inverse = toScanner.inverse();
  if (!inverse) {
    throw std::invalid_argument("the map from voxels to mm cannot be inverted");
  }
  return *inverse;
}

float percentile(std::vector<float>& values, double fraction) {
  const auto rank = static_cast<std::ptrdiff_t>(fraction * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), values.begin() + rank, values.end());
  return *(values.begin() + rank);
}

GreyWindow findWindow(const std::vector<float>& voxels, double background) {
  // Every n-th voxel is enough for a percentile and keeps large volumes quick. The step is odd, so that it
  // does not fall in with the rows.
  constexpr std::size_t enough = 1'000'000;
  const std::size_t step = (voxels.size() / enough) | 1U;
  std::vector<float> values;
  for (std::size_t i = 0; i < voxels.size(); i += step) {
    if (static_cast<double>(voxels[i]) != background) {
      values.push_back(voxels[i]);
    }
  }
  if (values.empty()) {
    return {background, background + 1.0};
  }
  const double low = percentile(values, 0.02);
  const double high = percentile(values, 0.995);
  // A volume of one value besides the background shows that value as white.
  return high > low ? GreyWindow{low, high} : GreyWindow{(std::min)(background, low - 1.0), low};
}

}  // namespace

std::uint8_t GreyWindow::grey(double value) const {
  const double part = (value - low) / (high - low);
  const double grey = (part > 0.0 ? (std::min)(part, 1.0) : 0.0) * 255.0;
  return static_cast<std::uint8_t>(grey + 0.5);  // NOLINT(bugprone-incorrect-roundings): lround is a call
}

Volume::Volume(const std::array<int, 3>& dimensions, std::vector<float> voxels, const Affine& toScanner,
               bool sidesStated)
    : m_dimensions(dimensions),
      m_voxels(std::move(voxels)),
      m_toScanner(toScanner),
      m_fromScanner(invert(toScanner)),
      m_sidesStated(sidesStated) {
  if (m_voxels.size() != voxelCount(m_dimensions)) {
    throw std::invalid_argument("the number of voxels does not agree with the dimensions");
  }
  float lowest = 0.0F;
  for (float& value : m_voxels) {
    if (!std::isfinite(value)) {
      value = 0.0F;
    }
    lowest = (std::min)(lowest, value);
  }
  m_background = static_cast<double>(lowest);
  m_window = findWindow(m_voxels, m_background);
}

double Volume::voxelOrBackground(int i, int j, int k) const {
  const bool inside =
      i >= 0 && j >= 0 && k >= 0 && i < m_dimensions[0] && j < m_dimensions[1] && k < m_dimensions[2];
  return inside ? static_cast<double>(voxel(i, j, k)) : m_background;
}

double Volume::sampleIndex(const Vector3& index) const {
  for (int axis = 0; axis < 3; ++axis) {
    if (!(index[axis] > -1.0 && index[axis] < m_dimensions[static_cast<std::size_t>(axis)])) {
      return m_background;
    }
  }
  const double floorX = std::floor(index.x);
  const double floorY = std::floor(index.y);
  const double floorZ = std::floor(index.z);
  const int i = static_cast<int>(floorX);
  const int j = static_cast<int>(floorY);
  const int k = static_cast<int>(floorZ);
  const auto alongX = [&](int row, int plane) {
    return std::lerp(voxelOrBackground(i, row, plane), voxelOrBackground(i + 1, row, plane),
                     index.x - floorX);
  };
  const auto alongY = [&](int plane) {
    return std::lerp(alongX(j, plane), alongX(j + 1, plane), index.y - floorY);
  };
  return std::lerp(alongY(k), alongY(k + 1), index.z - floorZ);
}

}  // namespace host
