// The exceptions of the MFC names. They are thrown and caught as pointers; whoever catches one ends it by
// Delete(), or passes it on by a bare `throw`.
#pragma once

#include "platform/portable/Object.h"
#include "platform/portable/String.h"

class CException : public CObject {
 public:
  CException() = default;
  // FALSE for an object that is not on the heap: Delete() then leaves it alone.
  explicit CException(BOOL autoDelete) : m_autoDelete(autoDelete != FALSE) {}

  void Delete();

  // Writes the text that a user should read, cut to `size` units with its terminator. FALSE: there is no text
  // (the buffer then holds an empty one). `helpContext`, where given, becomes 0.
  virtual BOOL GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext = nullptr) const;

  // Shows that text, or a general one, in one message box. Returns its answer.
  virtual int ReportError(UINT type = MB_OK, UINT messageId = 0);

 private:
  bool m_autoDelete = true;
};

// Memory is used up.
class CMemoryException : public CException {
 public:
  CMemoryException() = default;
  explicit CMemoryException(BOOL autoDelete) : CException(autoDelete) {}
  BOOL GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext = nullptr) const override;
};

// A call on a file failed.
class CFileException : public CException {
 public:
  enum {
    none,
    genericException,
    fileNotFound,
    badPath,
    tooManyOpenFiles,
    accessDenied,
    invalidFile,
    removeCurrentDir,
    directoryFull,
    badSeek,
    hardIO,
    sharingViolation,
    lockViolation,
    diskFull,
    endOfFile
  };

  explicit CFileException(int cause = none, LONG osError = -1, LPCTSTR fileName = nullptr)
      : m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

  BOOL GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext = nullptr) const override;

  int m_cause;            // one of the enumeration
  LONG m_lOsError;        // the system's own number (GetLastError or errno), -1 when there is none
  CString m_strFileName;  // the file, or empty
};

// An archive is not what its reader expects, or was used in the wrong direction.
class CArchiveException : public CException {
 public:
  enum { none, genericException, readOnly, endOfFile, writeOnly, badIndex, badClass, badSchema };

  explicit CArchiveException(int cause = none, LPCTSTR archiveName = nullptr)
      : m_cause(cause), m_strFileName(archiveName) {}

  BOOL GetErrorMessage(LPTSTR text, UINT size, PUINT helpContext = nullptr) const override;

  int m_cause;            // one of the enumeration
  CString m_strFileName;  // the file, or empty
};

[[noreturn]] void AfxThrowMemoryException();
[[noreturn]] void AfxThrowFileException(int cause, LONG osError = -1, LPCTSTR fileName = nullptr);
[[noreturn]] void AfxThrowArchiveException(int cause, LPCTSTR archiveName = nullptr);
