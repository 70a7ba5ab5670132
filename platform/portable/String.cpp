#include "platform/portable/String.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "platform/LeastPromise.h"
#include "platform/portable/AnsiText.h"

namespace {

constexpr TCHAR whiteSpace[] = _T(" \t\n\v\f\r");

// Which letters beyond A to Z have two cases is the locale's affair: here, those of Latin-1 may.
bool hasLatinCase(TCHAR unit) {
  const unsigned small = unsigned{unit} | 0x20U;
  return isLeastPromised() && small >= 0xE0U && small <= 0xFEU && small != 0xF7U;
}

TCHAR lowered(TCHAR unit) {
  if (hasLatinCase(unit)) {
    return static_cast<TCHAR>(unsigned{unit} | 0x20U);
  }
  return unit >= _T('A') && unit <= _T('Z') ? static_cast<TCHAR>(unit - _T('A') + _T('a')) : unit;
}

TCHAR raised(TCHAR unit) {
  if (hasLatinCase(unit)) {
    return static_cast<TCHAR>(unsigned{unit} & ~0x20U);
  }
  return unit >= _T('a') && unit <= _T('z') ? static_cast<TCHAR>(unit - _T('a') + _T('A')) : unit;
}

LPCTSTR orEmpty(LPCTSTR text) {
  return text == nullptr ? _T("") : text;
}

}  // namespace

std::basic_string<TCHAR> widen(const char* text, std::size_t length) {
  const bool ascii = std::all_of(text, text + length, [](char c) { return static_cast<BYTE>(c) < 0x80; });
  return ascii ? std::basic_string<TCHAR>(text, text + length) : widenAnsi(text, length);
}

// Made from its units at once, it takes no more memory than they need.
CString::CString(LPCTSTR text, int length)
    : m_text(text == nullptr ? _T("") : text,
             text == nullptr || length <= 0 ? 0 : static_cast<std::size_t>(length)) {}

CString::CString(LPCSTR text) {
  if (text != nullptr) {
    m_text = widen(text, std::strlen(text));
  }
}

CString::CString(LPCSTR text, int length) {
  if (text != nullptr && length > 0) {
    m_text = widen(text, static_cast<std::size_t>(length));
  }
}

CString::CString(TCHAR unit, int repeat) {
  if (repeat > 0) {
    m_text.assign(static_cast<std::size_t>(repeat), unit);
  }
}

CString& CString::operator=(LPCSTR text) {
  *this = CString(text);
  return *this;
}

CString& CString::operator+=(LPCSTR text) {
  *this += CString(text);
  return *this;
}

void CString::throwOutOfRange() {
  if (isLeastPromised()) {
    endUnpromised("an index outside a text");
  }
  throw std::out_of_range("CString: index outside the text");
}

std::size_t CString::clampedIndex(int index) const noexcept {
  return static_cast<std::size_t>(std::clamp(index, 0, GetLength()));
}

void CString::SetAt(int index, TCHAR unit) {
  if (index < 0 || index >= GetLength()) {
    throwOutOfRange();
  }
  m_text[static_cast<std::size_t>(index)] = unit;
}

CString CString::Left(int count) const {
  CString part;
  part.m_text.assign(m_text, 0, clampedIndex(count));
  return part;
}

CString CString::Right(int count) const {
  CString part;
  part.m_text.assign(m_text, m_text.size() - clampedIndex(count));
  return part;
}

CString CString::Mid(int first) const {
  CString part;
  part.m_text.assign(m_text, clampedIndex(first));
  return part;
}

CString CString::Mid(int first, int count) const {
  CString part;
  part.m_text.assign(m_text, clampedIndex(first), static_cast<std::size_t>((std::max)(count, 0)));
  return part;
}

int CString::FindOneOf(LPCTSTR units) const noexcept {
  return found(m_text.find_first_of(orEmpty(units)));
}

int CString::Delete(int index, int count) {
  m_text.erase(clampedIndex(index), static_cast<std::size_t>((std::max)(count, 0)));
  return GetLength();
}

int CString::Insert(int index, LPCTSTR text) {
  m_text.insert(clampedIndex(index), orEmpty(text));
  return GetLength();
}

int CString::Insert(int index, TCHAR unit) {
  m_text.insert(clampedIndex(index), 1, unit);
  return GetLength();
}

int CString::Replace(TCHAR before, TCHAR after) {
  int replaced = 0;
  for (TCHAR& unit : m_text) {
    if (unit == before && before != after) {
      unit = after;
      ++replaced;
    }
  }
  return replaced;
}

int CString::Replace(LPCTSTR before, LPCTSTR after) {
  const Text searched = orEmpty(before);
  const Text replacement = orEmpty(after);
  if (searched.empty()) {
    return 0;
  }
  Text result;
  int replaced = 0;
  std::size_t start = 0;
  for (std::size_t at = m_text.find(searched); at != Text::npos; at = m_text.find(searched, start)) {
    result.append(m_text, start, at - start).append(replacement);
    start = at + searched.size();
    ++replaced;
  }
  result.append(m_text, start);
  m_text.swap(result);
  return replaced;
}

int CString::Remove(TCHAR unit) {
  return static_cast<int>(std::erase(m_text, unit));
}

int CString::Compare(LPCTSTR other) const noexcept {
  return m_text.compare(orEmpty(other));
}

int CString::CompareNoCase(LPCTSTR other) const noexcept {
  LPCTSTR left = GetString();
  LPCTSTR right = orEmpty(other);
  while (*left != 0 && lowered(*left) == lowered(*right)) {
    ++left;
    ++right;
  }
  return static_cast<int>(lowered(*left)) - static_cast<int>(lowered(*right));
}

CString& CString::MakeLower() {
  std::ranges::transform(m_text, m_text.begin(), lowered);
  return *this;
}

CString& CString::MakeUpper() {
  std::ranges::transform(m_text, m_text.begin(), raised);
  return *this;
}

CString& CString::Trim() {
  return Trim(whiteSpace);
}
CString& CString::Trim(TCHAR unit) {
  return TrimRight(unit).TrimLeft(unit);
}
CString& CString::Trim(LPCTSTR units) {
  return TrimRight(units).TrimLeft(units);
}

CString& CString::TrimLeft() {
  return TrimLeft(whiteSpace);
}
CString& CString::TrimLeft(TCHAR unit) {
  m_text.erase(0, m_text.find_first_not_of(unit));
  return *this;
}
CString& CString::TrimLeft(LPCTSTR units) {
  m_text.erase(0, m_text.find_first_not_of(orEmpty(units)));
  return *this;
}

CString& CString::TrimRight() {
  return TrimRight(whiteSpace);
}
CString& CString::TrimRight(TCHAR unit) {
  m_text.erase(m_text.find_last_not_of(unit) + 1);
  return *this;
}
CString& CString::TrimRight(LPCTSTR units) {
  m_text.erase(m_text.find_last_not_of(orEmpty(units)) + 1);
  return *this;
}

LPTSTR CString::GetBuffer() {
  return m_text.data();
}

LPTSTR CString::GetBuffer(int length) {
  if (length > GetLength()) {
    m_text.resize(static_cast<std::size_t>(length));
    spoil(m_text.data(), m_text.size() * sizeof(TCHAR));  // it may be another buffer
  }
  return m_text.data();
}

LPTSTR CString::GetBufferSetLength(int length) {
  const std::size_t kept = m_text.size();
  m_text.resize(static_cast<std::size_t>((std::max)(length, 0)));
  if (m_text.size() > kept) {
    spoil(m_text.data() + kept, (m_text.size() - kept) * sizeof(TCHAR));
  }
  return m_text.data();
}

void CString::ReleaseBuffer(int length) {
  if (length < 0) {
    m_text.resize(std::char_traits<TCHAR>::length(m_text.c_str()));
  } else {
    m_text.resize(static_cast<std::size_t>(length));
  }
}
