// The selection of the manager, without its list.
#pragma once

#include <algorithm>

#include "collection/SelectedDipoles.h"

// These are selected, and no others.
inline void select(CDipoleFace& set, const DipoleSlots& slots) {
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    set.setDipoleSelection(slot, std::find(slots.begin(), slots.end(), slot) != slots.end());
  }
}
