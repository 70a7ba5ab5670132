#include "tests/ui/endurance/ReadyOperator.h"

int ReadyOperator::answerMessage(LPCTSTR text, UINT type) {
  isAsked = true;
  message = text;
  return (type & MB_TYPEMASK) == MB_YESNO ? IDYES : IDOK;
}

bool ReadyOperator::chooseFiles(const FileQuestion& /*question*/, std::vector<CString>& paths) {
  isAsked = true;
  if (file.IsEmpty()) {
    return false;
  }
  paths = {file};
  return true;
}

bool ReadyOperator::chooseColor(COLORREF /*initial*/, COLORREF& chosen) {
  isAsked = true;
  chosen = color;
  return hasColor;
}
