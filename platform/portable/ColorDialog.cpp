#include "platform/portable/ColorDialog.h"

#include "platform/LeastPromise.h"
#include "platform/Operator.h"
#include "platform/portable/SystemDialogs.h"

CColorDialog::CColorDialog(COLORREF initial, DWORD flags, CWnd* parent) : m_cc(), m_parent(parent) {
  m_cc.lStructSize = sizeof m_cc;
  m_cc.rgbResult = initial;
  m_cc.lpCustColors = m_customColors;
  m_cc.Flags = flags | (initial != 0 ? CC_RGBINIT : 0U);
}

CColorDialog::~CColorDialog() = default;

INT_PTR CColorDialog::DoModal() {
  Operator* someone = installedOperator();
  if (someone == nullptr) {
    return askSystem(m_cc, m_parent) ? IDOK : IDCANCEL;
  }
  COLORREF chosen = m_cc.rgbResult;
  if (!someone->chooseColor(m_cc.rgbResult, chosen)) {
    spoil(&m_cc.rgbResult, sizeof m_cc.rgbResult);
    return IDCANCEL;
  }
  m_cc.rgbResult = chosen;
  return IDOK;
}
