// Sorting a set of which values are unknown.
#pragma once

#include "host/dipoles/UnknownValues.h"
#include "module/dipole.h"

namespace host {

// Sorts as the module does, by one of the keys of CDipoleFace1Process::sortDipoles; but dipoles of which that
// value is unknown come last, among themselves in the order of the module. `unknown` is by slots, before and
// afterwards. Throws what an allocation throws; the set may be sorted otherwise then.
void sortSet(CDipoleFace9File& set, int key, UnknownValues& unknown);

}  // namespace host
