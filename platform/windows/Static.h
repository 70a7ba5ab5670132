// CStatic: a label, frame or picture.
#pragma once

#include "platform/windows/Wnd.h"

class CStatic : public CWnd {
 public:
  virtual BOOL Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF) {
    return CWnd::Create(WC_STATICW, text, style, rect, parent, id);
  }

  HICON SetIcon(HICON icon) {
    return reinterpret_cast<HICON>(SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(icon)));
  }
  HICON GetIcon() const { return reinterpret_cast<HICON>(SendMessage(STM_GETICON)); }

 private:
  using CWnd::Create;
};
