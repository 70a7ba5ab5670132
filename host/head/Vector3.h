// A point or direction in three dimensions. Units and frame are the user's: mm in the scanner's frame (right,
// anterior, superior positive), mm in the head frame (left, up, front positive), or voxel indices.
#pragma once

#include <cmath>

namespace host {

struct Vector3 {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  // axis 0, 1 or 2.
  constexpr double operator[](int axis) const { return axis == 0 ? x : axis == 1 ? y : z; }
  constexpr double& operator[](int axis) { return axis == 0 ? x : axis == 1 ? y : z; }

  friend bool operator==(const Vector3&, const Vector3&) = default;
};

constexpr Vector3 operator+(const Vector3& a, const Vector3& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr Vector3 operator-(const Vector3& a, const Vector3& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr Vector3 operator*(const Vector3& a, double factor) {
  return {a.x * factor, a.y * factor, a.z * factor};
}
constexpr double dot(const Vector3& a, const Vector3& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
constexpr Vector3 cross(const Vector3& a, const Vector3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vector3& a) {
  return std::sqrt(dot(a, a));
}
inline bool isFinite(const Vector3& a) {
  return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

}  // namespace host
