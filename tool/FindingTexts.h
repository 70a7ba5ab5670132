// Findings of the import audit as the program tells them.
#pragma once

#include <string>
#include <vector>

#include "host/audit/Finding.h"
#include "host/exchange/Json.h"
#include "module/dipole.h"

namespace tool {

// "a.dip:9: wrong (unit): ... [--unit cm or --unit mm]": one line, with the option that repairs it.
std::string findingLine(const host::Finding& finding);

// The same with section, dipoles and remedy, on several lines. The finding's slots are those of the set.
std::string findingReport(const host::Finding& finding, const CDipoleFace& set, bool isAccepted);

// An entry of "findings", see docs/audit.md.
host::Json findingJson(const host::Finding& finding, const CDipoleFace& set, bool isAccepted);

// Every code with its meaning, a line each.
std::string codesHelp();

}  // namespace tool
