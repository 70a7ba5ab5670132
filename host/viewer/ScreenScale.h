// Sizes on a screen whose dots per inch are not 96. The program is told of one such number for all screens,
// the system's.
#pragma once

#include <afxwin.h>

#include <cmath>

namespace host {

// How many of this screen's pixels one of 96 dots per inch is. Asked of the system once: it tells a program
// like this one the same as long as it runs, and never that it has changed (see viewer.manifest).
inline double screenScale() {
  static const double scale = [] {
    const HDC screen = ::GetDC(nullptr);
    const int dotsPerInch = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    return dotsPerInch / 96.0;
  }();
  return scale;
}

// `pixels` are those of 96 dots per inch.
inline int onScreen(int pixels) {
  return static_cast<int>(std::lround(pixels * screenScale()));
}

}  // namespace host
