#include "host/panes/PaneGrid.h"

#include <cmath>
#include <stdexcept>

#include "host/head/Limits.h"
#include "host/paint/Rounding.h"

namespace host {

namespace {

int whole(double pixels) {
  return static_cast<int>(std::lround(pixels));
}

int cellsOf(double mmPerPixel) {
  if (!(mmPerPixel >= finestPixel && mmPerPixel <= coarsestPixel)) {
    throw std::invalid_argument("a pixel must be 0.1 to 5 mm wide");
  }
  return 2 * static_cast<int>(std::ceil(headReach / mmPerPixel));
}

}  // namespace

PaneGrid::PaneGrid(View view, int width, int height, double mmPerPixel, const Vector3& middle)
    : m_view(view),
      m_width(width),
      m_height(height),
      m_mmPerPixel(mmPerPixel),
      m_cells(cellsOf(mmPerPixel)),
      m_position(middle[axesOf(view).slab]) {
  const ViewAxes axes = axesOf(view);
  m_origin = {whole((middle[axes.column] + halfExtent()) / mmPerPixel - width * 0.5),
              whole((halfExtent() - middle[axes.row]) / mmPerPixel - height * 0.5)};
}

SampleGrid PaneGrid::samples() const {
  const Vector3 first = headPoint(0, 0);
  return {first, headPoint(1, 0) - first, headPoint(0, 1) - first, m_width, m_height};
}

Vector3 PaneGrid::headPoint(int column, int row) const {
  const ViewAxes axes = axesOf(m_view);
  Vector3 head;
  head[axes.slab] = m_position;
  head[axes.column] = (m_origin.column + column + 0.5) * m_mmPerPixel - halfExtent();
  head[axes.row] = halfExtent() - (m_origin.row + row + 0.5) * m_mmPerPixel;
  return head;
}

PixelPoint PaneGrid::pixelAt(const Vector3& head) const {
  const ViewAxes axes = axesOf(m_view);
  const double across = (head[axes.column] + halfExtent()) / m_mmPerPixel;
  const double down = (halfExtent() - head[axes.row]) / m_mmPerPixel;
  return {roundedDown(across) - m_origin.column, roundedDown(down) - m_origin.row};
}

bool PaneGrid::isInPane(const PixelPoint& pixel) const {
  return pixel.column >= 0 && pixel.row >= 0 && pixel.column < m_width && pixel.row < m_height;
}

bool PaneGrid::holds(const Vector3& head) const {
  const ViewAxes axes = axesOf(m_view);
  return std::abs(head[axes.column]) < halfExtent() && std::abs(head[axes.row]) < halfExtent();
}

}  // namespace host
