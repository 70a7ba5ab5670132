// The dipoles of a page, a row for each that the set has, in its order.
#pragma once

#include <vector>

#include "host/exchange/Json.h"
#include "host/page/PageSource.h"
#include "host/page/PageWorld.h"

namespace host {

// The row of each slot; -1 for an empty one.
std::vector<int> rowsOf(const CDipoleFace& set);

// DipolesData, but for the clusters.
Json pageDipoles(const PageSource& source, const PageWorld& world);

}  // namespace host
