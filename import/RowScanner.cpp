#include "import/RowScanner.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <system_error>

namespace {

// A plain number has so many digits at most, perhaps with a point among them.
constexpr std::ptrdiff_t plainCharacters = 14;

// By the number of characters from a point on, the point among them.
constexpr double powersOfTen[plainCharacters] = {1e0, 1e0, 1e1, 1e2, 1e3,  1e4,  1e5,
                                                 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12};

bool isBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// Of a character that is no digit: more than 9.
unsigned digitOf(char c) {
  return static_cast<unsigned char>(c - '0');
}

bool isDigit(char c) {
  return digitOf(c) <= 9;
}

bool isHexDigit(char c) {
  return isDigit(c) || (lowerAscii(c) >= 'a' && lowerAscii(c) <= 'f');
}

// Where the digits and the one point of a number end.
const char* skipMantissa(const char* next, bool (*isMantissaDigit)(char)) {
  bool hasPoint = false;
  while (isMantissaDigit(*next) || (*next == '.' && !hasPoint)) {
    hasPoint = hasPoint || *next == '.';
    ++next;
  }
  return next;
}

// The position of a mantissa's first significant digit: 1 for units, 2 for tens, 0 for tenths and so on.
int leadingPosition(const char* begin, const char* end) {
  const char* point = std::find(begin, end, '.');
  const char* leading = std::find_if(begin, end, [](char c) { return c != '0' && c != '.'; });
  return static_cast<int>(leading < point ? point - leading : point - leading + 1);
}

// An exponent behind its letter; far beyond any float it no longer grows.
int exponentValue(const char* next, const char* end) {
  const bool isNegative = next != end && *next == '-';
  int value = 0;
  for (next += next != end && !isDigit(*next) ? 1 : 0; next != end && value < 1000000; ++next) {
    value = value * 10 + (*next - '0');
  }
  return isNegative ? -value : value;
}

// The value of a number that no float can hold: too large is infinite, too small is zero.
float beyondRange(const char* begin, const char* end, bool isHex) {
  const char* exponent = skipMantissa(begin, isHex ? isHexDigit : isDigit);
  const int position = leadingPosition(begin, exponent) * (isHex ? 4 : 1);
  const int magnitude = position + (exponent == end ? 0 : exponentValue(exponent + 1, end));
  return magnitude > 0 ? std::numeric_limits<float>::infinity() : 0.0F;
}

// An exponent's letter and sign, with or without digits behind them.
const char* skipExponentStart(const char* next, char letter) {
  if (lowerAscii(*next) == letter) {
    ++next;
    if (*next == '+' || *next == '-') {
      ++next;
    }
  }
  return next;
}

// Converts a number without a sign; the caller has seen that it begins with a digit or a point. An exponent's
// letter and sign without digits belong to the number all the same.
bool convert(const char* begin, const char* end, bool isHex, float& value, const char*& next) {
  const auto format = isHex ? std::chars_format::hex : std::chars_format::general;
  const char* mantissaEnd = skipMantissa(begin, isHex ? isHexDigit : isDigit);
  const char* exponent = skipExponentStart(mantissaEnd, isHex ? 'p' : 'e');
  const bool hasExponent = exponent != mantissaEnd && isDigit(*exponent);
  const auto [stop, error] = std::from_chars(begin, hasExponent ? end : mantissaEnd, value, format);
  if (error == std::errc::invalid_argument) {
    return false;
  }
  if (error == std::errc::result_out_of_range) {
    value = beyondRange(begin, stop, isHex);
  }
  next = hasExponent ? stop : exponent;
  return true;
}

// A plain number, as nearly all in a file are: its digits and the power of ten are doubles themselves, so
// that their quotient is rounded once (Clinger 1990). Rounding it once more, to a float, goes wrong only if
// the quotient lies midway between two floats, at m / 2^j with m of 25 bits, and the number itself does not.
// With 12 decimals at most it cannot: the two are 5^-12 / 2^j apart at least, or one unit of the last
// digit where j is small, and a double is rounded by 2^-29 / 2^j at most.
bool convertPlain(float& value, const char*& next) {
  const char* c = next;
  std::uint64_t digits = 0;
  const auto takeDigits = [&] {
    for (; isDigit(*c); ++c) {
      digits = digits * 10 + digitOf(*c);
    }
  };
  takeDigits();
  const char* const point = c;
  if (*c == '.') {
    ++c;
    takeDigits();
  }
  const char letter = lowerAscii(*c);
  if (point == next || c - next > plainCharacters || letter == 'e' || letter == 'x') {
    return false;
  }
  value = static_cast<float>(static_cast<double>(static_cast<std::int64_t>(digits)) / powersOfTen[c - point]);
  next = c;
  return true;
}

}  // namespace

// Skips the blanks in front of a value; false when the scan has ended.
bool RowScanner::startField() {
  blanks();
  m_failed = m_failed || m_next == m_row.end();
  return !m_failed;
}

RowScanner& RowScanner::endField(bool converted) {
  m_failed = !converted;
  m_fields += converted ? 1 : 0;
  return *this;
}

RowScanner& RowScanner::blanks() {
  if (!m_failed) {
    const char* next = m_next;
    while (isBlank(*next)) {
      ++next;
    }
    m_next = next;
  }
  return *this;
}

RowScanner& RowScanner::colon() {
  m_failed = m_failed || *m_next != ':';
  m_next += m_failed ? 0 : 1;
  return *this;
}

RowScanner& RowScanner::integer(int& value) {
  if (!startField()) {
    return *this;
  }
  const bool isNegative = *m_next == '-';
  m_next += isNegative || *m_next == '+' ? 1 : 0;
  const char* digits = m_next;
  const std::uint64_t limit = (std::numeric_limits<std::int64_t>::max)() + (isNegative ? 1ULL : 0ULL);
  std::uint64_t magnitude = 0;
  for (; isDigit(*m_next); ++m_next) {
    const std::uint64_t digit = digitOf(*m_next);
    magnitude = magnitude > (limit - digit) / 10 ? limit : magnitude * 10 + digit;
  }
  const bool converted = m_next != digits;
  if (converted) {
    value = static_cast<int>(static_cast<std::uint32_t>(isNegative ? 0 - magnitude : magnitude));
  }
  return endField(converted);
}

RowScanner& RowScanner::skipInteger() {
  int unused = 0;
  return integer(unused);
}

RowScanner& RowScanner::real(float& value) {
  if (!startField()) {
    return *this;
  }
  const bool isNegative = *m_next == '-';
  m_next += isNegative || *m_next == '+' ? 1 : 0;
  float magnitude = 0.0F;
  const bool converted = convertPlain(magnitude, m_next) || other(magnitude);
  if (converted) {
    value = isNegative ? -magnitude : magnitude;
  }
  return endField(converted);
}

// Any number but a plain one.
bool RowScanner::other(float& value) {
  if (*m_next == '0' && lowerAscii(m_next[1]) == 'x') {
    return hexadecimal(value);
  }
  return isDigit(*m_next) || *m_next == '.' ? convert(m_next, m_row.end(), false, value, m_next)
                                            : special(value);
}

bool RowScanner::hexadecimal(float& value) {
  m_next += 2;  // "0x"
  const char* mantissa = m_next;
  const bool isMantissa = isHexDigit(*mantissa) || *mantissa == '.';
  if (isMantissa && convert(mantissa, m_row.end(), true, value, m_next)) {
    return true;
  }
  // A point without digits is still the number 0x: zero.
  m_next = skipMantissa(mantissa, isHexDigit);
  value = 0.0F;
  return m_next != mantissa;
}

bool RowScanner::special(float& value) {
  if (accept("nan")) {
    value = std::numeric_limits<float>::quiet_NaN();
    return true;
  }
  if (!accept("inf")) {
    return false;
  }
  value = std::numeric_limits<float>::infinity();
  return lowerAscii(*m_next) != 'i' || accept("inity");
}

// Takes a word off the text when it stands there in any case.
bool RowScanner::accept(const char* lowerCaseWord) {
  const char* next = m_next;
  for (; *lowerCaseWord != '\0'; ++lowerCaseWord, ++next) {
    if (lowerAscii(*next) != *lowerCaseWord) {
      return false;
    }
  }
  m_next = next;
  return true;
}

RowScanner& RowScanner::word(CString& value) {
  if (!startField()) {
    return *this;
  }
  const char* begin = m_next;
  skipWord();
  m_row.copyPart(begin, m_next, value);
  return *this;
}

RowScanner& RowScanner::skipWord() {
  if (!startField()) {
    return *this;
  }
  m_next = std::find_if(m_next, m_row.end(), isBlank);
  return endField(true);
}
