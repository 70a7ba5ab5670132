// The dipoles of a set as JSON, with the names and values of host/dipoles/DipoleColumns.h. What is not a
// number is null.
#pragma once

#include "module/dipole.h"
#include "tool/Output.h"

namespace tool {

// A list with an object per dipole; empty slots are left out.
Json dipoleList(const CDipoleFace& set, bool isMomentInNAm);

}  // namespace tool
