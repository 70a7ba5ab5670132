// CClientDC, CWindowDC and CPaintDC: contexts of a window, given back when the object ends. Pixels from the
// upper left corner of the client area (of the window, for CWindowDC), y down.
#pragma once

#include "platform/portable/Gdi.h"
#include "platform/windows/Wnd.h"

// A context that is somebody else's: it is not deleted. Not an MFC name.
class BorrowedDC : public CDC {
 public:
  explicit BorrowedDC(HDC context) { m_hDC = context; }
  ~BorrowedDC() override { m_hDC = nullptr; }
};

class CClientDC : public CDC {
 public:
  explicit CClientDC(CWnd* window);  // null: the whole screen; throws CResourceException*
  ~CClientDC() override;

 protected:
  HWND m_hWnd;
};

class CWindowDC : public CDC {
 public:
  explicit CWindowDC(CWnd* window);  // null: the whole screen; throws CResourceException*
  ~CWindowDC() override;

 protected:
  HWND m_hWnd;
};

// Only while WM_PAINT is handled.
class CPaintDC : public CDC {
 public:
  explicit CPaintDC(CWnd* window);  // throws CResourceException*
  ~CPaintDC() override;

  PAINTSTRUCT m_ps;

 protected:
  HWND m_hWnd;
};
