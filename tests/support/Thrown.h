// What a call threw, of the exceptions that are thrown as pointers; the exception is ended here.
#pragma once

#include <afx.h>

#include <string>

#include "platform/Utf.h"

constexpr int nothingThrown = -1;

// The cause of the Exception that `call` threw, or nothingThrown. Other exceptions pass.
template <class Exception, class Call>
int causeThrown(Call call) {
  try {
    call();
  } catch (Exception* exception) {
    const int cause = exception->m_cause;
    exception->Delete();
    return cause;
  }
  return nothingThrown;
}

template <class Call>
int fileCause(Call call) {
  return causeThrown<CFileException>(call);
}

template <class Call>
int archiveCause(Call call) {
  return causeThrown<CArchiveException>(call);
}

template <class Call>
bool throwsMemoryException(Call call) {
  try {
    call();
  } catch (CMemoryException* exception) {
    exception->Delete();
    return true;
  }
  return false;
}

// The text that an exception has for its user, UTF-8.
inline std::string messageOf(const CException& exception) {
  TCHAR text[2048];
  return exception.GetErrorMessage(text, 2048) ? toUtf8(text) : std::string();
}
