// CObject and the exceptions.
#pragma once

#include "documented/Text.h"

class CArchive;
class CDumpContext;
struct CRuntimeClass;

// Its destructor is virtual, its copies are not for use.
class CObject {
 public:
  virtual ~CObject();
  virtual void AssertValid() const;
  virtual void Dump(CDumpContext&) const;
  virtual CRuntimeClass* GetRuntimeClass() const;
  BOOL IsKindOf(const CRuntimeClass*) const;
  BOOL IsSerializable() const;
  void PASCAL operator delete(void*);
  void PASCAL operator delete(void*, void*);
  void PASCAL operator delete(void*, LPCSTR, int);
  void* PASCAL operator new(size_t);
  void* PASCAL operator new(size_t, void*);
  void* PASCAL operator new(size_t, LPCSTR, int);
  virtual void Serialize(CArchive&);
  CObject(const CObject&) = delete;
  CObject& operator=(const CObject&) = delete;

 protected:
  CObject();
};

#define DECLARE_DYNAMIC(class_name) \
 public:                            \
  CRuntimeClass* GetRuntimeClass() const override;

class CException : public CObject {
 public:
  explicit CException(BOOL);
  void Delete();
  virtual int ReportError(UINT = MB_OK, UINT = 0);
};

class CSimpleException : public CException {
 public:
  CSimpleException();
  explicit CSimpleException(BOOL);
};

class CMemoryException : public CSimpleException {
 public:
  CMemoryException();
};

class CUserException : public CSimpleException {};

class CArchiveException : public CException {
 public:
  enum { none, genericException, readOnly, endOfFile, writeOnly, badIndex, badClass, badSchema };
  CArchiveException(int = CArchiveException::none, LPCTSTR = nullptr);
  int m_cause;
  CString m_strFileName;
};

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
  CFileException(int = CFileException::none, LONG = -1, LPCTSTR = nullptr);
  static int PASCAL ErrnoToException(int);
  virtual BOOL GetErrorMessage(LPTSTR, UINT, PUINT = nullptr) const;
  int m_cause;
  LONG m_lOsError;
  CString m_strFileName;
  static int PASCAL OsErrorToException(LONG);
  static void PASCAL ThrowErrno(int, LPCTSTR = nullptr);
  static void PASCAL ThrowOsError(LONG, LPCTSTR = nullptr);
};

void AfxThrowArchiveException(int, LPCTSTR);
void AfxThrowFileException(int, LONG = -1, LPCTSTR = nullptr);
void AfxThrowMemoryException();
void AfxThrowNotSupportedException();
void AfxThrowResourceException();
void AfxThrowUserException();
void AfxAbort();
