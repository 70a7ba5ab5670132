// Which dipoles are shown: the module's switches first, then the user's filter and latency window.
#pragma once

#include "host/dipoles/ViewSettings.h"
#include "module/dipole.h"

namespace host {

enum class Visibility {
  shown,
  switchedOff,  // by its own switches or the set's, or not the current one while only that is shown
  filtered,     // by the filter, or by the latency window
  nowhere       // a coordinate is not a number, or beyond 100 m
};

// In all pictures alike. A dipole is switched on when the module shows it in 3D (see isSwitchedOn) and on
// slices (its m_display is 1). The latency window counts while the set's m_showDipoleLatencySelected is on; a
// latency that is not a number is outside of it.
Visibility visibilityOf(const CDipoleFace3On3DView& set, int slot, const CDipoleszq& dipole,
                        const ViewSettings& settings);

// total = shown + switchedOff + filtered + nowhere.
struct VisibleCount {
  int total = 0;  // dipoles in the set; empty slots are none
  int shown = 0;
  int switchedOff = 0;
  int filtered = 0;
  int nowhere = 0;

  void add(Visibility visibility);

  friend bool operator==(const VisibleCount&, const VisibleCount&) = default;
};

VisibleCount countVisible(const CDipoleFace3On3DView& set, const ViewSettings& settings);

}  // namespace host
