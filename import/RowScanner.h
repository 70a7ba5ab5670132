// Scans one row of numbers and words as the C library's swscanf does in the "C" locale, whatever locale the
// process has set.
//
// Each step stands for one directive of a format: integer for %d, real for %f, word for %s, blanks for white
// space and colon for ':'. The first step that fails ends the scan: later steps do nothing, and fields()
// tells how many values were converted until then. A value whose step fails keeps what it held.
//
//   RowScanner(row).integer(n).colon().real(x).word(label).fields() == 3  // for "7: 1.5 spike"
//
// Details that the rows of other programs meet, as in the GNU C library (other C libraries differ in most):
//   - white space is blank, tab, LF, VT, FF and CR; numbers and words skip it first, colon does not;
//   - an integer beyond 64 bits ends at their limit; then the low 32 bits count;
//   - a real may be decimal, hexadecimal, inf, infinity or nan in any case; it is rounded once, to the
//     nearest float (the GNU library loses a bit of some hexadecimal numbers below 2^-149, which this scanner
//     does not); too large becomes infinite, too small becomes zero;
//   - an exponent without digits ("1e", "1e+") is taken off the text and ignored;
//   - a number ends where the next character cannot continue it: "1.5.3" is 1.5 and .3, "12abc" is 12.
#pragma once

#include <afx.h>

#include "import/AnsiLine.h"

class RowScanner {
 public:
  explicit RowScanner(const AnsiLine& row)  // the row must outlive the scanner
      : RowScanner(row, row.begin()) {}
  RowScanner(const AnsiLine& row, const char* start) : m_row(row), m_next(start) {}
  explicit RowScanner(AnsiLine&&) = delete;

  RowScanner& integer(int& value);
  RowScanner& real(float& value);
  RowScanner& word(CString& value);
  RowScanner& blanks();
  RowScanner& colon();

  // The same conversions, counted like them, for columns that nobody uses.
  RowScanner& skipInteger();
  RowScanner& skipWord();

  int fields() const { return m_fields; }

 private:
  bool startField();
  bool other(float& value);
  bool special(float& value);
  bool hexadecimal(float& value);
  bool accept(const char* lowerCaseWord);
  RowScanner& endField(bool converted);

  const AnsiLine& m_row;
  const char* m_next;
  int m_fields = 0;
  bool m_failed = false;
};
