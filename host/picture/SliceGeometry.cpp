#include "host/picture/SliceGeometry.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace host {

namespace {

constexpr double farthestReach = 300.0;
constexpr double farthestSlice = 1000.0;
constexpr double finest = 0.1;
constexpr double coarsest = 5.0;

}  // namespace

SliceGeometry::SliceGeometry(double mmPerPixel, const Vector3& reach) : m_spacing(mmPerPixel) {
  if (!(mmPerPixel >= finest && mmPerPixel <= coarsest))
    throw std::invalid_argument("a pixel must be 0.1 to 5 mm wide");
  if (!isFinite(reach))
    throw std::invalid_argument("the reach of the picture is not a number");
  for (int axis = 0; axis < 3; ++axis) {
    const double wanted = std::clamp(std::abs(reach[axis]), mmPerPixel, farthestReach);
    m_pixels[static_cast<std::size_t>(axis)] = 2 * static_cast<int>(std::ceil(wanted / mmPerPixel));
  }
}

int SliceGeometry::sliceAt(View view, double mm) const {
  if (!(std::abs(mm) <= farthestSlice))
    throw std::invalid_argument("a slice must lie within 1000 mm of the head's origin");
  return static_cast<int>(std::lround(mm / m_spacing)) + pixels(axesOf(view).slab) / 2;
}

double SliceGeometry::slicePosition(View view, int slice) const {
  const int fromMiddle = slice - pixels(axesOf(view).slab) / 2;
  return fromMiddle * m_spacing;
}

Slab SliceGeometry::slab(View view, int slice) const {
  const double centre = slicePosition(view, slice);
  const double half = m_spacing * 0.5;
  return {view == View::axial ? 0.0 : centre - half, centre + half};
}

Vector3 SliceGeometry::headPoint(View view, double position, int column, int row) const {
  const ViewAxes axes = axesOf(view);
  Vector3 head;
  head[axes.slab] = position;
  head[axes.column] = (column + 0.5) * m_spacing - halfExtent(axes.column);
  head[axes.row] = halfExtent(axes.row) - (row + 0.5) * m_spacing;
  return head;
}

SliceGeometry::Pixel SliceGeometry::pixelOf(View view, const Vector3& head) const {
  const ViewAxes axes = axesOf(view);
  const double halfWidth = halfExtent(axes.column);
  const double halfHeight = halfExtent(axes.row);
  const double across = std::clamp(head[axes.column], -halfWidth, halfWidth);
  const double up = std::clamp(head[axes.row], -halfHeight, halfHeight);
  return {(std::min)(static_cast<int>((across + halfWidth) / m_spacing), pixels(axes.column)),
          (std::min)(static_cast<int>((halfHeight - up) / m_spacing), pixels(axes.row))};
}

bool SliceGeometry::holds(View view, const Vector3& head) const {
  const ViewAxes axes = axesOf(view);
  return std::abs(head[axes.column]) < halfExtent(axes.column) &&
         std::abs(head[axes.row]) < halfExtent(axes.row);
}

}  // namespace host
