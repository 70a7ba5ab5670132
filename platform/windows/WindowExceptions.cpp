#include "platform/windows/WindowExceptions.h"

#include "platform/LeastPromise.h"

namespace {

BOOL tell(LPCTSTR sentence, LPTSTR text, UINT size, PUINT helpContext) {
  if (helpContext != nullptr) {
    *helpContext = 0;
  }
  if (text == nullptr || size == 0) {
    return FALSE;
  }
  ::lstrcpynW(text, isLeastPromised() ? _T("") : sentence, static_cast<int>(size));
  return isLeastPromised() ? FALSE : TRUE;  // an exception may have no text
}

}  // namespace

BOOL CResourceException::GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext) const {
  return tell(_T("A resource that the program needs is not there."), text, size, helpContext);
}

BOOL CNotSupportedException::GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext) const {
  return tell(_T("This operation is not supported."), text, size, helpContext);
}

int CUserException::ReportError(UINT /*type*/, UINT /*messageId*/) {
  return 0;
}

void AfxThrowResourceException() {
  throw new CResourceException;
}

void AfxThrowNotSupportedException() {
  throw new CNotSupportedException;
}

void AfxThrowUserException() {
  throw new CUserException;
}
