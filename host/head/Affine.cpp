#include "host/head/Affine.h"

namespace host {

Affine::Affine(const Vector3& column0, const Vector3& column1, const Vector3& column2, const Vector3& shift)
    : m_columns{column0, column1, column2}, m_shift(shift) {}

Vector3 Affine::turn(const Vector3& direction) const {
  return m_columns[0] * direction.x + m_columns[1] * direction.y + m_columns[2] * direction.z;
}

Affine Affine::after(const Affine& first) const {
  return {turn(first.m_columns[0]), turn(first.m_columns[1]), turn(first.m_columns[2]),
          (*this)(first.m_shift)};
}

std::optional<Affine> Affine::inverse() const {
  const auto& [a, b, c] = m_columns;
  const double determinant = dot(a, cross(b, c));
  const double size = length(a) * length(b) * length(c);
  // The ratio is the volume of the unit cell against that of a box with the same edges: free of the unit.
  constexpr double flattest = 1e-6;
  if (!std::isfinite(determinant) || !std::isfinite(size) || !isFinite(m_shift) || !(size > 0.0) ||
      std::abs(determinant) < flattest * size) {
    return std::nullopt;
  }
  // The rows of the inverse are the cross products of the columns over the determinant.
  const double scale = 1.0 / determinant;
  const Vector3 row0 = cross(b, c) * scale;
  const Vector3 row1 = cross(c, a) * scale;
  const Vector3 row2 = cross(a, b) * scale;
  Affine result({row0.x, row1.x, row2.x}, {row0.y, row1.y, row2.y}, {row0.z, row1.z, row2.z}, {});
  result.m_shift = result.turn(m_shift) * -1.0;
  if (!isFinite(result.m_columns[0]) || !isFinite(result.m_columns[1]) || !isFinite(result.m_columns[2]) ||
      !isFinite(result.m_shift)) {
    return std::nullopt;
  }
  return result;
}

}  // namespace host
