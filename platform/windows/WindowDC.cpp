#include "platform/windows/WindowDC.h"

#include "platform/windows/WindowExceptions.h"

namespace {

HWND handleOf(const CWnd* window) {
  return window == nullptr ? nullptr : window->m_hWnd;
}

HDC needed(HDC context) {
  if (context == nullptr) {
    AfxThrowResourceException();
  }
  return context;
}

}  // namespace

CClientDC::CClientDC(CWnd* window) : m_hWnd(handleOf(window)) {
  m_hDC = needed(::GetDC(m_hWnd));
}

CClientDC::~CClientDC() {
  ::ReleaseDC(m_hWnd, m_hDC);
  m_hDC = nullptr;
}

CWindowDC::CWindowDC(CWnd* window) : m_hWnd(handleOf(window)) {
  m_hDC = needed(::GetWindowDC(m_hWnd));
}

CWindowDC::~CWindowDC() {
  ::ReleaseDC(m_hWnd, m_hDC);
  m_hDC = nullptr;
}

CPaintDC::CPaintDC(CWnd* window) : m_ps(), m_hWnd(handleOf(window)) {
  m_hDC = needed(::BeginPaint(m_hWnd, &m_ps));
}

CPaintDC::~CPaintDC() {
  ::EndPaint(m_hWnd, &m_ps);
  m_hDC = nullptr;
}
