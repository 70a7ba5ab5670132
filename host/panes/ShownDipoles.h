// What the panes show of a set, as a whole: where its dipoles are, and by which choice.
#pragma once

#include <string>
#include <vector>

#include "host/paint/SceneCamera.h"
#include "host/panes/PaneContents.h"

namespace host {

// Those that are visible, see visibilityOf, ascending.
std::vector<int> shownSlots(const PaneContents& contents);

// The shown dipole, within headReach, whose moment is the largest without its sign; a moment that is no
// number counts as none. -1 when there is none.
int strongestSlot(const PaneContents& contents);

// The nearest of left, right, front and back to where the shown dipoles lie in the head, from the middle of
// the head or, without one, of the sphere; from the left front and above when they lie all around.
ViewAngles sideOfDipoles(const PaneContents& contents);

// Such as "dipoles within 5.0 mm of the slices".
std::string toleranceText(const PaneContents& contents);
// By which choice dipoles are left out, such as "fit error at most 10 %"; one text each.
std::vector<std::string> filterTexts(const PaneContents& contents);

}  // namespace host
