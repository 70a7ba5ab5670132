#include "platform/portable/SystemDialogs.h"

#include <cstdio>

#include "platform/Operator.h"
#include "platform/Utf.h"

int askSystem(LPCTSTR text, LPCTSTR /*caption*/, UINT type) {
  const std::string line = toUtf8(text) + '\n';
  static_cast<void>(std::fputs(line.c_str(), stderr));  // where else could a failure be told?
  return carefulAnswer(type);
}

bool askSystem(OPENFILENAME& /*question*/, bool /*open*/, CWnd* /*parent*/, DWORD& why) {
  why = 0;
  return false;
}

bool askSystem(CHOOSECOLOR& /*question*/, CWnd* /*parent*/) {
  return false;
}
