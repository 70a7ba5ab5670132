// Files and the search for them.
#pragma once

#include "documented/Object.h"

class CAtlTransactionManager;
class CTime;
struct CFileStatus;

class CFile : public CObject {
 public:
  enum OpenFlags : UINT {
    modeRead,
    modeWrite,
    modeReadWrite,
    shareExclusive,
    shareDenyWrite,
    shareDenyRead,
    shareDenyNone,
    modeNoInherit,
    modeCreate,
    modeNoTruncate,
    typeText,
    typeBinary,
    typeUnicode,
    osNoBuffer,
    osWriteThrough,
    osRandomAccess,
    osSequentialScan
  };
  enum SeekPosition : UINT { begin, current, end };
  virtual void Abort();
  CFile();
  CFile(CAtlTransactionManager*);
  CFile(HANDLE);
  CFile(LPCTSTR, UINT);
  CFile(LPCTSTR, UINT, CAtlTransactionManager*);
  virtual void Close();
  virtual CFile* Duplicate() const;
  virtual void Flush();
  virtual CString GetFileName() const;
  virtual CString GetFilePath() const;
  virtual CString GetFileTitle() const;
  virtual ULONGLONG GetLength() const;
  virtual ULONGLONG GetPosition() const;
  BOOL GetStatus(CFileStatus&) const;
  static BOOL PASCAL GetStatus(LPCTSTR, CFileStatus&, CAtlTransactionManager* = nullptr);
  static const HANDLE hFileNull;
  virtual void LockRange(ULONGLONG, ULONGLONG);
  HANDLE m_hFile;
  virtual BOOL Open(LPCTSTR, UINT, CFileException* = nullptr);
  virtual BOOL Open(LPCTSTR, UINT, CAtlTransactionManager*, CFileException* = nullptr);
  operator HANDLE() const;
  virtual UINT Read(void*, UINT);
  static void PASCAL Remove(LPCTSTR, CAtlTransactionManager* = nullptr);
  static void PASCAL Rename(LPCTSTR, LPCTSTR, CAtlTransactionManager* = nullptr);
  virtual ULONGLONG Seek(LONGLONG, UINT);
  void SeekToBegin();
  ULONGLONG SeekToEnd();
  virtual void SetFilePath(LPCTSTR);
  virtual void SetLength(ULONGLONG);
  static void PASCAL SetStatus(LPCTSTR, const CFileStatus&, CAtlTransactionManager* = nullptr);
  virtual void UnlockRange(ULONGLONG, ULONGLONG);
  virtual void Write(const void*, UINT);

 protected:
  CAtlTransactionManager* m_pTM;
};

class CMemFile : public CFile {
 public:
  void Attach(BYTE*, UINT, UINT = 0);
  CMemFile(UINT = 1024);
  CMemFile(BYTE*, UINT, UINT = 0);
  BYTE* Detach();
  virtual UINT GetBufferPtr(UINT, UINT = 0, void** = nullptr, void** = nullptr);

 protected:
  virtual BYTE* Alloc(SIZE_T);
  virtual void Free(BYTE*);
  virtual void GrowFile(SIZE_T);
  virtual BYTE* Memcpy(BYTE*, const BYTE*, SIZE_T);
  virtual BYTE* Realloc(BYTE*, SIZE_T);
};

class CFileFind : public CObject {
 public:
  CFileFind();
  CFileFind(CAtlTransactionManager*);
  void Close();
  virtual BOOL FindFile(LPCTSTR = nullptr, DWORD = 0);
  virtual BOOL FindNextFile();
  virtual BOOL GetCreationTime(FILETIME*) const;
  virtual BOOL GetCreationTime(CTime&) const;
  virtual CString GetFileName() const;
  virtual CString GetFilePath() const;
  virtual CString GetFileTitle() const;
  virtual CString GetFileURL() const;
  virtual BOOL GetLastAccessTime(CTime&) const;
  virtual BOOL GetLastAccessTime(FILETIME*) const;
  virtual BOOL GetLastWriteTime(FILETIME*) const;
  virtual BOOL GetLastWriteTime(CTime&) const;
  ULONGLONG GetLength() const;
  virtual CString GetRoot() const;
  BOOL IsArchived() const;
  BOOL IsCompressed() const;
  BOOL IsDirectory() const;
  virtual BOOL IsDots() const;
  BOOL IsHidden() const;
  BOOL IsNormal() const;
  BOOL IsReadOnly() const;
  BOOL IsSystem() const;
  BOOL IsTemporary() const;
  virtual BOOL MatchesMask(DWORD) const;

 protected:
  virtual void CloseContext();
  CAtlTransactionManager* m_pTM;
};
