#include "host/exchange/FileKind.h"

namespace host {

FileKind kindOf(const CString& path) {
  const auto endsWith = [&](LPCTSTR ending) {
    return path.Right(CString(ending).GetLength()).CompareNoCase(ending) == 0;
  };
  if (endsWith(_T(".nii")) || endsWith(_T(".nii.gz")))
    return FileKind::mri;
  return endsWith(_T(".dipset")) ? FileKind::set : FileKind::dipoles;
}

}  // namespace host
