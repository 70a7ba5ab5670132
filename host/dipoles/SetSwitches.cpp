#include "host/dipoles/SetSwitches.h"

namespace host {

bool areArrowsShown(const CDipoleFace& set) {
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    if (dipole != nullptr && dipole->m_showOrientation != 0) {
      return true;
    }
  }
  return false;
}

void switchAllOn(CDipoleFace9File& set) {
  set.setShowAllDipole(1);
  set.setShowDipoleArray(1);
  set.setShowCurrentDipoleOnly(0);
  set.setShowDipoleLatencySelected(0);
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (CDipoleszq* dipole = set.m_dipoles[slot]) {
      dipole->m_display = 1;
    }
  }
}

}  // namespace host
