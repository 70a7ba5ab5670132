#include "headmodel/Sphere.h"

CSphere::~CSphere() = default;

int CSphere::zeroSphere() {
  m_center[0] = m_center[1] = m_center[2] = 0.0;
  m_radius = 0.0;
  return 1;
}
