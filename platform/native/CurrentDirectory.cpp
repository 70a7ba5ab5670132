#include <algorithm>

#include "platform/Os.h"
#include "platform/portable/Types.h"

BOOL SetCurrentDirectory(LPCTSTR path) {
  return currentOs().setCurrentFolder(path) ? FALSE : TRUE;
}

DWORD GetCurrentDirectory(DWORD size, LPTSTR buffer) {
  CString path;
  if (currentOs().currentFolder(path)) {
    return 0;
  }
  const DWORD length = static_cast<DWORD>(path.GetLength());
  if (length >= size || buffer == nullptr) {
    return length + 1;
  }
  std::copy_n(path.GetString(), length + 1, buffer);
  return length;
}
