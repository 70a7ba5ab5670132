#include "headmodel/Fiducial.h"

CFiducial::CFiducial() = default;
CFiducial::CFiducial(const CFiducial&) = default;
CFiducial& CFiducial::operator=(const CFiducial&) = default;
CFiducial::CFiducial(CFiducial&&) noexcept = default;
CFiducial& CFiducial::operator=(CFiducial&&) noexcept = default;
CFiducial::~CFiducial() = default;

int CFiducial::resetAllFiducialPt() {
  for (CFiduciaryPtzq& point : m_points) {
    point = CFiduciaryPtzq();
  }
  return 1;
}

int CFiducial::setAllFiducialPtShap(UINT shape) {
  for (CFiduciaryPtzq& point : m_points) {
    point.m_int1 = static_cast<int>(shape);
  }
  return 1;
}

int CFiducial::setAllFiducialSize3D(double size) {
  for (CFiduciaryPtzq& point : m_points) {
    point.m_values2[CFiduciaryPt::size3D] = size;
  }
  return 1;
}

int CFiducial::getTotalFiduciaryPts(bool onlySet) const {
  int total = 0;
  for (const CFiduciaryPtzq& point : m_points) {
    total += !onlySet || point.isSet() ? 1 : 0;
  }
  return total;
}
