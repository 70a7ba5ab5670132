#include "ui/HostView.h"

HostView::HostView(const CWnd* window)
    : m_window(window == nullptr ? nullptr : window->GetSafeHwnd()),
      m_attached(m_window == nullptr ? nullptr : CWnd::FromHandlePermanent(m_window)) {}

bool HostView::isThere() const {
  return ::IsWindow(m_window) != FALSE &&
         (m_attached == nullptr || CWnd::FromHandlePermanent(m_window) == m_attached);
}

HWND HostView::window() const {
  return isThere() ? m_window : nullptr;
}

void HostView::repaint() const {
  if (isThere()) {
    ::InvalidateRect(m_window, nullptr, FALSE);
  }
}
