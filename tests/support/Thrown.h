// What a call threw, of the exceptions that are thrown as pointers; the exception is ended here.
#pragma once

#include <afx.h>

#include <new>
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

// Whether memory runs out in `call`: the standard library throws one exception for it, the framework another.
template <class Call>
bool runsOutOfMemory(Call call) {
  try {
    return throwsMemoryException(call);
  } catch (const std::bad_alloc&) {
    return true;
  }
}

// The text that an exception has for its user, UTF-8.
inline std::string messageOf(const CException& exception) {
  TCHAR text[2048];
  return exception.GetErrorMessage(text, 2048) ? toUtf8(text) : std::string();
}

// What its ReportError shows, UTF-8.
inline std::string reportOf(const CException& exception) {
  const std::string text = messageOf(exception);
  return text.empty() ? "Something failed, for an unknown reason." : text;
}
