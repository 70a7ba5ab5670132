// The exceptions of windows and dialogs, thrown and caught as pointers like the others.
#pragma once

#include "platform/portable/Exceptions.h"

// A window, a context or a resource could not be had.
class CResourceException : public CException {
 public:
  CResourceException() = default;
  BOOL GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext = nullptr) const override;
};

// What was asked for does not exist, such as a control that a dialog lacks.
class CNotSupportedException : public CException {
 public:
  CNotSupportedException() = default;
  BOOL GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext = nullptr) const override;
};

// Something that the user did stops the operation; the user has been told already, so nothing more is shown.
class CUserException : public CException {
 public:
  CUserException() = default;
  int ReportError(UINT type = MB_OK, UINT messageId = 0) override;
};

[[noreturn]] void AfxThrowResourceException();
[[noreturn]] void AfxThrowNotSupportedException();
[[noreturn]] void AfxThrowUserException();
