#include "platform/portable/File.h"

#include <utility>

#include "platform/LeastPromise.h"
#include "platform/Os.h"
#include "platform/portable/FileNames.h"

namespace {

constexpr std::intptr_t closed = -1;

void throwIf(const Os::Error& error, const CString& path) {
  if (error) {
    AfxThrowFileException(error.cause, error.code, path);
  }
}

CString absolute(const CString& path) {
  CString full;
  return currentOs().fullPath(path, full) ? path : full;
}

// Why a path cannot be opened. MFC does not say which cause a folder has.
int causeToOpen(int cause, const CString& path) {
  Os::Entry there;
  const bool folder = isLeastPromised() && !currentOs().status(path, there) && there.isFolder;
  return folder ? int{CFileException::genericException} : cause;
}

}  // namespace

CFile::CFile() = default;

CFile::CFile(LPCTSTR path, UINT flags) {
  CFileException error;
  if (!CFile::Open(path, flags, &error)) {
    AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
  }
}

CFile::~CFile() {
  CFile::Abort();
}

BOOL CFile::Open(LPCTSTR path, UINT flags, CFileException* error) {
  if (m_handle != closed && isLeastPromised()) {
    endUnpromised("a file is opened that is open already");
  }
  CFile::Abort();
  const CString name = path;
  CString full = absolute(name);  // first, as it may run out of memory: no open file may be left behind
  const Os::Error failure = currentOs().open(name, flags, m_handle);
  if (failure) {
    m_handle = closed;
    if (error != nullptr) {
      error->m_cause = causeToOpen(failure.cause, name);
      error->m_lOsError = failure.code;
      error->m_strFileName = name;
    }
    return FALSE;
  }
  m_path = std::move(full);
  return TRUE;
}

std::intptr_t CFile::openHandle() const {
  if (m_handle == closed) {
    AfxThrowFileException(CFileException::invalidFile, -1, m_path);
  }
  return m_handle;
}

UINT CFile::Read(void* buffer, UINT count) {
  const Os::Handle handle = openHandle();
  spoil(buffer, count);
  auto* bytes = static_cast<BYTE*>(buffer);
  UINT total = 0;
  while (total < count) {
    UINT got = 0;
    throwIf(currentOs().read(handle, bytes + total, count - total, got), m_path);
    if (got == 0) {
      break;
    }
    total += got;
  }
  return total;
}

void CFile::Write(const void* buffer, UINT count) {
  const Os::Handle handle = openHandle();
  const auto* bytes = static_cast<const BYTE*>(buffer);
  UINT total = 0;
  while (total < count) {
    UINT put = 0;
    throwIf(currentOs().write(handle, bytes + total, count - total, put), m_path);
    if (put == 0) {
      AfxThrowFileException(CFileException::diskFull, -1, m_path);
    }
    total += put;
  }
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
  ULONGLONG position = 0;
  throwIf(currentOs().seek(openHandle(), offset, from, position), m_path);
  return position;
}

ULONGLONG CFile::GetPosition() const {
  ULONGLONG position = 0;
  throwIf(currentOs().seek(openHandle(), 0, current, position), m_path);
  return position;
}

ULONGLONG CFile::GetLength() const {
  ULONGLONG length = 0;
  throwIf(currentOs().length(openHandle(), length), m_path);
  return length;
}

void CFile::SetLength(ULONGLONG length) {
  throwIf(currentOs().setLength(openHandle(), length), m_path);
  if (isLeastPromised()) {
    CFile::Seek(0, end);
  }
}

void CFile::Flush() {
  if (m_handle != closed || isLeastPromised()) {
    throwIf(currentOs().flush(openHandle()), m_path);
  }
}

void CFile::Close() {
  if (m_handle == closed && !isLeastPromised()) {
    return;
  }
  const Os::Handle handle = openHandle();
  const CString path = m_path;
  m_handle = closed;
  m_path.Empty();
  throwIf(currentOs().close(handle), path);
}

void CFile::Abort() {
  if (m_handle != closed) {
    currentOs().close(m_handle);
    m_handle = closed;
    m_path.Empty();
  }
}

CString CFile::GetFilePath() const {
  return m_path;
}

CString CFile::GetFileName() const {
  return m_path.Mid(nameStart(m_path));
}

void CFile::Rename(LPCTSTR before, LPCTSTR after) {
  Os::Error error = currentOs().rename(before, after);
  if (error && isLeastPromised()) {
    error.cause = CFileException::genericException;
  }
  throwIf(error, before);
}

void CFile::Remove(LPCTSTR path) {
  throwIf(currentOs().remove(path), path);
}
