// An operator with one answer for everything: yes and OK, the file and the colour that were set before.
//
// It is the operator from its first line to its last; the one before is then again.
#pragma once

#include "platform/Operator.h"

class ReadyOperator : public Operator {
 public:
  ReadyOperator() : m_before(installOperator(this)) {}
  ~ReadyOperator() override { installOperator(m_before); }

  int answerMessage(LPCTSTR text, UINT type) override;
  bool chooseFiles(const FileQuestion& question, std::vector<CString>& paths) override;
  bool chooseColor(COLORREF initial, COLORREF& chosen) override;

  CString file;          // empty: file dialogs are cancelled
  bool isAsked = false;  // whether anything was shown or asked since somebody cleared it
  bool hasColor = true;  // false: the colour dialog is cancelled
  COLORREF color = RGB(255, 0, 0);
  CString message;  // the last one

 private:
  Operator* m_before;
};
