// Switches that the module keeps with each dipole and that a menu shows as one.
#pragma once

#include "module/dipole.h"

namespace host {

// Whether any dipole shows its orientation arrow. m_showDipoleOrientationAll does not tell: it holds what was
// set last for all, and nothing for dipoles that came afterwards.
[[nodiscard]] bool areArrowsShown(const CDipoleFace& set);

}  // namespace host
