#include "platform/portable/Exceptions.h"

#include <algorithm>

#include "platform/LeastPromise.h"
#include "platform/portable/WinApp.h"

namespace {

BOOL copyText(const CString& sentence, LPTSTR buffer, UINT size, PUINT helpContext) {
  const CString text = isLeastPromised() ? CString() : sentence;  // an exception may have no text
  if (helpContext != nullptr) {
    *helpContext = 0;
  }
  if (buffer == nullptr || size == 0) {
    return FALSE;
  }
  const UINT length = (std::min)(static_cast<UINT>(text.GetLength()), size - 1);
  std::copy_n(text.GetString(), length, buffer);
  buffer[length] = 0;
  return text.IsEmpty() ? FALSE : TRUE;
}

// What is said before and after the name of the file.
struct Sentence {
  LPCTSTR before;
  LPCTSTR after;
};

Sentence fileSentence(int cause) {
  switch (cause) {
    case CFileException::none:
      return {_T("Nothing went wrong with "), _T(".")};
    case CFileException::fileNotFound:
      return {_T(""), _T(" was not found.")};
    case CFileException::badPath:
      return {_T(""), _T(" lies in a folder that does not exist, or its name is not a valid one.")};
    case CFileException::tooManyOpenFiles:
      return {_T(""), _T(" cannot be opened: too many files are open.")};
    case CFileException::accessDenied:
      return {_T("Access to "), _T(" was denied.")};
    case CFileException::invalidFile:
      return {_T(""), _T(" is not open.")};
    case CFileException::removeCurrentDir:
      return {_T(""), _T(" is the current folder and cannot be removed.")};
    case CFileException::directoryFull:
      return {_T("The folder has no room left for "), _T(".")};
    case CFileException::badSeek:
      return {_T("A place that cannot exist was asked for in "), _T(".")};
    case CFileException::hardIO:
      return {_T("The device failed while it held "), _T(".")};
    case CFileException::sharingViolation:
      return {_T(""), _T(" is in use by another program.")};
    case CFileException::lockViolation:
      return {_T("Another program has locked a part of "), _T(".")};
    case CFileException::diskFull:
      return {_T("The disk has no room left for "), _T(".")};
    case CFileException::endOfFile:
      return {_T(""), _T(" ended too early.")};
    default:
      return {_T(""), _T(" could not be used, for an unknown reason.")};
  }
}

Sentence archiveSentence(int cause) {
  switch (cause) {
    case CArchiveException::none:
      return {_T("Nothing went wrong with "), _T(".")};
    case CArchiveException::readOnly:
      return {_T(""), _T(" is open for reading and cannot be written.")};
    case CArchiveException::endOfFile:
      return {_T(""), _T(" ended too early.")};
    case CArchiveException::writeOnly:
      return {_T(""), _T(" is open for writing and cannot be read.")};
    case CArchiveException::badIndex:
    case CArchiveException::badClass:
      return {_T(""), _T(" holds something else than what was expected.")};
    case CArchiveException::badSchema:
      return {_T(""), _T(" was written by a version of the program that this one does not know.")};
    default:
      return {_T(""), _T(" could not be used, for an unknown reason.")};
  }
}

CString sentenceAbout(const Sentence& sentence, const CString& file) {
  if (!file.IsEmpty()) {
    return sentence.before + file + sentence.after;
  }
  const bool first = *sentence.before == 0;
  return sentence.before + CString(first ? _T("The file") : _T("the file")) + sentence.after;
}

// Thrown when memory is used up, so it must be there already.
CMemoryException& theMemoryException() {
  static CMemoryException exception(FALSE);
  return exception;
}

}  // namespace

void CException::Delete() {
  if (m_autoDelete) {
    delete this;
  }
}

BOOL CException::GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext) const {
  return copyText(CString(), text, size, helpContext);
}

int CException::ReportError(UINT type, UINT messageId) {
  TCHAR text[2048];
  if (GetErrorMessage(text, static_cast<UINT>(std::size(text))) == FALSE) {
    return AfxMessageBox(_T("Something failed, for an unknown reason."), type, messageId);
  }
  return AfxMessageBox(text, type, messageId);
}

BOOL CMemoryException::GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext) const {
  return copyText(_T("There is not enough memory."), text, size, helpContext);
}

BOOL CFileException::GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext) const {
  return copyText(sentenceAbout(fileSentence(m_cause), m_strFileName), text, size, helpContext);
}

BOOL CArchiveException::GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext) const {
  return copyText(sentenceAbout(archiveSentence(m_cause), m_strFileName), text, size, helpContext);
}

void AfxThrowMemoryException() {
  throw &theMemoryException();
}

void AfxThrowFileException(int cause, LONG osError, LPCTSTR fileName) {
  throw new CFileException(cause, osError, fileName);
}

void AfxThrowArchiveException(int cause, LPCTSTR archiveName) {
  throw new CArchiveException(cause, archiveName);
}
