#include "tests/host/viewer/endurance/HastyOperator.h"

#include "platform/Utf.h"

// What leaves a handler of a window, a paint too, is told with the stop sign, and by nobody else.
int HastyOperator::answerMessage(LPCTSTR text, UINT type) {
  ++messages;
  if ((type & MB_ICONMASK) == MB_ICONSTOP) {
    broken.emplace_back(text);
  }
  if ((type & MB_TYPEMASK) == MB_OK) {
    return IDOK;
  }
  if (keepsNothing || m_chance.oneIn(2)) {
    return IDNO;
  }
  return (type & MB_TYPEMASK) == MB_YESNOCANCEL && m_chance.oneIn(3) ? IDCANCEL : IDYES;
}

bool HastyOperator::chooseFiles(const FileQuestion& question, std::vector<CString>& paths) {
  if (m_chance.oneIn(8)) {
    return false;
  }
  if (question.open) {
    paths = files;
    return !files.empty();
  }
  constexpr int names = 4;
  const std::string extension = question.extension.IsEmpty() ? "txt" : toUtf8(question.extension);
  // Now and then into a folder that is not there.
  const std::string folder = m_chance.oneIn(15) ? "missing/" : "";
  paths = {m_folder.path(folder + "saved " + std::to_string(m_chance.below(names)) + "." + extension)};
  return true;
}

bool HastyOperator::chooseColor(COLORREF /*initial*/, COLORREF& chosen) {
  chosen = RGB(m_chance.below(256), m_chance.below(256), m_chance.below(256));
  return !m_chance.oneIn(5);
}
