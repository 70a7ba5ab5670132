// One line of 8-bit text, as the importers look at it.
//
// The text is what the system's ANSI code page makes of the bytes: UTF-16 units. Everything that the readers
// look for is ASCII, so they look at one char per unit, in which a unit beyond ASCII is a placeholder; only
// what is kept (labels, names) is widened. Nearly every line is ASCII, and then its bytes serve as they are.
#pragma once

#include <afx.h>

#include <string>

// The small letter of a capital one; only A to Z have one.
constexpr char lowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

class AnsiLine {
 public:
  static constexpr int capacity = 2048;  // bytes: longer lines come in pieces

  AnsiLine() = default;
  explicit AnsiLine(const CString& text);
  AnsiLine(const AnsiLine&) = delete;
  AnsiLine& operator=(const AnsiLine&) = delete;

  // Makes bytes the line's text, up to the first zero. A zero byte must stand behind them, and ASCII bytes
  // are not copied: they must outlive their use here.
  void assign(const char* bytes, int length);

  // Likewise of plain bytes, as nearly all are: ASCII without zeros, parentheses, slashes and braces.
  void assignPlain(const char* bytes, int length);
  static bool isPlain(const char* bytes, int length);

  // One char per UTF-16 unit; a zero stands at end().
  const char* begin() const { return m_begin; }
  const char* end() const { return m_end; }

  // Compare with ASCII words: as a whole ignoring case, or anywhere with case.
  bool isNamed(const char* words) const;
  bool contains(const char* words) const;

  // What a line means inside a section body of a CTF file.
  bool isUnitHeader() const { return m_hasMarks && contains("(cm)"); }  // only dipole sections ask, first
  bool isPassedOver() const { return m_hasMarks && (contains("{") || contains("//")); }  // even with a "}"
  bool isEnd() const { return m_hasMarks && contains("}"); }

  // The text, or a part of it between two positions of begin() .. end().
  CString text() const;
  void copyPart(const char* first, const char* last, CString& part) const;

 private:
  void setUnits(const CString& text);

  const char* m_begin = "";
  const char* m_end = m_begin;
  bool m_hasMarks = false;  // holds one of ( / { }
  bool m_isAscii = true;
  CString m_wide;              // the text, when it is not ASCII
  std::string m_placeholders;  // and its units
};
