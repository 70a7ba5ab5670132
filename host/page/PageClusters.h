// The clusters of a page.
#pragma once

#include "host/exchange/Json.h"
#include "host/page/PageSource.h"
#include "host/page/PageWorld.h"

namespace host {

// ClustersData; `dipoles` gets the cluster of each row.
Json pageClusters(const PageSource& source, const PageWorld& world, Json& dipoles);

}  // namespace host
