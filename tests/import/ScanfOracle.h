// One row scanned twice: by the C library's swscanf, and by RowScanner driven by the same format. The two
// results must be equal bit by bit. The library's numbers follow the process' locale: compare in "C" only.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <cwctype>
#include <string>

#include "import/RowScanner.h"

// The formats of the sections of a CTF file.
inline constexpr std::array<const wchar_t*, 6> ctfFormats = {L"%d : %f %f %f   %f %f %f   %f  %s",
                                                             L"%d: %d %d %f  %f %f %f   %f %f %f   %f  %f %s",
                                                             L"%d: %d %d %d %d %d",
                                                             L"%d: %d %d %f %d %f %d %d %d %s",
                                                             L"%s  %f",
                                                             L"%d %d %d"};

// What a scan gave: the number of values, and the value of each directive that asks for one. A value that was
// not converted keeps what it held before.
struct ScanResult {
  enum { mostValues = 14 };

  int fields = 0;
  std::array<int, mostValues> integers;
  std::array<float, mostValues> reals;
  std::u16string word = u"(none)";

  ScanResult() {
    integers.fill(-77);
    reals.fill(-77.5F);
  }

  // Numbers are compared by their bits; of a NaN only the sign counts.
  bool operator==(const ScanResult& other) const {
    if (fields != other.fields || integers != other.integers || word != other.word) {
      return false;
    }
    for (std::size_t i = 0; i < reals.size(); ++i) {
      const bool sameBits =
          std::bit_cast<std::uint32_t>(reals[i]) == std::bit_cast<std::uint32_t>(other.reals[i]);
      const bool bothNan = std::isnan(reals[i]) && std::isnan(other.reals[i]) &&
                           std::signbit(reals[i]) == std::signbit(other.reals[i]);
      if (!sameBits && !bothNan) {
        return false;
      }
    }
    return true;
  }
};

// The value of hexadecimal digits, rounded once: digits that find no room leave a mark in the lowest bit.
inline float hexValue(const wchar_t* next) {
  std::uint64_t mantissa = 0;
  int exponent = 0;
  int perDigit = 0;  // what a digit takes off the exponent: 4 behind the point
  for (; std::iswxdigit(static_cast<wint_t>(*next)) != 0 || (*next == L'.' && perDigit == 0); ++next) {
    if (*next == L'.') {
      perDigit = 4;
      continue;
    }
    const wchar_t digit[] = {*next, L'\0'};
    const std::uint64_t value = std::wcstoul(digit, nullptr, 16);
    const bool hasRoom = mantissa >> 60U == 0;
    mantissa = hasRoom ? mantissa << 4U | value : mantissa | (value != 0 ? 1U : 0U);
    exponent += hasRoom ? -perDigit : 4 - perDigit;
  }
  if (*next == L'p' || *next == L'P') {
    exponent += static_cast<int>(std::clamp(std::wcstol(next + 1, nullptr, 10), -100000L, 100000L));
  }
  return static_cast<float>(std::ldexp(static_cast<long double>(mantissa), exponent));
}

// This library drops one bit of hexadecimal numbers just above the middle between two denormals: it makes
// "0x1.000001p-150" zero and "0x11.00001p-150" 0x1p-146. Converts such a number at `text` again.
inline void mendDeepHex(const wchar_t* text, float& real) {
  text += std::wcsspn(text, L" \t\n\v\f\r");
  text += *text == L'-' || *text == L'+' ? 1 : 0;
  if (text[0] == L'0' && (text[1] == L'x' || text[1] == L'X')) {
    real = std::copysign(hexValue(text + 2), real);
  }
}

inline ScanResult scanByLibrary(const wchar_t* format, const std::u16string& row) {
  ScanResult result;
  std::array<wchar_t, AnsiLine::capacity + 1> text;
  std::size_t length = 0;
  for (; length < row.size() && length < AnsiLine::capacity; ++length) {
    text[length] = static_cast<wchar_t>(row[length]);
  }
  text[length] = L'\0';

  std::array<wchar_t, AnsiLine::capacity + 1> word;
  word[0] = L'\0';
  bool hasWord = false;
  std::wstring ownFormat;  // wide text is %ls to this library, and %n tells where a real number begins
  std::array<int, ScanResult::mostValues> starts;
  starts.fill(-1);
  std::array<void*, 2 * std::size_t{ScanResult::mostValues}> to = {};
  std::size_t used = 0;
  std::size_t count = 0;
  for (const wchar_t* next = format; *next != L'\0'; ++next) {
    ownFormat.append(*next == L's'                      ? L"ls"
                     : *next == L'%' && next[1] == L'f' ? L"%n%"
                                                        : std::wstring(1, *next));
    if (*next == L'd') {
      to[used++] = &result.integers[count++];
    } else if (*next == L'f') {
      to[used++] = &starts[count];
      to[used++] = &result.reals[count++];
    } else if (*next == L's') {
      to[used++] = word.data();
      ++count;
      hasWord = true;
    }
  }
  const int fields =
      std::swscanf(text.data(), ownFormat.c_str(), to[0], to[1], to[2], to[3], to[4], to[5], to[6], to[7],
                   to[8], to[9], to[10], to[11], to[12], to[13], to[14], to[15], to[16], to[17], to[18],
                   to[19], to[20], to[21], to[22], to[23], to[24], to[25], to[26], to[27]);
  for (std::size_t i = 0; i < count; ++i) {
    if (starts[i] >= 0 && std::fabs(result.reals[i]) < 0x1p-126F) {
      mendDeepHex(text.data() + starts[i], result.reals[i]);
    }
  }
  result.fields = fields < 0 ? 0 : fields;  // the end of the text before the first value
  if (hasWord && word[0] != L'\0') {
    result.word.clear();
    for (const wchar_t* next = word.data(); *next != L'\0'; ++next) {
      result.word += static_cast<char16_t>(*next);
    }
  }
  return result;
}

inline ScanResult scanByScanner(const wchar_t* format, const std::u16string& row) {
  ScanResult result;
  CString text;
  for (const char16_t unit : row) {
    text += static_cast<TCHAR>(unit);
  }
  CString word = _T("(none)");
  const AnsiLine line(text);
  RowScanner scanner(line);
  std::size_t count = 0;
  for (const wchar_t* next = format; *next != L'\0'; ++next) {
    switch (*next) {
      case L' ':
        scanner.blanks();
        break;
      case L':':
        scanner.colon();
        break;
      case L'd':
        scanner.integer(result.integers[count++]);
        break;
      case L'f':
        scanner.real(result.reals[count++]);
        break;
      case L's':
        scanner.word(word);
        ++count;
        break;
      default:
        break;
    }
  }
  result.fields = scanner.fields();
  result.word.clear();
  for (int i = 0; i < word.GetLength(); ++i) {
    result.word += static_cast<char16_t>(word.GetAt(i));
  }
  return result;
}
