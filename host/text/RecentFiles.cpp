#include "host/text/RecentFiles.h"

#include <utility>

namespace host {

namespace {

// Lower case stands a fixed way behind upper case in these alphabets.
TCHAR lowerCase(TCHAR unit) {
  const auto isIn = [unit](unsigned first, unsigned last) { return unit >= first && unit <= last; };
  unsigned distance = 0;
  if (isIn('A', 'Z') || (isIn(0xC0, 0xDE) && unit != 0xD7) || isIn(0x391, 0x3AB) || isIn(0x410, 0x42F)) {
    distance = 32;
  } else if (isIn(0x400, 0x40F)) {
    distance = 80;
  }
  return static_cast<TCHAR>(unit + distance);
}

TCHAR folded(TCHAR unit) {
  return unit == _T('/') ? _T('\\') : lowerCase(unit);
}

bool isSameFile(const CString& a, const CString& b, PathRule rule) {
  if (a.GetLength() != b.GetLength()) {
    return false;
  }
  for (int i = 0; i < a.GetLength(); ++i) {
    if (a[i] != b[i] && (rule == PathRule::exact || folded(a[i]) != folded(b[i]))) {
      return false;
    }
  }
  return true;
}

}  // namespace

void RecentFiles::add(CString path) {
  if (path.IsEmpty()) {
    return;
  }
  remove(path);
  m_paths.insert(m_paths.begin(), std::move(path));
  if (m_paths.size() > most) {
    m_paths.pop_back();
  }
}

void RecentFiles::remove(const CString& path) {
  std::erase_if(m_paths,
                [&, wanted = path](const CString& known) { return isSameFile(known, wanted, m_rule); });
}

}  // namespace host
