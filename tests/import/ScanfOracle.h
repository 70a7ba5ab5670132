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
  std::wstring ownFormat;  // wide text is %ls to this library
  std::wstring doubleFormat;
  std::array<void*, ScanResult::mostValues> targets = {};
  std::size_t count = 0;
  for (const wchar_t* next = format; *next != L'\0'; ++next) {
    ownFormat.append(*next == L's' ? L"ls" : std::wstring(1, *next));
    doubleFormat.append(*next == L'f' ? L"lf" : *next == L's' ? L"ls" : std::wstring(1, *next));
    if (*next == L'd') {
      targets[count] = &result.integers[count];
    } else if (*next == L'f') {
      targets[count] = &result.reals[count];
    } else if (*next == L's') {
      targets[count] = word.data();
      hasWord = true;
    } else {
      continue;
    }
    ++count;
  }
  const auto scan = [&](const std::wstring& by) {
    auto& to = targets;
    return std::swscanf(text.data(), by.c_str(), to[0], to[1], to[2], to[3], to[4], to[5], to[6], to[7],
                        to[8], to[9], to[10], to[11], to[12], to[13]);
  };
  const int fields = scan(ownFormat);
  // This library's conversion to float drops one bit of hexadecimal numbers just above the middle between two
  // denormals ("0x1.000001p-150" gives zero, "0x11.00001p-150" 0x1p-146). Its conversion to double is right
  // there, and narrowing that is exact enough: whatever lies so deep is taken from it.
  const bool hasHex = row.find_first_of(u"xX") != std::u16string::npos;
  const auto isDeep = [&](float real) { return hasHex && std::fabs(real) < 0x1p-126F; };
  if (std::any_of(result.reals.begin(), result.reals.end(), isDeep)) {
    std::array<double, ScanResult::mostValues> doubles = {};
    for (std::size_t i = 0; i < count; ++i) {
      targets[i] = targets[i] == &result.reals[i] ? static_cast<void*>(&doubles[i]) : targets[i];
    }
    scan(doubleFormat);
    for (std::size_t i = 0; i < count; ++i) {
      result.reals[i] = isDeep(result.reals[i]) ? static_cast<float>(doubles[i]) : result.reals[i];
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
