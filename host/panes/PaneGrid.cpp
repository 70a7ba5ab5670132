#include "host/panes/PaneGrid.h"

#include <cmath>

namespace host {

namespace {

constexpr double reach = 300.0;  // mm

int whole(double pixels) {
  return static_cast<int>(std::lround(pixels));
}

}  // namespace

PaneGrid::PaneGrid(View view, int width, int height, double mmPerPixel, const Vector3& middle)
    : m_view(view),
      m_width(width),
      m_height(height),
      m_geometry(mmPerPixel, {reach, reach, reach}),
      m_position(middle[axesOf(view).slab]) {
  const ViewAxes axes = axesOf(view);
  m_origin = {whole((middle[axes.column] + m_geometry.halfExtent(axes.column)) / mmPerPixel - width * 0.5),
              whole((m_geometry.halfExtent(axes.row) - middle[axes.row]) / mmPerPixel - height * 0.5)};
}

SampleGrid PaneGrid::samples() const {
  const Vector3 first = headPoint(0, 0);
  return {first, headPoint(1, 0) - first, headPoint(0, 1) - first, m_width, m_height};
}

Vector3 PaneGrid::headPoint(int column, int row) const {
  return m_geometry.headPoint(m_view, m_position, m_origin.column + column, m_origin.row + row);
}

PixelPoint PaneGrid::pixelAt(const Vector3& head) const {
  const ViewAxes axes = axesOf(m_view);
  const double across = (head[axes.column] + m_geometry.halfExtent(axes.column)) / mmPerPixel();
  const double down = (m_geometry.halfExtent(axes.row) - head[axes.row]) / mmPerPixel();
  return {static_cast<int>(std::floor(across)) - m_origin.column,
          static_cast<int>(std::floor(down)) - m_origin.row};
}

bool PaneGrid::isInPane(const PixelPoint& pixel) const {
  return pixel.column >= 0 && pixel.row >= 0 && pixel.column < m_width && pixel.row < m_height;
}

}  // namespace host
