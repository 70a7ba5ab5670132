// What the windows share: questions to windows that may be missing, and sizes that go with the screen.
#pragma once

#include <afxwin.h>

inline bool isOpen(const CWnd* window) {
  return window != nullptr && window->GetSafeHwnd() != nullptr && window->IsWindowVisible();
}

// Pixels at 96 dots per inch, on this screen.
inline int scaledToScreen(int pixels) {
  const HDC screen = ::GetDC(nullptr);
  const int dotsPerInch = ::GetDeviceCaps(screen, LOGPIXELSX);
  ::ReleaseDC(nullptr, screen);
  return ::MulDiv(pixels, dotsPerInch, USER_DEFAULT_SCREEN_DPI);
}
