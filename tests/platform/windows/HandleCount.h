// How many handles of a kind this process holds: to prove that nothing stays behind.
//
// Windows tells; Wine answers 0. There the handles themselves are tried, one number after the other, which
// Wine lets one do without the upper half that tells generations apart.
#pragma once

#include <windows.h>

int windowHandles();  // windows and menus
int gdiHandles();     // contexts, bitmaps, fonts, brushes, ...
