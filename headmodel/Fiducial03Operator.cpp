#include "headmodel/Fiducial03Operator.h"

CFiducial03Operator::CFiducial03Operator() = default;
CFiducial03Operator::CFiducial03Operator(const CFiducial03Operator&) = default;
CFiducial03Operator& CFiducial03Operator::operator=(const CFiducial03Operator&) = default;
CFiducial03Operator::CFiducial03Operator(CFiducial03Operator&&) noexcept = default;
CFiducial03Operator& CFiducial03Operator::operator=(CFiducial03Operator&&) noexcept = default;
CFiducial03Operator::~CFiducial03Operator() = default;

int CFiducial03Operator::setNasionf(double x, double y, double z) {
  return m_points[nasion].setPosition(x, y, z);
}

int CFiducial03Operator::setLeftEarf(double x, double y, double z) {
  return m_points[leftEar].setPosition(x, y, z);
}

int CFiducial03Operator::setRightEarf(double x, double y, double z) {
  return m_points[rightEar].setPosition(x, y, z);
}
