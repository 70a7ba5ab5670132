// CMemFile: a file in memory. Grown or attached; attached memory without growth is read and written in place.
#pragma once

#include "platform/portable/File.h"

class CMemFile : public CFile {
 public:
  // Memory grows by multiples of `growBytes`.
  explicit CMemFile(UINT growBytes = 1024);
  // As Attach.
  CMemFile(BYTE* buffer, UINT size, UINT growBytes = 0);
  ~CMemFile() override;

  // Without growth the memory's content is the file, `size` bytes long, and it stays the caller's; what would
  // make it longer throws CMemoryException*. With growth the file starts empty, and the memory, which must
  // come from malloc, belongs to the file.
  void Attach(BYTE* buffer, UINT size, UINT growBytes = 0);
  // Closes the file and gives its memory up; memory that the file grew is the caller's to free().
  // The null pointer when there is none.
  BYTE* Detach();

  BOOL Open(LPCTSTR path, UINT flags, CFileException* error = nullptr) override;  // not for files in memory
  UINT Read(void* buffer, UINT count) override;
  void Write(const void* buffer, UINT count) override;  // behind the end: the gap becomes zeros
  ULONGLONG Seek(LONGLONG offset, UINT from) override;
  ULONGLONG GetPosition() const override;
  ULONGLONG GetLength() const override;
  void SetLength(ULONGLONG length) override;
  void Flush() override;
  void Close() override;  // frees memory that is the file's
  void Abort() override;
  CString GetFilePath() const override;
  CString GetFileName() const override;

 private:
  void reserve(ULONGLONG capacity);
  void forget();

  BYTE* m_memory = nullptr;
  ULONGLONG m_capacity = 0;
  ULONGLONG m_length = 0;
  ULONGLONG m_position = 0;
  UINT m_growBytes;
  bool m_owned = true;
};
