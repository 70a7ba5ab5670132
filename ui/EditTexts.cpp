#include "ui/EditTexts.h"

namespace {

bool isEdit(HWND control) {
  TCHAR name[8] = {};
  ::GetClassName(control, name, 8);
  return CString(name).CompareNoCase(_T("Edit")) == 0;
}

CString textOf(const CWnd& dialog, int field) {
  CString text;
  dialog.GetDlgItemText(field, text);
  return text;
}

}  // namespace

void EditTexts::remember(const CWnd& dialog) {
  m_values = m_exchanged;
  m_texts.clear();
  for (HWND control = ::GetWindow(dialog.GetSafeHwnd(), GW_CHILD); control != nullptr;
       control = ::GetWindow(control, GW_HWNDNEXT)) {
    if (isEdit(control)) {
      const int field = ::GetDlgCtrlID(control);
      m_texts[field] = textOf(dialog, field);
    }
  }
}

bool EditTexts::isChanged(const CWnd& dialog, int field) const {
  const auto shown = m_texts.find(field);
  return shown == m_texts.end() || shown->second != textOf(dialog, field);
}
