#include "import/CtfLine.h"

namespace {

// Nearly every line of a file is a row of numbers with none of these characters. The loop has no early exit
// so that the compiler can look at many characters at once.
bool hasMark(const CString& line) {
  const TCHAR* text = line.GetString();
  const int length = line.GetLength();
  bool found = false;
  for (int i = 0; i < length; ++i) {
    const TCHAR c = text[i];
    found |= (c == _T('(')) | (c == _T('/')) | (c == _T('{')) | (c == _T('}'));
  }
  return found;
}

}  // namespace

bool contains(const CString& text, LPCTSTR words) {
  return text.Find(words) >= 0;
}

CtfLine::CtfLine(const CString& line) {
  if (!hasMark(line)) {
    return;
  }
  isUnitHeader = contains(line, _T("(cm)"));
  isPassedOver = contains(line, _T("{")) || contains(line, _T("//"));
  isEnd = contains(line, _T("}"));
}
