// What is asked of windows that may be missing.
#pragma once

#include <afxwin.h>

inline bool isOpen(const CWnd* window) {
  return window != nullptr && window->GetSafeHwnd() != nullptr && window->IsWindowVisible();
}

// All of a window, without erasing it first. Nothing without a window.
inline void repaint(const CWnd* window) {
  if (window != nullptr && window->GetSafeHwnd() != nullptr) {
    ::InvalidateRect(window->GetSafeHwnd(), nullptr, FALSE);
  }
}
