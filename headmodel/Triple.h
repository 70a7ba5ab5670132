// Three values along the axes x, y, z: a position, a direction, angles.
#pragma once

struct Triple {
  double x;
  double y;
  double z;
};

inline Triple tripleOf(const double (&values)[3]) {
  return {values[0], values[1], values[2]};
}

inline void setTriple(double (&target)[3], const Triple& values) {
  target[0] = values.x;
  target[1] = values.y;
  target[2] = values.z;
}
