#include "platform/portable/Archive.h"

#include <algorithm>
#include <climits>
#include <exception>
#include <new>
#include <vector>

#include "platform/LeastPromise.h"

namespace {

constexpr int smallestBuffer = 128;

// What an archive takes where the default is asked for: a call of the system costs as much as moving a few
// thousand bytes.
constexpr int defaultBuffer = 65536;

constexpr int askedByDefault = 4096;

int ownSize(int asked) {
  const bool larger = asked == askedByDefault && !isLeastPromised();
  return larger ? defaultBuffer : (std::max)(asked, smallestBuffer);
}

// How many units of a text are read at a time: a length that lies costs no more memory than this beyond what
// the file holds. The file is not asked how much that is, for not every file can tell.
constexpr ULONGLONG piece = 32768;

// How many units a text may claim where the least is promised: memory for all of them is taken at once then,
// and is not there for more.
constexpr ULONGLONG takenAtOnce = 1U << 24U;

// The marks in front of a text's length.
constexpr BYTE longForm = 0xFF;
constexpr WORD wideMark = 0xFFFE;
constexpr WORD longerForm = 0xFFFF;

// The long form's byte, the wide mark and a length of one byte.
constexpr std::size_t shortHead = 4;

}  // namespace

CArchive::CArchive(CFile* file, UINT mode, int bufferSize, void* buffer)
    : m_file(file),
      m_loading((mode & load) != 0),
      m_closeOnDelete((mode & bNoFlushOnDelete) == 0),
      m_exceptionsAtStart(std::uncaught_exceptions()),
      m_buffer(static_cast<BYTE*>(buffer)),
      m_size(static_cast<UINT>(bufferSize)) {
  if (buffer == nullptr || bufferSize < smallestBuffer) {
    m_size = static_cast<UINT>(ownSize(bufferSize));
    m_own = std::make_unique_for_overwrite<BYTE[]>(m_size);
    m_buffer = m_own.get();
  }
  if (m_loading) {
    m_readAt = m_readEnd = m_buffer;
  } else {
    m_writeAt = m_buffer;
    m_writeEnd = m_buffer + m_size;
  }
}

CArchive::~CArchive() noexcept(false) {  // NOLINT(bugprone-exception-escape): closing may throw
  const bool unwinds = std::uncaught_exceptions() > m_exceptionsAtStart;
  if (m_file == nullptr || !m_closeOnDelete || (unwinds && !isLeastPromised())) {
    return;
  }
  Close();  // where the least is promised, also while an exception is on its way: half a record is written
}

CString CArchive::fileName() const {
  return m_file == nullptr ? CString() : m_file->GetFilePath();
}

void CArchive::mustLoad() const {
  if (!m_loading || m_file == nullptr) {
    AfxThrowArchiveException(m_loading ? CArchiveException::genericException : CArchiveException::writeOnly,
                             fileName());
  }
}

void CArchive::mustStore() const {
  if (m_loading || m_file == nullptr) {
    AfxThrowArchiveException(m_loading ? CArchiveException::readOnly : CArchiveException::genericException,
                             fileName());
  }
}

void CArchive::detach() noexcept {
  m_file = nullptr;
  m_readAt = m_readEnd = nullptr;
  m_writeAt = m_writeEnd = nullptr;
}

bool CArchive::refill() {
  mustLoad();
  m_readAt = m_readEnd = m_buffer;
  m_readEnd += m_file->Read(m_buffer, m_size);
  return m_readAt != m_readEnd;
}

void CArchive::makeRoom() {
  mustStore();
  Flush();
}

UINT CArchive::Read(void* buffer, UINT count) {
  mustLoad();
  spoil(buffer, count);
  auto* bytes = static_cast<BYTE*>(buffer);
  UINT total = 0;
  while (total < count) {
    if (m_readAt == m_readEnd && count - total >= m_size) {
      const UINT got = m_file->Read(bytes + total, count - total);
      if (got == 0) {
        break;
      }
      total += got;
      continue;
    }
    if (m_readAt == m_readEnd && !refill()) {
      break;
    }
    const UINT part = (std::min)(count - total, static_cast<UINT>(m_readEnd - m_readAt));
    std::memcpy(bytes + total, m_readAt, part);
    m_readAt += part;
    total += part;
  }
  return total;
}

void CArchive::readAll(void* buffer, UINT count) {
  if (Read(buffer, count) != count) {
    AfxThrowArchiveException(CArchiveException::endOfFile, fileName());
  }
}

void CArchive::getAcross(void* value, UINT count) {
  BYTE whole[largestValue] = {};  // a fault between two blocks must not leave half a value
  spoil(value, count);
  readAll(whole, count);
  std::memcpy(value, whole, count);
}

void CArchive::Write(const void* buffer, UINT count) {
  mustStore();
  if (count == 0) {
    return;
  }
  if (count > static_cast<std::size_t>(m_writeEnd - m_writeAt)) {
    Flush();
  }
  if (count > m_size) {
    m_file->Write(buffer, count);
    return;
  }
  std::memcpy(m_writeAt, buffer, count);
  m_writeAt += count;
}

void CArchive::Flush() {
  if (m_file == nullptr) {
    return;
  }
  if (m_loading) {
    if (m_readAt != m_readEnd && !isLeastPromised()) {
      m_file->Seek(m_readAt - m_readEnd, CFile::current);
      m_readAt = m_readEnd = m_buffer;
    }
    return;
  }
  // What could not be written is not kept for a second try: part of it may stand in the file already.
  const UINT count = static_cast<UINT>(m_writeAt - m_buffer);
  m_writeAt = m_buffer;
  if (count != 0) {
    m_file->Write(m_buffer, count);
  }
}

void CArchive::Close() {
  try {
    Flush();
  } catch (...) {
    detach();
    throw;
  }
  detach();
}

void CArchive::Abort() {
  detach();
}

void CArchive::WriteString(LPCTSTR text) {
  const CString units = text;
  Write(units.GetString(), static_cast<UINT>(units.GetLength()) * UINT{sizeof(TCHAR)});
}

BOOL CArchive::ReadString(CString& text) {
  text.Empty();
  TCHAR unit = 0;
  bool any = false;
  while (Read(&unit, sizeof unit) == sizeof unit) {
    any = true;
    if (unit == _T('\n')) {
      break;
    }
    text += unit;
  }
  if (unit == _T('\n') && text.GetLength() > 0 && text[text.GetLength() - 1] == _T('\r')) {
    text.Delete(text.GetLength() - 1);
  }
  return any ? TRUE : FALSE;
}

void CArchive::writeTextLength(DWORD length) {
  if (length < longForm) {
    *this << static_cast<BYTE>(length);
    return;
  }
  *this << longForm;
  if (length < wideMark) {
    *this << static_cast<WORD>(length);
  } else {
    *this << longerForm << length;
  }
}

CArchive& CArchive::operator<<(const CString& text) {
  *this << longForm << wideMark;
  writeTextLength(static_cast<DWORD>(text.GetLength()));
  // One unit is two bytes, so the longest text of all has more bytes than a UINT counts to.
  const auto* bytes = reinterpret_cast<const BYTE*>(text.GetString());
  std::size_t left = static_cast<std::size_t>(text.GetLength()) * sizeof(TCHAR);
  while (left > 0) {
    const UINT part = static_cast<UINT>((std::min)(left, std::size_t{1} << 30));
    Write(bytes, part);
    bytes += part;
    left -= part;
  }
  return *this;
}

ULONGLONG CArchive::readTextLength(bool& wide) {
  BYTE small = 0;
  WORD medium = 0;
  DWORD large = 0;
  *this >> small;
  if (small < longForm) {
    return small;
  }
  *this >> medium;
  if (medium == wideMark && !wide) {
    wide = true;
    return readTextLength(wide);
  }
  if (medium == wideMark) {  // a second mark: no writer makes one
    AfxThrowArchiveException(CArchiveException::genericException, fileName());
  }
  if (medium < wideMark) {
    return medium;
  }
  *this >> large;
  return large;
}

// A short text as it is written, all of it in the buffer: nearly every text of a file.
bool CArchive::getBufferedText(CString& text) {
  const auto buffered = static_cast<std::size_t>(m_readEnd - m_readAt);
  if (buffered < shortHead || m_readAt[0] != longForm || m_readAt[1] != BYTE{wideMark & 0xFF} ||
      m_readAt[2] != BYTE{wideMark >> 8} || m_readAt[3] == longForm) {
    return false;
  }
  const int length = m_readAt[3];
  const std::size_t bytes = static_cast<std::size_t>(length) * sizeof(TCHAR);
  if (buffered < shortHead + bytes) {
    return false;
  }
  if (length == 0) {
    text.Empty();
  } else {
    TCHAR units[longForm];
    std::memcpy(units, m_readAt + shortHead, bytes);
    text = CString(units, length);  // takes just the memory that it needs
  }
  m_readAt += shortHead + bytes;
  return true;
}

CArchive& CArchive::operator>>(CString& text) {
  try {
    if (isLeastPromised()) {
      text = _T("???");  // what it holds after a failure
    }
    if (!getBufferedText(text)) {
      getText(text);
    }
  } catch (const std::bad_alloc&) {
    AfxThrowMemoryException();
  }
  return *this;
}

void CArchive::getText(CString& text) {
  bool wide = false;
  const ULONGLONG length = readTextLength(wide);
  if (isLeastPromised() && length > takenAtOnce) {
    AfxThrowMemoryException();
  }
  CString whole;
  std::vector<char> narrow;
  for (ULONGLONG done = 0; done < length;) {
    const auto part = static_cast<UINT>((std::min)(piece, length - done));
    if (done + part > INT_MAX) {
      AfxThrowMemoryException();
    }
    if (wide) {
      const int before = whole.GetLength();
      LPTSTR units = whole.GetBufferSetLength(before + static_cast<int>(part));
      readAll(units + before, part * UINT{sizeof(TCHAR)});
    } else {
      narrow.resize(static_cast<std::size_t>(done) + part);
      readAll(narrow.data() + done, part);
    }
    done += part;
  }
  // 8-bit text is made wide in one go: a code page may use two bytes for one character.
  text = wide ? std::move(whole) : CString(narrow.data(), static_cast<int>(narrow.size()));
}
