#include "import/AnsiLine.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr char beyondAscii = '\x1A';  // neither blank nor part of a number or a word that is looked for

struct Traits {
  bool isAscii;
  bool hasZero;
  bool hasMarks;
};

constexpr unsigned char bitOf(bool condition) {
  return static_cast<unsigned char>(condition);
}

// One look at every byte, without an early exit so that the compiler can take many bytes at once.
Traits traitsOf(const char* bytes, int length) {
  unsigned char all = 0;
  unsigned char zeros = 0;
  unsigned char marks = 0;
  for (int i = 0; i < length; ++i) {
    const char c = bytes[i];
    all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
    zeros = static_cast<unsigned char>(zeros | bitOf(c == '\0'));
    marks = static_cast<unsigned char>(marks | bitOf(c == '(') | bitOf(c == '/') | bitOf(c == '{') |
                                       bitOf(c == '}'));
  }
  return {all < 0x80, zeros != 0, marks != 0};
}

}  // namespace

AnsiLine::AnsiLine(const CString& text) {
  setUnits(text);
}

void AnsiLine::assign(const char* bytes, int length) {
  Traits traits = traitsOf(bytes, length);
  if (traits.hasZero) {
    length = static_cast<int>(std::strlen(bytes));
    traits = traitsOf(bytes, length);
  }
  if (!traits.isAscii) {
    setUnits(CString(bytes, length));
    return;
  }
  assignPlain(bytes, length);
  m_hasMarks = traits.hasMarks;
}

void AnsiLine::assignPlain(const char* bytes, int length) {
  m_begin = bytes;
  m_end = bytes + length;
  m_hasMarks = false;
  m_isAscii = true;
}

bool AnsiLine::isPlain(const char* bytes, int length) {
  const Traits traits = traitsOf(bytes, length);
  return traits.isAscii && !traits.hasZero && !traits.hasMarks;
}

void AnsiLine::setUnits(const CString& text) {
  m_wide = text;
  m_placeholders.clear();
  for (int i = 0; i < text.GetLength(); ++i) {
    const TCHAR unit = text.GetString()[i];
    m_placeholders += unit < 0x80 ? static_cast<char>(unit) : beyondAscii;
  }
  m_begin = m_placeholders.c_str();
  m_end = m_begin + m_placeholders.size();
  m_hasMarks = traitsOf(m_begin, text.GetLength()).hasMarks;
  m_isAscii = false;
}

bool AnsiLine::isNamed(const char* words) const {
  const char* c = m_begin;
  for (; *words != '\0' && lowerAscii(*c) == lowerAscii(*words); ++c) {
    ++words;
  }
  return *words == '\0' && c == m_end;
}

bool AnsiLine::contains(const char* words) const {
  return std::strstr(m_begin, words) != nullptr;
}

CString AnsiLine::text() const {
  CString whole;
  copyPart(m_begin, m_end, whole);
  return whole;
}

void AnsiLine::copyPart(const char* first, const char* last, CString& part) const {
  const auto length = static_cast<int>(last - first);
  if (!m_isAscii) {
    part = m_wide.Mid(static_cast<int>(first - m_begin), length);
    return;
  }
  std::copy(first, last, part.GetBuffer(length));
  part.ReleaseBuffer(length);
}
