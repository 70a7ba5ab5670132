#include "ui/EditTexts.h"

#include <algorithm>
#include <cmath>

namespace {

CString textOf(const CWnd& dialog, int field) {
  CString text;
  dialog.GetDlgItemText(field, text);
  return text;
}

bool isHexadecimal(const CString& number) {
  return number.FindOneOf(_T("xX")) >= 0;
}

}  // namespace

void EditTexts::remember(const CWnd& dialog) {
  for (auto& [id, field] : m_fields) {
    field.text = textOf(dialog, id);
    field.shown = field.exchanged;
    field.isRemembered = true;
  }
}

bool EditTexts::isChanged(const CWnd& dialog, int field) const {
  const auto known = m_fields.find(field);
  return known == m_fields.end() || !known->second.isRemembered ||
         known->second.text != textOf(dialog, field);
}

bool EditTexts::isAnyChanged(const CWnd& dialog) const {
  return std::any_of(m_fields.begin(), m_fields.end(),
                     [&](const auto& field) { return isChanged(dialog, field.first); });
}

void EditTexts::mustBeDecimal(CDataExchange& direction, int field, double number) {
  if (!std::isfinite(number) || isHexadecimal(textOf(*direction.m_pDlgWnd, field))) {
    AfxMessageBox(_T("Please enter a number."), MB_ICONEXCLAMATION);
    direction.Fail();
  }
}
