// The fiducial points that the panes show.
#pragma once

#include <vector>

#include "host/dipoles/DipoleScene.h"
#include "host/panes/PaneContents.h"

namespace host {

// Those that the head is registered by, while the set's m_showFiducialPt is on; none of a head that is not
// registered.
std::vector<SceneFiducial> headFiducials(const PaneContents& contents);

// Those of the dipole file that lie farther than rounding from the head's own, under the same switch.
inline constexpr double fiducialRounding = 0.75;  // mm: less than a slice
std::vector<SceneFiducial> fileFiducials(const PaneContents& contents);

// Those that the user has placed for a registration to come.
std::vector<SceneFiducial> placedFiducials(const PaneContents& contents);

}  // namespace host
