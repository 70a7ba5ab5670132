// Switches that the module keeps with each dipole and that a menu shows as one.
#pragma once

#include "module/dipole.h"

namespace host {

// Whether any dipole shows its orientation arrow. m_showDipoleOrientationAll does not tell: it holds what was
// set last for all, and nothing for dipoles that came afterwards.
bool areArrowsShown(const CDipoleFace& set);

// Every dipole is shown in 3D and on slices, whatever its file or its user switched off.
void switchAllOn(CDipoleFace9File& set);

}  // namespace host
