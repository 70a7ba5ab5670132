#include "host/head/CornerGrid.h"

#include <cstddef>

#include "host/head/VoxelAxes.h"

namespace host {

CornerGrid::CornerGrid(const Volume& volume) : m_fromScanner(volume.fromScanner()) {
  constexpr std::array<std::size_t, 3> scannerAxes = {0, 2, 1};  // of x, y and z
  const VoxelAxes axes(volume.toScanner());
  for (std::size_t i = 0; i < scannerAxes.size(); ++i) {
    const std::size_t scanner = scannerAxes.at(i);
    m_axis.at(i) = axes.axis.at(scanner);
    // The scanner's x points to the right.
    m_isAlong.at(i) = axes.isAlong.at(scanner) != (scanner == 0);
    m_dimension.at(i) = volume.dimensions().at(static_cast<std::size_t>(m_axis.at(i)));
    m_spacing.at(i) = static_cast<float>(length(volume.toScanner().column(m_axis.at(i))));
  }
}

Vector3 CornerGrid::operator()(const Vector3& scanner) const {
  const Vector3 index = m_fromScanner(scanner);
  Vector3 place;
  for (std::size_t i = 0; i < m_axis.size(); ++i) {
    const double voxels = index[m_axis.at(i)];
    const double last = m_dimension.at(i) - 1.0;
    place[static_cast<int>(i)] =
        (m_isAlong.at(i) ? voxels : last - voxels) * static_cast<double>(m_spacing.at(i));
  }
  return place;
}

}  // namespace host
