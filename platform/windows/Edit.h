// CEdit: a field to type text into. Positions count UTF-16 units from 0.
#pragma once

#include "platform/windows/Wnd.h"

class CEdit : public CWnd {
 public:
  virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(WC_EDITW, nullptr, style, rect, parent, id);
  }

  void SetSel(int first, int end, BOOL noScroll = FALSE) {
    SendMessage(EM_SETSEL, static_cast<WPARAM>(first), end);
    if (noScroll == FALSE) {
      SendMessage(EM_SCROLLCARET);
    }
  }
  void GetSel(int& first, int& end) const {
    DWORD from = 0;
    DWORD to = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    first = static_cast<int>(from);
    end = static_cast<int>(to);
  }
  void ReplaceSel(LPCTSTR text, BOOL canUndo = FALSE) {
    SendMessage(EM_REPLACESEL, static_cast<WPARAM>(canUndo), reinterpret_cast<LPARAM>(text));
  }
  BOOL GetModify() const { return static_cast<BOOL>(SendMessage(EM_GETMODIFY)); }
  void SetModify(BOOL modified = TRUE) { SendMessage(EM_SETMODIFY, static_cast<WPARAM>(modified)); }
  void LimitText(int units = 0) { SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(units)); }
  BOOL SetReadOnly(BOOL on = TRUE) {
    return static_cast<BOOL>(SendMessage(EM_SETREADONLY, static_cast<WPARAM>(on)));
  }

 private:
  using CWnd::Create;
};
