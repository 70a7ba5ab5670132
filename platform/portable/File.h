// CFile: one file on disk, unbuffered, in bytes.
//
// Every member that fails throws CFileException*, except Open. Positions and lengths are bytes. Text mode
// does not exist: typeText is accepted and ignored. The sharing flags hold on Windows; elsewhere they are
// ignored.
#pragma once

#include <cstdint>

#include "platform/portable/Exceptions.h"

class CFile : public CObject {
 public:
  enum OpenFlags {
    modeRead = 0x0,
    modeWrite = 0x1,
    modeReadWrite = 0x2,
    shareCompat = 0x0,
    shareExclusive = 0x10,
    shareDenyWrite = 0x20,
    shareDenyRead = 0x30,
    shareDenyNone = 0x40,
    modeNoInherit = 0x80,
    modeCreate = 0x1000,      // makes the file, or empties one that is there
    modeNoTruncate = 0x2000,  // with modeCreate: keeps what is there
    typeText = 0x4000,
    typeBinary = 0x8000
  };
  enum SeekPosition { begin = 0, current = 1, end = 2 };

  CFile();
  CFile(LPCTSTR path, UINT flags);  // throws CFileException*
  ~CFile() override;                // closes; a failure to close is lost

  // FALSE when the file cannot be opened; `error`, where given, then says why and is left alone otherwise.
  // A directory is refused with accessDenied.
  virtual BOOL Open(LPCTSTR path, UINT flags, CFileException* error = nullptr);

  virtual UINT Read(void* buffer, UINT count);  // fewer than `count` bytes only at the end of the file
  virtual void Write(const void* buffer, UINT count);
  virtual ULONGLONG Seek(LONGLONG offset, UINT from);  // returns the new position; before the start: badSeek
  void SeekToBegin() { Seek(0, begin); }
  ULONGLONG SeekToEnd() { return Seek(0, end); }
  virtual ULONGLONG GetPosition() const;
  virtual ULONGLONG GetLength() const;
  virtual void SetLength(ULONGLONG length);
  virtual void Flush();  // hands everything written to the disk; nothing to do on a closed file
  virtual void Close();  // nothing to do on a closed file
  virtual void Abort();  // closes and never throws

  virtual CString GetFilePath() const;  // absolute; empty on a closed file
  virtual CString GetFileName() const;  // name with extension; empty on a closed file

  static void Rename(LPCTSTR before, LPCTSTR after);  // never replaces an existing file
  static void Remove(LPCTSTR path);                   // files only

 private:
  std::intptr_t openHandle() const;

  std::intptr_t m_handle = -1;
  CString m_path;
};
