#include "host/dipoles/SetSwitches.h"

namespace host {

bool areArrowsShown(const CDipoleFace& set) {
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    if (dipole != nullptr && dipole->m_showOrientation != 0)
      return true;
  }
  return false;
}

}  // namespace host
