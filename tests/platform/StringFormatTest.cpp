// CString::Format says what printf says, with text of UTF-16.
#include <afx.h>

#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

#include "platform/Utf.h"

namespace {

template <class... Arguments>
std::string formatted(LPCTSTR format, Arguments... arguments) {
  CString text;
  text.Format(format, arguments...);
  return toUtf8(text);
}

template <class... Arguments>
std::string printed(const char* format, Arguments... arguments) {
  char buffer[512];
  std::snprintf(buffer, sizeof buffer, format, arguments...);
  return buffer;
}

TEST(Format, CopiesPlainText) {
  EXPECT_EQ(formatted(_T("plain \u20AC 100%%")), "plain € 100%");
  EXPECT_EQ(formatted(_T("")), "");
  EXPECT_EQ(formatted(nullptr), "");
}

// Values and formats that meet every flag, width and precision, against the C library's own.
TEST(Format, DoublesAreThoseOfTheCLibrary) {
  const std::string shapes[] = {"%f",      "%.0f", "%#.0f",   "%10.3f", "%-10.3f|", "%+.2f", "% .2f",
                                "%010.4f", "%e",   "%.15e",   "%E",     "%g",       "%.17g", "%G",
                                "%#g",     "%a",   "%+08.1f", "%.3F",   "%-+9.1e|", "%5.f"};
  const double values[] = {0.0,   -0.0,   1.0,     -1.5,     0.1,      123456789.123, 1e-300,
                           1e300, 5e-324, -2.5e-7, 999999.5, INFINITY, -INFINITY};
  for (const std::string& shape : shapes) {
    const CString format = fromUtf8(shape);
    for (const double value : values) {
      char expected[512];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
      std::snprintf(expected, sizeof expected, shape.c_str(), value);
#pragma GCC diagnostic pop
      EXPECT_EQ(formatted(format, value), expected) << shape;
    }
  }
}

TEST(Format, IntegersOfEverySize) {
  EXPECT_EQ(formatted(_T("%d %i %u"), -5, INT_MIN, UINT_MAX), "-5 -2147483648 4294967295");
  EXPECT_EQ(formatted(_T("%x %X %o %#x %#o"), 255, 255, 8, 255, 8), "ff FF 10 0xff 010");
  EXPECT_EQ(formatted(_T("%5d|%-5d|%05d|%+d|% d|%.3d"), 42, 42, 42, 42, 42, 7),
            "   42|42   |00042|+42| 42|007");
  EXPECT_EQ(formatted(_T("%hd %hhd %hu %hhu"), 65537, 257, 65537, 257), "1 1 1 1");
  EXPECT_EQ(formatted(_T("%hd %hhd"), 40000, 200), "-25536 -56");
  EXPECT_EQ(formatted(_T("%ld %lu"), LONG{-7}, ULONG{4000000000U}), "-7 4000000000");
  EXPECT_EQ(formatted(_T("%I32d"), LONG{-7}), "-7");
  EXPECT_EQ(formatted(_T("%lld %llu"), LONGLONG{LLONG_MIN}, ULONGLONG{ULLONG_MAX}),
            "-9223372036854775808 18446744073709551615");
  EXPECT_EQ(formatted(_T("%I64d %I64u %I64x"), LONGLONG{-1}, ULONGLONG{1}, ULONGLONG{0xABCDEF0123}),
            "-1 1 abcdef0123");
  EXPECT_EQ(formatted(_T("%zu %td %jd"), std::size_t{9}, std::ptrdiff_t{-9}, LONGLONG{8}), "9 -9 8");
}

TEST(Format, MixedArgumentsKeepTheirPlaces) {
  EXPECT_EQ(formatted(_T("%d %s %.1f %c %lld %s %d"), 1, _T("two"), 3.0, _T('4'), 5LL, _T("six"), 7),
            "1 two 3.0 4 5 six 7");
}

TEST(Format, StarsTakeWidthAndPrecision) {
  EXPECT_EQ(formatted(_T("%*d|%-*d|%*d"), 5, 1, 5, 2, -5, 3), printed("%*d|%-*d|%*d", 5, 1, 5, 2, -5, 3));
  EXPECT_EQ(formatted(_T("%.*f|%.*f|%*.*f"), 2, 1.0, -1, 1.0, 8, 1, 2.25),
            printed("%.*f|%.*f|%*.*f", 2, 1.0, -1, 1.0, 8, 1, 2.25));
  EXPECT_EQ(formatted(_T("%*s|%-*s|%.*s"), 4, _T("a"), 4, _T("b"), 1, _T("cd")), "   a|b   |c");
}

TEST(Format, Texts) {
  EXPECT_EQ(formatted(_T("[%s] [%5s] [%-5s] [%.2s] [%5.1s]"), _T("\u20AC"), _T("ab"), _T("ab"), _T("abc"),
                      _T("xyz")),
            "[€] [   ab] [ab   ] [ab] [    x]");
  EXPECT_EQ(formatted(_T("%S|%hs|%ls|%-4S|"), "\xE9", "n\xE9", _T("w"), "ab"), "é|né|w|ab  |");
  EXPECT_EQ(formatted(_T("%s %S"), static_cast<LPCTSTR>(nullptr), static_cast<LPCSTR>(nullptr)),
            "(null) (null)");
  EXPECT_EQ(formatted(_T("%.3s"), static_cast<LPCTSTR>(nullptr)), "(nu");
}

TEST(Format, PrecisionProtectsTextsWithoutEnd) {
  const TCHAR units[] = {_T('a'), _T('b')};
  EXPECT_EQ(formatted(_T("%.2s"), units), "ab");
  const char bytes[] = {'c', 'd'};
  EXPECT_EQ(formatted(_T("%.2S"), bytes), "cd");
}

TEST(Format, Characters) {
  EXPECT_EQ(formatted(_T("%c%c|%3c|%-3c|"), _T('a'), 0x20AC, _T('b'), _T('c')), "a€|  b|c  |");
  EXPECT_EQ(formatted(_T("%hc%C%lc"), 0xE9, 0x80, 0x20AC), "é€€");
  CString text;
  text.Format(_T("a%cb"), 0);
  EXPECT_EQ(text.GetLength(), 3);
}

TEST(Format, PointersAreSixteenDigits) {
  EXPECT_EQ(formatted(_T("%p"), reinterpret_cast<void*>(std::uintptr_t{0xABC})), "0000000000000ABC");
}

TEST(Format, UnknownSpecifiersAreCopied) {
  EXPECT_EQ(formatted(_T("%y %5q %"), 1), "%y %5q %");
  EXPECT_EQ(formatted(_T("%-08.2")), "%-08.2");
  EXPECT_EQ(formatted(_T("%n")), "%n");
}

TEST(Format, LongResultsAreWhole) {
  EXPECT_EQ(formatted(_T("%300d"), 7), std::string(299, ' ') + "7");
  EXPECT_EQ(formatted(_T("%.200f"), 1.0), "1." + std::string(200, '0'));
  EXPECT_EQ(formatted(_T("%s"), CString(_T('x'), 5000).GetString()), std::string(5000, 'x'));
}

TEST(Format, AppendsAndTakesItself) {
  CString text = _T("a");
  text.AppendFormat(_T("%d"), 1);
  text.AppendFormat(_T("%s"), text.GetString());
  EXPECT_EQ(toUtf8(text), "a1a1");
  text.Format(_T("<%s>"), text.GetString());
  EXPECT_EQ(toUtf8(text), "<a1a1>");
}

// Same decimal point as printf, whatever locale the process has.
TEST(Format, DecimalPointFollowsTheLocale) {
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  for (const char* name : {"de_DE.UTF-8", "German_Germany.1252", "C"}) {
    if (std::setlocale(LC_NUMERIC, name) != nullptr) {
      EXPECT_EQ(formatted(_T("%.2f"), 1.5), printed("%.2f", 1.5)) << name;
    }
  }
  std::setlocale(LC_NUMERIC, before.c_str());
}

}  // namespace
