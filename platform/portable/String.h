// CString: text of UTF-16 code units, always closed by a 0 that GetLength() does not count.
//
// Lengths and indices count code units. A null pointer where text is expected counts as empty text.
// 8-bit text is in the system's ANSI code page on Windows and in Windows-1252 elsewhere, where the five bytes
// that the code page leaves undefined (81 8D 8F 90 9D) become the C1 controls of the same number.
#pragma once

#include <cstdarg>
#include <string>
#include <utility>

#include "platform/portable/Types.h"

class CString {
 public:
  CString() = default;
  CString(const CString&) = default;
  CString(CString&&) noexcept = default;
  CString(LPCTSTR text) : m_text(text == nullptr ? _T("") : text) {}  // implicit, as in MFC
  CString(LPCTSTR text, int length);  // length <= 0: empty; zeros inside are kept
  CString(LPCSTR text);
  CString(LPCSTR text, int length);
  explicit CString(TCHAR unit, int repeat = 1);
  ~CString() = default;

  CString& operator=(const CString&) = default;
  CString& operator=(CString&&) noexcept = default;
  CString& operator=(LPCTSTR text) { return *this = CString(text); }  // may be a part of this text
  CString& operator=(LPCSTR text);
  CString& operator=(TCHAR unit) {
    m_text.assign(1, unit);
    return *this;
  }

  CString& operator+=(const CString& text) {
    m_text += text.m_text;
    return *this;
  }
  CString& operator+=(LPCTSTR text) {
    if (text != nullptr) {
      m_text += text;
    }
    return *this;
  }
  CString& operator+=(LPCSTR text);
  CString& operator+=(TCHAR unit) {
    m_text += unit;
    return *this;
  }

  operator LPCTSTR() const noexcept { return m_text.c_str(); }  // implicit, as in MFC
  LPCTSTR GetString() const noexcept { return m_text.c_str(); }
  int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
  bool IsEmpty() const noexcept { return m_text.empty(); }
  void Empty() noexcept { m_text.clear(); }

  // The unit at an index from 0 to GetLength(); the one at GetLength() is the closing 0.
  // Any other index throws std::out_of_range.
  TCHAR operator[](int index) const { return GetAt(index); }
  TCHAR GetAt(int index) const {
    if (index < 0 || index > GetLength()) {
      throwOutOfRange();
    }
    return m_text.c_str()[index];
  }
  void SetAt(int index, TCHAR unit);  // 0 to GetLength() - 1, else std::out_of_range

  // Parts. Counts and starts outside the text are moved to its nearer end.
  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;

  // The index of the first match at or after `start`, or -1; -1 also for a start outside the text.
  int Find(TCHAR unit, int start = 0) const noexcept {
    return start < 0 || start > GetLength() ? -1 : found(m_text.find(unit, static_cast<std::size_t>(start)));
  }
  int Find(LPCTSTR text, int start = 0) const noexcept {
    return text == nullptr || start < 0 || start > GetLength()
               ? -1
               : found(m_text.find(text, static_cast<std::size_t>(start)));
  }
  int FindOneOf(LPCTSTR units) const noexcept;
  int ReverseFind(TCHAR unit) const noexcept { return found(m_text.rfind(unit)); }

  int Delete(int index, int count = 1);        // returns the new length
  int Insert(int index, LPCTSTR text);         // returns the new length; a start behind the end appends
  int Insert(int index, TCHAR unit);           // likewise
  int Replace(TCHAR before, TCHAR after);      // returns how many were replaced
  int Replace(LPCTSTR before, LPCTSTR after);  // likewise; replaced text is not searched again
  int Remove(TCHAR unit);                      // returns how many were removed

  // < 0, 0 or > 0, by code units. CompareNoCase, MakeLower and MakeUpper know the case of A to Z only.
  int Compare(LPCTSTR other) const noexcept;
  int CompareNoCase(LPCTSTR other) const noexcept;
  CString& MakeLower();
  CString& MakeUpper();

  // Without an argument: white space, which is space, tab, line feed, vertical tab, form feed, return.
  CString& Trim();
  CString& Trim(TCHAR unit);
  CString& Trim(LPCTSTR units);
  CString& TrimLeft();
  CString& TrimLeft(TCHAR unit);
  CString& TrimLeft(LPCTSTR units);
  CString& TrimRight();
  CString& TrimRight(TCHAR unit);
  CString& TrimRight(LPCTSTR units);

  // printf for TCHAR text, by one implementation on every system; numbers follow the process' C locale.
  //   flags - + space 0 #, width and precision as digits or *
  //   sizes h hh l (32 bits, as LONG) ll I64 j z t I32
  //   d i u o x X e E f F g G a A p %%; c and s take TCHAR, hs, hc, S and C take 8-bit text
  // A null text prints (null). A specifier that is not in this list is copied as it stands.
  // Never pass a CString through the dots: pass its GetString().
  void Format(LPCTSTR format, ...);
  void FormatV(LPCTSTR format, va_list arguments);
  void AppendFormat(LPCTSTR format, ...);

  // A writable buffer of at least `length` units and a closing 0. After writing, and before any other member,
  // call ReleaseBuffer: with the new length, or with -1 to end the text at its first 0.
  LPTSTR GetBuffer();
  LPTSTR GetBuffer(int length);
  LPTSTR GetBufferSetLength(int length);
  void ReleaseBuffer(int length = -1);

  friend CString operator+(const CString& left, const CString& right) { return joined(left, right); }
  friend CString operator+(const CString& left, LPCTSTR right) { return joined(left, right); }
  friend CString operator+(LPCTSTR left, const CString& right) { return joined(left, right); }
  friend CString operator+(const CString& left, TCHAR right) { return joined(left, right); }
  friend CString operator+(TCHAR left, const CString& right) { return joined(CString(left), right); }

  friend bool operator==(const CString& left, const CString& right) noexcept {
    return left.m_text == right.m_text;
  }
  friend bool operator==(const CString& left, LPCTSTR right) noexcept { return left.Compare(right) == 0; }
  friend bool operator==(LPCTSTR left, const CString& right) noexcept { return right.Compare(left) == 0; }
  friend bool operator!=(const CString& left, const CString& right) noexcept { return !(left == right); }
  friend bool operator!=(const CString& left, LPCTSTR right) noexcept { return left.Compare(right) != 0; }
  friend bool operator!=(LPCTSTR left, const CString& right) noexcept { return right.Compare(left) != 0; }
  friend bool operator<(const CString& left, const CString& right) noexcept {
    return left.m_text < right.m_text;
  }
  friend bool operator<(const CString& left, LPCTSTR right) noexcept { return left.Compare(right) < 0; }
  friend bool operator<(LPCTSTR left, const CString& right) noexcept { return right.Compare(left) > 0; }
  friend bool operator>(const CString& left, const CString& right) noexcept { return right < left; }
  friend bool operator>(const CString& left, LPCTSTR right) noexcept { return left.Compare(right) > 0; }
  friend bool operator>(LPCTSTR left, const CString& right) noexcept { return right.Compare(left) < 0; }
  friend bool operator<=(const CString& left, const CString& right) noexcept { return !(right < left); }
  friend bool operator>=(const CString& left, const CString& right) noexcept { return !(left < right); }

 private:
  using Text = std::basic_string<TCHAR>;

  static int found(Text::size_type at) noexcept { return at == Text::npos ? -1 : static_cast<int>(at); }
  template <class Right>
  static CString joined(CString left, const Right& right) {
    left += right;
    return left;
  }
  [[noreturn]] static void throwOutOfRange();
  std::size_t clampedIndex(int index) const noexcept;

  Text m_text;
};
