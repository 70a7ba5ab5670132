#include "collection/DipoleFace3On3DView.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

CDipoleFace3On3DView::CDipoleFace3On3DView() {
  m_showCurrentDipoleOnly = 0;
  m_mergeRadius = 15.0F;
}

CDipoleFace3On3DView::CDipoleFace3On3DView(const CDipoleFace3On3DView&) = default;
CDipoleFace3On3DView& CDipoleFace3On3DView::operator=(const CDipoleFace3On3DView&) = default;
CDipoleFace3On3DView::~CDipoleFace3On3DView() = default;

CDipoleFace3On3DView::Point CDipoleFace3On3DView::displayPoint(CDipoleszq& dipole) {
  Point point;
  inertDisplayCoordinates(dipole, &m_sphereLocational, &m_sphereRotation, point.x, point.y, point.z);
  return point;
}

double CDipoleFace3On3DView::squaredDistance(const Point& p, const double* point) {
  const double dx = p.x - point[0];
  const double dy = p.y - point[1];
  const double dz = p.z - point[2];
  return dx * dx + dy * dy + dz * dz;
}

int CDipoleFace3On3DView::getCurrentDipoleXYZ(double& x, double& y, double& z) {
  if (CDipoleszq* dipole = getCurrentDipole()) {
    dipole->getDipoleXYZ(&m_sphereLocational, &m_sphereRotation, x, y, z);
  }
  return 1;
}

int CDipoleFace3On3DView::getDipolePtColorF(const double* point, float* color) {
  std::fill_n(color, 3, 0.0F);
  const CDipoleszq* picked = m_showCurrentDipoleOnly != 0 ? pickCurrent(point) : pickNearest(point);
  if (picked == nullptr) {
    return 0;
  }
  std::copy(std::begin(picked->m_colorF), std::end(picked->m_colorF), color);
  return 1;
}

const CDipoleszq* CDipoleFace3On3DView::pickCurrent(const double* point) {
  CDipoleszq* current = getCurrentDipole();
  const double farthest = 2.0 * static_cast<double>(m_mergeRadius);
  const bool isNear =
      current != nullptr && farthest > std::sqrt(squaredDistance(displayPoint(*current), point));
  return isNear ? current : nullptr;
}

const CDipoleszq* CDipoleFace3On3DView::pickNearest(const double* point) {
  const auto tolerance = static_cast<double>(m_mergeRadius);
  const auto isNear = [tolerance](double centre, double coordinate) {
    return centre - tolerance <= coordinate && coordinate <= centre + tolerance;
  };
  const CDipoleszq* picked = nullptr;
  double best = 2.0 * tolerance;
  double bestSquare =
      std::numeric_limits<double>::infinity();  // only a smaller square can have a smaller root
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    CDipoleszq* dipole = m_dipoles[slot];
    if (dipole == nullptr) {
      continue;
    }
    const Point p = displayPoint(*dipole);
    const double square = squaredDistance(p, point);
    if (square < bestSquare && isNear(point[0], p.x) && isNear(point[1], p.y) && isNear(point[2], p.z) &&
        std::sqrt(square) < best) {
      best = std::sqrt(square);
      bestSquare = square;
      picked = dipole;
    }
  }
  return picked;
}

int CDipoleFace3On3DView::getDipoleXYZ4Latency(double low, double high, double& x, double& y, double& z) {
  x = y = z = 0.0;
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    CDipoleszq* dipole = m_dipoles[slot];
    if (dipole != nullptr && low <= dipole->m_latency && dipole->m_latency <= high) {
      dipole->getDipoleXYZ(&m_sphereLocational, &m_sphereRotation, x, y, z);
      return 1;
    }
  }
  return 0;
}

int CDipoleFace3On3DView::getRightPosteriorInferiorDipole(double& x, double& y, double& z) {
  if (m_totalDipoles < 1) {
    return 0;
  }
  int slot = firstFilledSlot();
  if (slot == m_totalDipoles) {
    return 1;
  }
  m_dipoles[slot]->getDipoleXYZ(&m_sphereLocational, &m_sphereRotation, x, y, z);
  for (++slot; slot < m_totalDipoles; ++slot) {
    if (CDipoleszq* dipole = m_dipoles[slot]) {
      Point point = {x, y, z};
      dipole->getDipoleXYZ(&m_sphereLocational, &m_sphereRotation, point.x, point.y, point.z);
      x = (std::min)(x, point.x);
      y = (std::min)(y, point.y);
      z = (std::min)(z, point.z);
    }
  }
  return 1;
}

int CDipoleFace3On3DView::getTotalDipolesShowed() const {
  if (m_showDipoleArray == 0 || m_totalDipoles < 1) {
    return 0;
  }
  if (m_showCurrentDipoleOnly != 0) {
    return 1;
  }
  int shown = 0;
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    shown += m_dipoles[slot] != nullptr && m_dipoles[slot]->m_show != 0 ? 1 : 0;
  }
  return shown;
}

int CDipoleFace3On3DView::getShowFiducialPt() const {
  return m_showFiducialPt;
}

int CDipoleFace3On3DView::setShowFiducialPt(int show) {
  m_showFiducialPt = show;
  return 1;
}

int CDipoleFace3On3DView::setShowCurrentDipoleOnly(int show) {
  m_showCurrentDipoleOnly = show;
  return 1;
}

int CDipoleFace3On3DView::setShowAllDipole(int show) {
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    if (CDipoleszq* dipole = m_dipoles[slot]) {
      dipole->m_show = show;
    }
  }
  return 1;
}

int CDipoleFace3On3DView::setShowDipole(int index, int show) {
  const int chosen = index == -1 ? m_currentDipole : index;
  if (chosen < 0 || chosen >= m_totalDipoles) {
    return 0;
  }
  CDipoleszq* dipole = m_dipoles[chosen];
  if (show != 0) {
    if (dipole != nullptr) {
      dipole->m_show = show;
      m_currentDipole = chosen;
    }
    return 1;
  }
  if (dipole != nullptr) {
    dipole->m_show = 0;
  }
  if (chosen == m_currentDipole) {
    for (int slot = 0; slot < m_totalDipoles; ++slot) {
      if (m_dipoles[slot] != nullptr && m_dipoles[slot]->m_show != 0) {
        m_currentDipole = slot;
      }
    }
  }
  return 1;
}

int CDipoleFace3On3DView::setShowDipoleOrientationAll(int show) {
  m_showDipoleOrientationAll = show;
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    if (CDipoleszq* dipole = m_dipoles[slot]) {
      dipole->m_showOrientation = show;
    }
  }
  return 1;
}

int CDipoleFace3On3DView::showAllDipole() const {
  return m_showDipoleArray != 0 ? 1 : 0;
}

int CDipoleFace3On3DView::showLatencySelectedDipoles(float /*from*/, float /*to*/) const {
  return showAllDipole();
}

int CDipoleFace3On3DView::setDipoleMaterialParameters(CWnd* /*parent*/) {
  return 1;
}

int CDipoleFace3On3DView::showCurrentDipole() {
  if (CDipoleszq* dipole = getCurrentDipole()) {
    dipole->drawDipole(&m_sphereLocational, &m_sphereRotation, 1);
  }
  return 1;
}
