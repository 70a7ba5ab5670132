#include "headmodel/Sphere.h"

#include "headmodel/Triple.h"

CSphere::CSphere() = default;
CSphere::CSphere(const CSphere&) = default;
CSphere& CSphere::operator=(const CSphere&) = default;
CSphere::CSphere(CSphere&&) noexcept = default;
CSphere& CSphere::operator=(CSphere&&) noexcept = default;
CSphere::~CSphere() = default;

int CSphere::zeroSphere() {
  setTriple(m_center, {0.0, 0.0, 0.0});
  m_radius = 0.0;
  return 1;
}
