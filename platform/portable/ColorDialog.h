// CColorDialog: asks for a colour, answered by the installed operator (platform/Operator.h). Without one it
// is the system's dialog on Windows, and cancelled elsewhere.
#pragma once

#include "platform/portable/Object.h"
#include "platform/portable/Types.h"

#ifndef _WIN32

struct CHOOSECOLOR {
  DWORD lStructSize;
  COLORREF rgbResult;      // the colour before and after
  COLORREF* lpCustColors;  // 16 colours of the caller's, which the dialog may change
  DWORD Flags;             // CC_...
};

constexpr DWORD CC_RGBINIT = 0x1;
constexpr DWORD CC_FULLOPEN = 0x2;
constexpr DWORD CC_ANYCOLOR = 0x100;

#endif

class CColorDialog : public CObject {
 public:
  explicit CColorDialog(COLORREF initial = 0, DWORD flags = 0, CWnd* parent = nullptr);
  ~CColorDialog() override;

  virtual INT_PTR DoModal();  // IDOK or IDCANCEL; cancelled, the colour stays
  COLORREF GetColor() const { return m_cc.rgbResult; }

  CHOOSECOLOR m_cc;

 private:
  COLORREF m_customColors[16] = {};
  CWnd* m_parent;
};
