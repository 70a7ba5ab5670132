#include "host/picture/SlicePlane.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>

#include "host/paint/PixelSpan.h"
#include "host/picture/SliceSampler.h"

namespace host {

namespace {

constexpr double border = 2.0;  // mm of air around the head's box, so that air surrounds the head
// Darker than this, outside of the head, is air (of 255).
constexpr int airThreshold = 22;

std::uint8_t greyOf(double value) {
  return static_cast<std::uint8_t>(value);
}

}  // namespace

// Where the plane appears: texel coordinates and depth are linear in the pixel's place.
struct SlicePlane::Mapping {
  bool isSeen = false;
  struct Linear {
    double start = 0.0;
    double perColumn = 0.0;
    double perRow = 0.0;
    double operator()(double column, double row) const { return start + perColumn * column + perRow * row; }
  };
  Linear u;
  Linear v;
  Linear depth;
  double light = 1.0;
};

SlicePlane::SlicePlane(const Volume& volume, const HeadFrame& frame, const HeadBox& head, View view,
                       double position, const GreyWindow& window)
    : m_view(view), m_position(position) {
  if (!std::isfinite(position)) {
    throw std::invalid_argument("the position of a slice is not a number");
  }
  const ViewAxes axes = axesOf(view);
  m_corner[axes.slab] = position;
  m_corner[axes.column] = head.low[axes.column] - border;
  m_corner[axes.row] = head.low[axes.row] - border;
  const auto texels = [&](int axis) {
    return static_cast<int>(std::lround(head.high[axis] - head.low[axis] + 2.0 * border)) + 1;
  };
  m_columns = texels(axes.column);
  m_rows = texels(axes.row);
  sample(volume, frame);
  cutAirAway(volume.window());
  showWith(window);
}

void SlicePlane::sample(const Volume& volume, const HeadFrame& frame) {
  const ViewAxes axes = axesOf(m_view);
  SampleGrid grid;
  grid.columns = m_columns;
  grid.rows = m_rows;
  grid.first = m_corner;
  grid.first[axes.column] += 0.5;
  grid.first[axes.row] += 0.5;
  grid.perColumn[axes.column] = 1.0;
  grid.perRow[axes.row] = 1.0;
  m_values = sampleSlice(volume, frame, grid);
}

void SlicePlane::showWith(const GreyWindow& window) {
  for (float& value : m_values) {
    value = static_cast<float>(window.grey(static_cast<double>(value)));
  }
}

// Air is what is dark and connected to the border. Dark parts inside of the head (the skull, the ventricles)
// stay, as does the last texel, so that the skin's edge is whole.
void SlicePlane::cutAirAway(const GreyWindow& window) {
  m_solid.assign(m_values.size(), 1);
  struct Texel {
    int column;
    int row;
  };
  std::vector<Texel> open;
  const auto visit = [&](int column, int row) {
    if (column < 0 || row < 0 || column >= m_columns || row >= m_rows) {
      return;
    }
    const std::size_t at = texel(column, row);
    if (m_solid[at] == 0 || window.grey(static_cast<double>(m_values[at])) >= airThreshold) {
      return;
    }
    m_solid[at] = 0;
    open.push_back({column, row});
  };
  for (int column = 0; column < m_columns; ++column) {
    visit(column, 0);
    visit(column, m_rows - 1);
  }
  for (int row = 0; row < m_rows; ++row) {
    visit(0, row);
    visit(m_columns - 1, row);
  }
  while (!open.empty()) {
    const auto [column, row] = open.back();
    open.pop_back();
    visit(column - 1, row);
    visit(column + 1, row);
    visit(column, row - 1);
    visit(column, row + 1);
  }
}

SlicePlane::Mapping SlicePlane::mappingTo(const SceneCamera& camera) const {
  constexpr double leastFacing = 1e-3;
  const ViewAxes axes = axesOf(m_view);
  const double facing = camera.toViewer()[axes.slab];
  if (std::abs(facing) < leastFacing) {
    return {};
  }
  Mapping mapping;
  mapping.isSeen = true;
  mapping.light = 0.7 + 0.3 * std::abs(facing);
  // Along the line of sight from the plane of depth 0: point = base - toViewer * depth.
  const Vector3 base = camera.unproject(0.0, 0.0);
  const Vector3 perColumn = camera.right() * (1.0 / camera.scale());
  const Vector3 perRow = camera.up() * (-1.0 / camera.scale());
  mapping.depth = {(base[axes.slab] - m_position) / facing, perColumn[axes.slab] / facing,
                   perRow[axes.slab] / facing};
  const auto onPlane = [&](int axis) -> Mapping::Linear {
    const double away = camera.toViewer()[axis];
    return {base[axis] - away * mapping.depth.start - m_corner[axis],
            perColumn[axis] - away * mapping.depth.perColumn, perRow[axis] - away * mapping.depth.perRow};
  };
  mapping.u = onPlane(axes.column);
  mapping.v = onPlane(axes.row);
  return mapping;
}

SlicePlane::Between SlicePlane::between(double u, double v) const {
  const int left = std::clamp(static_cast<int>(u - 0.5), 0, m_columns - 2);
  const int low = std::clamp(static_cast<int>(v - 0.5), 0, m_rows - 2);
  return {texel(left, low), static_cast<float>(std::clamp(u - 0.5 - left, 0.0, 1.0)),
          static_cast<float>(std::clamp(v - 0.5 - low, 0.0, 1.0))};
}

bool SlicePlane::isSolid(const Between& at) const {
  const std::uint8_t* solid = m_solid.data() + at.texel;
  const int corners = solid[0] + solid[1] + solid[m_columns] + solid[m_columns + 1];
  if (corners == 0 || corners == 4) {
    return corners == 4;
  }
  const auto part = [&](std::ptrdiff_t one) {
    const auto from = static_cast<float>(solid[one]);
    return from + (static_cast<float>(solid[one + 1]) - from) * at.du;
  };
  return part(0) + (part(m_columns) - part(0)) * at.dv >= 0.5F;
}

void SlicePlane::draw(DepthPicture& picture, const SceneCamera& camera) const {
  const Mapping mapping = mappingTo(camera);
  if (!mapping.isSeen) {
    return;
  }
  const auto light = static_cast<float>(mapping.light);
  const RowBorder fromLeft(mapping.u.perColumn);
  const RowBorder toRight(-mapping.u.perColumn);
  const RowBorder fromLow(mapping.v.perColumn);
  const RowBorder toHigh(-mapping.v.perColumn);
  for (int row = 0; row < picture.height(); ++row) {
    const double y = row + 0.5;
    PixelSpan span(picture.width());
    const double u0 = mapping.u(0.0, y);
    const double v0 = mapping.v(0.0, y);
    span.keep(fromLeft, u0);
    span.keep(toRight, m_columns - u0);
    span.keep(fromLow, v0);
    span.keep(toHigh, m_rows - v0);
    float* depths = picture.depths(row);
    Rgb* colours = picture.colours(row);
    const double depth0 = mapping.depth(0.0, y);
    for (int column = span.first(); column < span.end(); ++column) {
      const double x = column + 0.5;
      const auto depth = static_cast<float>(depth0 + mapping.depth.perColumn * x);
      if (!(depth < depths[column])) {
        continue;
      }
      const double u = u0 + mapping.u.perColumn * x;
      const double v = v0 + mapping.v.perColumn * x;
      const Between at = between(u, v);
      if (!isSolid(at)) {
        continue;
      }
      const float* value = m_values.data() + at.texel;
      const float lower = value[0] + (value[1] - value[0]) * at.du;
      const float upper = value[m_columns] + (value[m_columns + 1] - value[m_columns]) * at.du;
      const std::uint8_t grey = greyOf(static_cast<double>((lower + (upper - lower) * at.dv) * light));
      depths[column] = depth;
      colours[column] = {grey, grey, grey};
    }
  }
}

double SlicePlane::depthAt(const SceneCamera& camera, double column, double row) const {
  constexpr double nowhere = std::numeric_limits<double>::infinity();
  const Mapping mapping = mappingTo(camera);
  if (!mapping.isSeen) {
    return nowhere;
  }
  const double u = mapping.u(column, row);
  const double v = mapping.v(column, row);
  if (!(u >= 0.0 && u < m_columns && v >= 0.0 && v < m_rows)) {
    return nowhere;
  }
  return isSolid(between(u, v)) ? mapping.depth(column, row) : nowhere;
}

}  // namespace host
