// An affine map of points: a 3 x 3 matrix and a shift. Units and frames are those of the points it maps
// between, for example voxel indices to scanner mm.
#pragma once

#include <optional>

#include "host/head/Vector3.h"

namespace host {

class Affine {
 public:
  // The identity.
  Affine() = default;
  // The images of the three unit vectors, and of the origin.
  Affine(const Vector3& column0, const Vector3& column1, const Vector3& column2, const Vector3& shift);

  Vector3 operator()(const Vector3& point) const {
    return m_columns[0] * point.x + m_columns[1] * point.y + m_columns[2] * point.z + m_shift;
  }
  // The map that does `first`, then this one.
  Affine after(const Affine& first) const;
  // The inverse, or nothing when an entry is not finite or the three columns lie (nearly) in one plane.
  std::optional<Affine> inverse() const;

  const Vector3& column(int index) const { return m_columns[index]; }
  const Vector3& shift() const { return m_shift; }

  friend bool operator==(const Affine&, const Affine&) = default;

 private:
  Vector3 turn(const Vector3& direction) const;

  Vector3 m_columns[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  Vector3 m_shift;
};

}  // namespace host
