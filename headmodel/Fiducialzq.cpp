#include "headmodel/Fiducialzq.h"

#include <cmath>
#include <initializer_list>

namespace {

double distance(const CFiduciaryPt& a, const CFiduciaryPt& b) {
  double p[3];
  double q[3];
  a.getPosition(p[0], p[1], p[2]);
  b.getPosition(q[0], q[1], q[2]);
  return std::hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]);
}

}  // namespace

CFiducialzq::CFiducialzq() = default;
CFiducialzq::CFiducialzq(const CFiducialzq&) = default;
CFiducialzq& CFiducialzq::operator=(const CFiducialzq&) = default;
CFiducialzq::CFiducialzq(CFiducialzq&&) noexcept = default;
CFiducialzq& CFiducialzq::operator=(CFiducialzq&&) noexcept = default;
CFiducialzq::~CFiducialzq() = default;

double CFiducialzq::compare3FiducialPts(const CFiducialzq* other, double tolerance) const {
  if (other == nullptr) {
    return -1.0;
  }
  double largest = 0.0;
  for (const int index : {nasion, leftEar, rightEar}) {
    const double d = distance(m_points[index], other->m_points[index]);
    if (std::isnan(d)) {
      return d;
    }
    largest = d > largest ? d : largest;
  }
  return largest > tolerance ? largest : 0.0;
}
