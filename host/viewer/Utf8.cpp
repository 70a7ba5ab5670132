#include "host/viewer/Utf8.h"

#include <afxwin.h>

namespace host {

CString fromUtf8(std::string_view text) {
  const int size = static_cast<int>(text.size());
  const int length = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
  CString wide;
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.GetBuffer(length), length);
  wide.ReleaseBuffer(length);
  return wide;
}

}  // namespace host
