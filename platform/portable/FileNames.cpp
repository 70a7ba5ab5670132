#include "platform/portable/FileNames.h"

#include "platform/Os.h"

namespace {

// Each capital letter in these ranges has its small one at a fixed distance.
unsigned folded(TCHAR unit) {
  const unsigned code = unit;
  if (code >= 'a' && code <= 'z') {
    return code - 32;
  }
  const bool latin = code >= 0xE0 && code <= 0xFE && code != 0xF7;
  const bool greek = code >= 0x3B1 && code <= 0x3C9 && code != 0x3C2;
  const bool cyrillic = code >= 0x430 && code <= 0x44F;
  if (latin || greek || cyrillic) {
    return code - 32;
  }
  return code >= 0x450 && code <= 0x45F ? code - 80 : code;
}

int compareFolded(LPCTSTR left, LPCTSTR right) {
  while (*left != 0 && folded(*left) == folded(*right)) {
    ++left;
    ++right;
  }
  return static_cast<int>(folded(*left)) - static_cast<int>(folded(*right));
}

bool matches(LPCTSTR name, LPCTSTR pattern) {
  LPCTSTR star = nullptr;  // the last * passed, and where the name stood then
  LPCTSTR retry = nullptr;
  while (*name != 0) {
    if (*pattern == _T('*')) {
      star = ++pattern;
      retry = name;
    } else if (*pattern != 0 && (*pattern == _T('?') || folded(*pattern) == folded(*name))) {
      ++pattern;
      ++name;
    } else if (star != nullptr) {
      pattern = star;
      name = ++retry;
    } else {
      return false;
    }
  }
  while (*pattern == _T('*')) {
    ++pattern;
  }
  return *pattern == 0;
}

}  // namespace

int compareFileNames(const CString& left, const CString& right) {
  const int difference = compareFolded(left, right);
  return difference != 0 ? difference : left.Compare(right);
}

bool sameIgnoringCase(const CString& left, const CString& right) {
  return compareFolded(left, right) == 0;
}

bool matchesPattern(const CString& name, const CString& pattern) {
  return pattern == _T("*.*") || matches(name, pattern);
}

int nameStart(const CString& path) {
  int start = path.GetLength();
  while (start > 0 && !isPathSeparator(path[start - 1])) {
    --start;
  }
  return start;
}

CString joinPath(const CString& folder, const CString& name) {
  const int length = folder.GetLength();
  const bool closed = length > 0 && isPathSeparator(folder[length - 1]);
  return closed ? folder + name : folder + pathSeparator + name;
}
