#include "import/AnsiLineReader.h"

#include <algorithm>
#include <cstring>

// Reads more bytes behind those not yet given out; false when the file has no more.
bool AnsiLineReader::refill() {
  if (m_next != m_block) {
    m_end = std::copy(m_next, m_end, m_block);
    m_next = m_block;
  }
  const UINT read = m_archive.Read(m_end, UINT{block});
  m_end += read;
  m_isPlain = AnsiLine::isPlain(m_block, static_cast<int>(m_end - m_block));
  return read != 0;
}

// The first LF or CR, or m_end.
char* AnsiLineReader::findLineEnd(char* from) const {
  auto* feed = static_cast<char*>(std::memchr(from, '\n', static_cast<std::size_t>(m_end - from)));
  char* const end = feed != nullptr ? feed : m_end;
  auto* carriage = static_cast<char*>(std::memchr(from, '\r', static_cast<std::size_t>(end - from)));
  return carriage != nullptr ? carriage : end;
}

// Skips line ends; false when the file ends with them.
bool AnsiLineReader::findLineStart() {
  do {
    while (m_next != m_end && (*m_next == '\n' || *m_next == '\r')) {
      ++m_next;
    }
  } while (m_next == m_end && refill());
  return m_next != m_end;
}

bool AnsiLineReader::next(AnsiLine& line) {
  bool isClosed = findLineStart();
  char* lineEnd = findLineEnd(m_next);
  while (isClosed && lineEnd == m_end && lineEnd - m_next < AnsiLine::capacity) {
    const auto searched = m_end - m_next;
    isClosed = refill();
    lineEnd = findLineEnd(m_next + searched);
  }
  if (lineEnd - m_next >= AnsiLine::capacity) {
    std::copy_n(m_next, AnsiLine::capacity, m_piece);
    m_next += AnsiLine::capacity;
    line.assign(m_piece, AnsiLine::capacity);
    return true;
  }
  char* const start = m_next;
  m_next = isClosed ? lineEnd + 1 : lineEnd;
  *lineEnd = '\0';
  const auto length = static_cast<int>(lineEnd - start);
  if (m_isPlain) {
    line.assignPlain(start, length);
  } else {
    line.assign(start, length);
  }
  return isClosed;
}
