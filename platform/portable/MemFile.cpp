#include "platform/portable/MemFile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "platform/LeastPromise.h"

namespace {

constexpr auto lastPosition = static_cast<ULONGLONG>((std::numeric_limits<LONGLONG>::max)());

}  // namespace

CMemFile::CMemFile(UINT growBytes) : m_growBytes(growBytes) {}

CMemFile::CMemFile(BYTE* buffer, UINT size, UINT growBytes) : m_growBytes(growBytes) {
  Attach(buffer, size, growBytes);
}

CMemFile::~CMemFile() {
  forget();
}

void CMemFile::Attach(BYTE* buffer, UINT size, UINT growBytes) {
  forget();
  m_memory = buffer;
  m_capacity = size;
  m_growBytes = growBytes;
  m_owned = growBytes > 0;
  m_length = m_owned ? 0 : size;
}

BYTE* CMemFile::Detach() {
  BYTE* memory = m_memory;
  m_memory = nullptr;
  forget();
  return memory;
}

void CMemFile::forget() {
  if (m_owned) {
    std::free(m_memory);
  }
  m_memory = nullptr;
  m_owned = true;
  m_capacity = 0;
  m_length = 0;
  m_position = 0;
}

void CMemFile::reserve(ULONGLONG capacity) {
  if (capacity <= m_capacity) {
    return;
  }
  // Growth in steps only would copy the memory over and over; from some size on it doubles.
  const ULONGLONG wanted = (std::max)(capacity, 2 * m_capacity);
  const ULONGLONG rest = m_growBytes == 0 ? 0 : (m_growBytes - wanted % m_growBytes) % m_growBytes;
  void* larger =
      m_growBytes == 0 || wanted > lastPosition / 4 ? nullptr : std::realloc(m_memory, wanted + rest);
  if (larger == nullptr) {
    AfxThrowMemoryException();
  }
  m_memory = static_cast<BYTE*>(larger);
  m_capacity = wanted + rest;
}

BOOL CMemFile::Open(LPCTSTR path, UINT /*flags*/, CFileException* error) {
  if (error != nullptr) {
    error->m_cause = CFileException::invalidFile;
    error->m_strFileName = path;
  }
  return FALSE;
}

UINT CMemFile::Read(void* buffer, UINT count) {
  spoil(buffer, count);
  if (m_position >= m_length) {
    return 0;
  }
  const UINT got = static_cast<UINT>((std::min)(static_cast<ULONGLONG>(count), m_length - m_position));
  if (got != 0) {
    std::memcpy(buffer, m_memory + m_position, got);
    m_position += got;
  }
  return got;
}

void CMemFile::Write(const void* buffer, UINT count) {
  if (count == 0) {
    return;
  }
  const ULONGLONG after = m_position + count;
  if (after > m_length) {
    SetLength(after);
  }
  std::memcpy(m_memory + m_position, buffer, count);
  m_position = after;
}

ULONGLONG CMemFile::Seek(LONGLONG offset, UINT from) {
  const ULONGLONG start = from == begin ? 0 : from == current ? m_position : m_length;
  const ULONGLONG back = offset < 0 ? 0 - static_cast<ULONGLONG>(offset) : 0;
  if (from > end || back > start || (offset > 0 && static_cast<ULONGLONG>(offset) > lastPosition - start)) {
    AfxThrowFileException(CFileException::badSeek);
  }
  m_position = start + static_cast<ULONGLONG>(offset);
  return m_position;
}

ULONGLONG CMemFile::GetPosition() const {
  return m_position;
}

ULONGLONG CMemFile::GetLength() const {
  return m_length;
}

void CMemFile::SetLength(ULONGLONG length) {
  reserve(length);
  if (length > m_length) {
    std::memset(m_memory + m_length, 0, length - m_length);
    spoil(m_memory + m_length, length - m_length);
  }
  m_length = length;
}

void CMemFile::Flush() {}

void CMemFile::Close() {
  forget();
}

void CMemFile::Abort() {
  forget();
}

CString CMemFile::GetFilePath() const {
  return CString();
}

CString CMemFile::GetFileName() const {
  return CString();
}
