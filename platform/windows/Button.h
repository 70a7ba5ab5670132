// CButton: a push button, check box or radio button.
#pragma once

#include "platform/windows/Wnd.h"

class CButton : public CWnd {
 public:
  virtual BOOL Create(LPCTSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(WC_BUTTONW, caption, style, rect, parent, id);
  }

  int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
  void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
  UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
  UINT GetButtonStyle() const { return GetStyle() & BS_TYPEMASK; }

 private:
  using CWnd::Create;
};
