#include "host/dipoles/DipoleArrows.h"

#include <algorithm>
#include <cmath>

#include "host/dipoles/DipoleScene.h"

namespace host {

DipoleArrows::DipoleArrows(const CDipoleFace& set, bool byMoment, const UnknownDipoles* unknown)
    : m_isByMoment(byMoment), m_unknown(unknown) {
  if (!byMoment) {
    return;
  }
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    if (dipole != nullptr && std::isfinite(dipole->m_moment) && !isUnknown(*dipole, DipoleValue::moment)) {
      m_strongest = (std::max)(m_strongest, std::abs(dipole->m_moment));
    }
  }
}

bool DipoleArrows::isUnknown(const CDipoles& dipole, DipoleValue value) const {
  return m_unknown != nullptr && m_unknown->isUnknown(dipole, value);
}

Vector3 DipoleArrows::of(const CDipoles& dipole) const {
  if (isUnknown(dipole, DipoleValue::orientation)) {
    return {};
  }
  const Vector3 arrow = arrowOf(dipole);
  if (!m_isByMoment) {
    return arrow;
  }
  if (!std::isfinite(dipole.m_moment) || m_strongest == 0.0 || isUnknown(dipole, DipoleValue::moment)) {
    return {};
  }
  return arrow * (std::abs(dipole.m_moment) / m_strongest);
}

}  // namespace host
