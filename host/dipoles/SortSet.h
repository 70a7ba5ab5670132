// Sorting a set of which values are unknown.
#pragma once

#include "host/dipoles/UnknownValues.h"
#include "module/dipole.h"

namespace host {

// A key beside those of CDipoleFace1Process::sortDipoles: by labels, numbers in them by their size.
inline constexpr int sortByLabel = 10;

enum class SortOrder { ascending, descending };

// Sorts as the module does, by one of its keys or by labels; but dipoles of which that value is unknown, no
// number or an empty label come last in either order, among themselves in the order of the module. Descending
// is the reverse of ascending for all others. `unknown` is by slots, before and afterwards. Throws what an
// allocation throws; the set may be sorted otherwise then.
void sortSet(CDipoleFace9File& set, int key, UnknownValues& unknown, SortOrder order = SortOrder::ascending);

}  // namespace host
