#include "headmodel/FiduciaryPt.h"

CFiduciaryPt::CFiduciaryPt() = default;
CFiduciaryPt::CFiduciaryPt(const CFiduciaryPt&) = default;
CFiduciaryPt& CFiduciaryPt::operator=(const CFiduciaryPt&) = default;
CFiduciaryPt::CFiduciaryPt(CFiduciaryPt&&) noexcept = default;
CFiduciaryPt& CFiduciaryPt::operator=(CFiduciaryPt&&) noexcept = default;
CFiduciaryPt::~CFiduciaryPt() = default;

bool CFiduciaryPt::isSet() const {
  return m_int0 != 0;
}

int CFiduciaryPt::setPosition(double x, double y, double z) {
  m_values[positionX] = x;
  m_values[positionY] = y;
  m_values[positionZ] = z;
  m_int0 = 1;
  return 1;
}

int CFiduciaryPt::getPosition(double& x, double& y, double& z) const {
  x = m_values[positionX];
  y = m_values[positionY];
  z = m_values[positionZ];
  return isSet() ? 1 : 0;
}
