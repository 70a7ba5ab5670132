// Where a window opens that is to leave others in sight, without a window. Pixels of all screens, y down.
#pragma once

#include <afxwin.h>

#include <vector>

// The window as large as it is, at a side of one of the others: right, left, below or above, the first one
// before the second and so on, whole on a screen and over none of them. `others` stand in the order of
// their weight, `screens` are the work areas. Without such a place on the screen of the first one the last
// ones are given up, one after the other, but for the first: for that another screen is taken, the nearest.
// Without any free place it is the place on the first one's screen that covers the least of it.
//
// Without others or screens the window stays.
CRect placeBeside(const CRect& window, const std::vector<CRect>& others, std::vector<CRect> screens);

// Whether a window may stay where it is: on one of the screens, and not over the first of the others.
bool isWellPlaced(const CRect& window, const std::vector<CRect>& others, const std::vector<CRect>& screens);
