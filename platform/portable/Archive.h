// CArchive: a buffered stream of little-endian binary values over a CFile.
//
// BYTE and char take 1 byte; WORD and short 2; int, UINT, LONG, DWORD and float 4; LONGLONG, ULONGLONG and
// double 8. Floating values are moved bit by bit, so NaN payloads survive. bool and wide characters have no
// documented width and are refused by the compiler.
//
// Text is a length and then its units. The length is a byte below FF; or FF and a 16-bit value below FFFE; or
// FF FFFF and a 32-bit value. A leading FF FFFE says that the units are UTF-16 and restarts the length;
// without it they are 8-bit text. Text is written as UTF-16; both forms are read.
//
// Reading through >> throws CArchiveException* endOfFile at the end of the file, readOnly when a loading
// archive is written, writeOnly when a storing one is read, and whatever the file throws.
#pragma once

#include <bit>
#include <cstring>
#include <memory>

#include "platform/portable/File.h"

class CArchive {
 public:
  enum Mode { store = 0, load = 1, bNoFlushOnDelete = 2 };

  // `file` must be open, outlive the archive and be used by it alone. `buffer`, where given, has `bufferSize`
  // bytes, at least 128, and stays the caller's. Without one, or with a smaller one, the archive brings its
  // own, of at least 128 bytes; the default size leaves it to the archive, which takes 64 KiB.
  CArchive(CFile* file, UINT mode, int bufferSize = 4096, void* buffer = nullptr);
  // Closes, which may throw, unless Close or Abort was called or bNoFlushOnDelete was given. While an
  // exception is on its way it aborts instead: half a record must not be written, and a second exception
  // would end the program.
  ~CArchive() noexcept(false);  // NOLINT(bugprone-exception-escape): as said
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;

  BOOL IsLoading() const { return m_loading ? TRUE : FALSE; }
  BOOL IsStoring() const { return m_loading ? FALSE : TRUE; }
  CFile* GetFile() const { return m_file; }

  UINT Read(void* buffer, UINT count);  // returns fewer bytes only at the end of the file; never endOfFile
  void Write(const void* buffer, UINT count);

  // Storing: hands what is buffered to the file. Loading: sets the file to the first byte not yet read.
  void Flush();
  void Close();  // Flush, then the archive is done with its file, which stays open
  void Abort();  // done with the file without writing anything more; never throws

  // The text's units and nothing else: no length, no terminator.
  void WriteString(LPCTSTR text);
  // The text of one line, UTF-16 units up to a line feed, a return before which is dropped with it.
  // FALSE: the end of the file came before anything was read.
  BOOL ReadString(CString& text);

  CArchive& operator<<(BYTE value) {
    if (m_writeAt == m_writeEnd) {
      makeRoom();
    }
    *m_writeAt++ = value;
    return *this;
  }
  CArchive& operator<<(char value) { return put(value); }
  CArchive& operator<<(short value) { return put(value); }
  CArchive& operator<<(WORD value) { return put(value); }
  CArchive& operator<<(int value) { return put(value); }
  CArchive& operator<<(unsigned value) { return put(value); }
#ifdef _WIN32
  CArchive& operator<<(LONG value) {
    return put(value);
  }
  CArchive& operator<<(DWORD value) {
    return put(value);
  }
#endif
  CArchive& operator<<(float value) {
    return put(value);
  }
  CArchive& operator<<(double value) {
    return put(value);
  }
  CArchive& operator<<(LONGLONG value) {
    return put(value);
  }
  CArchive& operator<<(ULONGLONG value) {
    return put(value);
  }
  CArchive& operator<<(const CString& text);
  CArchive& operator<<(bool) = delete;
  CArchive& operator<<(wchar_t) = delete;
  CArchive& operator<<(char16_t) = delete;
  CArchive& operator<<(const void*) = delete;

  CArchive& operator>>(BYTE& value) {
    return get(value);
  }
  CArchive& operator>>(char& value) {
    return get(value);
  }
  CArchive& operator>>(short& value) {
    return get(value);
  }
  CArchive& operator>>(WORD& value) {
    return get(value);
  }
  CArchive& operator>>(int& value) {
    return get(value);
  }
  CArchive& operator>>(unsigned& value) {
    return get(value);
  }
#ifdef _WIN32
  CArchive& operator>>(LONG& value) {
    return get(value);
  }
  CArchive& operator>>(DWORD& value) {
    return get(value);
  }
#endif
  CArchive& operator>>(float& value) {
    return get(value);
  }
  CArchive& operator>>(double& value) {
    return get(value);
  }
  CArchive& operator>>(LONGLONG& value) {
    return get(value);
  }
  CArchive& operator>>(ULONGLONG& value) {
    return get(value);
  }
  CArchive& operator>>(CString& text);

 private:
  static_assert(std::endian::native == std::endian::little, "values are moved as they lie in memory");

  static constexpr std::size_t largestValue = 8;  // bytes

  template <class Value>
  CArchive& put(Value value) {
    if (m_writeEnd - m_writeAt >= static_cast<std::ptrdiff_t>(sizeof value)) {
      std::memcpy(m_writeAt, &value, sizeof value);
      m_writeAt += sizeof value;
    } else {
      Write(&value, sizeof value);
    }
    return *this;
  }
  template <class Value>
  CArchive& get(Value& value) {
    if (m_readEnd - m_readAt >= static_cast<std::ptrdiff_t>(sizeof value)) {
      std::memcpy(&value, m_readAt, sizeof value);
      m_readAt += sizeof value;
    } else {
      static_assert(sizeof value <= largestValue);
      getAcross(&value, sizeof value);
    }
    return *this;
  }
  void getAcross(void* value, UINT count);  // a value that the buffer does not hold whole
  void makeRoom();                          // at least one byte to write, or an exception
  bool refill();                            // false at the end of the file
  void readAll(void* buffer, UINT count);
  void mustLoad() const;
  void mustStore() const;
  void detach() noexcept;
  CString fileName() const;
  bool getBufferedText(CString& text);
  void getText(CString& text);
  ULONGLONG readTextLength(bool& wide);
  void writeTextLength(DWORD length);

  CFile* m_file;
  bool m_loading;
  bool m_closeOnDelete;
  int m_exceptionsAtStart;
  std::unique_ptr<BYTE[]> m_own;
  BYTE* m_buffer;
  UINT m_size;
  // Loading: what is buffered and not yet read. Null when storing.
  const BYTE* m_readAt = nullptr;
  const BYTE* m_readEnd = nullptr;
  // Storing: the free rest of the buffer. Null when loading.
  BYTE* m_writeAt = nullptr;
  BYTE* m_writeEnd = nullptr;
};
