// RowScanner scans every row exactly as swscanf of the C library does in the "C" locale.
//
// DIPOLE_ROWS sets how many random rows are compared (300000 without it), DIPOLE_ROW_SEED the first of
// them. Rows of each section are compared a tenth as often.
#include <algorithm>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>

#include "import/CtfRows.h"
#include "tests/import/HostileRows.h"
#include "tests/import/ScanfOracle.h"
#include "tests/support/TempFolder.h"

namespace {

std::uint64_t numberOf(const char* variable, std::uint64_t otherwise) {
  const char* text = std::getenv(variable);
  return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

std::uint64_t randomRows() {
  return numberOf("DIPOLE_ROWS", 300000);
}

std::string shown(const std::u16string& text) {
  std::ostringstream out;
  out << std::hex;
  for (const char16_t unit : text) {
    if (unit >= 0x20 && unit < 0x7F) {
      out << static_cast<char>(unit);
    } else {
      out << "\\u{" << static_cast<unsigned>(unit) << '}';
    }
  }
  return out.str();
}

std::string shown(const ScanResult& result) {
  std::ostringstream out;
  out << result.fields << " fields, integers";
  for (const int value : result.integers) {
    out << ' ' << value;
  }
  out << ", reals" << std::hexfloat;
  for (const float value : result.reals) {
    out << ' ' << value;
  }
  out << ", word " << shown(result.word);
  return out.str();
}

std::string shownFormat(const wchar_t* format) {
  std::string text;
  for (; *format != L'\0'; ++format) {
    text += static_cast<char>(*format);
  }
  return text;
}

// True when the row gave every value that the format asks for.
bool compare(const wchar_t* format, const std::u16string& row) {
  const ScanResult expected = scanByLibrary(format, row);
  const ScanResult actual = scanByScanner(format, row);
  if (!(expected == actual) && !testing::Test::HasFailure()) {
    ADD_FAILURE() << "format  " << shownFormat(format) << "\nrow     " << shown(row) << "\nlibrary "
                  << shown(expected) << "\nscanner " << shown(actual);
  }
  return expected.fields == std::count(format, format + std::wcslen(format), L'%');
}

template <std::size_t count>
bool sameReals(const float (&actual)[count], const float* expected) {
  for (std::size_t i = 0; i < count; ++i) {
    const bool same = std::bit_cast<std::uint32_t>(actual[i]) == std::bit_cast<std::uint32_t>(expected[i]);
    if (!same && !(std::isnan(actual[i]) && std::isnan(expected[i]))) {
      return false;
    }
  }
  return true;
}

// Every text of 0 to `length` of these characters.
template <typename Visit>
void forEachText(std::u16string_view characters, std::size_t length, std::u16string& text, Visit visit) {
  visit(text);
  if (length == 0) {
    return;
  }
  for (const char16_t character : characters) {
    text += character;
    forEachText(characters, length - 1, text, visit);
    text.pop_back();
  }
}

CString toCString(const std::u16string& text) {
  CString result;
  for (const char16_t unit : text) {
    result += static_cast<TCHAR>(unit);
  }
  return result;
}

}  // namespace

TEST(RowScannerProperty, RandomAndHostileRowsAreScannedAsTheLibraryDoes) {
  ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
  const std::uint64_t count = randomRows();
  HostileRows rows(numberOf("DIPOLE_ROW_SEED", 1));
  std::uint64_t complete = 0;
  for (std::uint64_t i = 0; i < count && !HasFailure(); ++i) {
    const wchar_t* format = ctfFormats[i % ctfFormats.size()];
    complete += compare(format, rows.row(format)) ? 1 : 0;
  }
  // Rows that fail at their first value would prove little.
  EXPECT_GT(complete, count / 10);
}

TEST(RowScannerProperty, EveryShortNumberIsScannedAsTheLibraryDoes) {
  std::u16string text;
  forEachText(u"01.eEx+-p a", 5, text, [](const std::u16string& number) { compare(L"%f %s", number); });
  forEachText(u"09+- .x:\t", 5, text, [](const std::u16string& number) { compare(L"%d: %d %s", number); });
}

TEST(RowScannerProperty, EveryCutOfTheSpecialValuesIsScannedAsTheLibraryDoes) {
  for (const std::u16string whole : {u"infinity", u"INFINITY", u"InFiNiTy", u"nan(12)", u"NaN", u"0x1.8p+3",
                                     u"0X1.8P-3", u"1.25e+05", u"-infinityx", u"+nanx"}) {
    for (std::size_t length = 0; length <= whole.size(); ++length) {
      for (const std::u16string tail : {u"", u" ", u"x", u"1", u".", u"e", u"p", u"i", u"\u00A0"}) {
        compare(L"%f %s", whole.substr(0, length) + tail);
      }
    }
  }
}

TEST(RowScannerProperty, EveryCodeUnitSeparatesOrNotAsInTheLibrary) {
  for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
    const std::u16string odd(1, static_cast<char16_t>(unit));
    compare(L"%f %f", u"1.5" + odd + u"2.5");
    compare(L"%d %d", odd + u"7" + odd);
    compare(L"%s  %f", u"a" + odd + u"b 3");
  }
}

TEST(RowScannerProperty, ALineOfTheGreatestLengthIsScannedToItsLastCharacter) {
  for (const std::size_t length : {2046U, 2047U, 2048U}) {
    const auto padded = [&](const std::u16string& start, char16_t filling, const std::u16string& end) {
      std::u16string row = start;
      row.resize(length - end.size(), filling);
      row += end;
      return row;
    };
    compare(L"%d %s", padded(u"7 ", u'x', u""));
    compare(L"%f %f", padded(u"1", u'0', u" 2"));
    compare(L"%f %f", padded(u"0.", u'0', u"1 2"));
    compare(L"%d %d", padded(u"", u' ', u"2"));
  }
}

TEST(RowScannerProperty, RowsOfDipolesAreTakenWhereTheLibraryConvertsEightFields) {
  HostileRows rows(2);
  std::u16string label = u"Non";
  CtfDipoleRow row;
  for (std::uint64_t i = 0; i < randomRows() / 10; ++i) {
    const std::u16string text = rows.row(ctfFormats[0]);
    const ScanResult expected = scanByLibrary(ctfFormats[0], text);
    const AnsiLine line(toCString(text));
    ASSERT_EQ(row.scan(line), expected.fields >= 8) << shown(text);
    if (expected.fields == 9) {
      label = expected.word;
    }
    ASSERT_TRUE(row.label == toCString(label)) << shown(text);
    if (expected.fields >= 8) {
      const float actual[7] = {row.location[0],    row.location[1],    row.location[2], row.orientation[0],
                               row.orientation[1], row.orientation[2], row.moment};
      ASSERT_TRUE(sameReals(actual, &expected.reals[1])) << shown(text);
    }
  }
}

TEST(RowScannerProperty, RowsOfMovingDipolesAreTakenWhereTheLibraryConvertsTwelveFields) {
  HostileRows rows(3);
  CtfMovingDipoleRow row;
  for (std::uint64_t i = 0; i < randomRows() / 10; ++i) {
    const std::u16string text = rows.row(ctfFormats[1]);
    const ScanResult expected = scanByLibrary(ctfFormats[1], text);
    const AnsiLine line(toCString(text));
    ASSERT_EQ(row.scan(line), expected.fields >= 12) << shown(text);
    if (expected.fields >= 12) {
      const float actual[9] = {row.latency,        row.location[0],    row.location[1],
                               row.location[2],    row.orientation[0], row.orientation[1],
                               row.orientation[2], row.moment,         row.fitError};
      ASSERT_TRUE(sameReals(actual, &expected.reals[3])) << shown(text);
      ASSERT_EQ(row.id, expected.integers[1]);
      ASSERT_EQ(row.fitTag, expected.integers[2]);
      ASSERT_TRUE(row.label == toCString(expected.fields == 13 ? expected.word : u"Non")) << shown(text);
    }
  }
}

TEST(RowScannerProperty, RowsOfFlagsAreTakenWhereTheLibraryConvertsSixFields) {
  HostileRows rows(4);
  CtfFlagRow row;
  for (std::uint64_t i = 0; i < randomRows() / 10; ++i) {
    const std::u16string text = rows.row(ctfFormats[2]);
    const ScanResult expected = scanByLibrary(ctfFormats[2], text);
    const AnsiLine line(toCString(text));
    ASSERT_EQ(row.scan(line), expected.fields == 6) << shown(text);
    if (expected.fields == 6) {
      ASSERT_EQ(row.color, expected.integers[1]) << shown(text);
      ASSERT_EQ(row.shape, expected.integers[2]) << shown(text);
    }
  }
}

TEST(RowScannerProperty, RowsOfFitInfoAreTakenWhereTheLibraryConvertsNineFields) {
  HostileRows rows(5);
  CtfFitInfoRow row;
  for (std::uint64_t i = 0; i < randomRows() / 10; ++i) {
    const std::u16string text = rows.row(ctfFormats[3]);
    const ScanResult expected = scanByLibrary(ctfFormats[3], text);
    const AnsiLine line(toCString(text));
    ASSERT_EQ(row.scan(line), expected.fields >= 9) << shown(text);
    if (expected.fields >= 9) {
      ASSERT_EQ(row.id, expected.integers[1]) << shown(text);
      ASSERT_EQ(row.fitTag, expected.integers[2]) << shown(text);
      const float actual[2] = {row.latency, row.fitError};
      const float wanted[2] = {expected.reals[3], expected.reals[5]};
      ASSERT_TRUE(sameReals(actual, wanted)) << shown(text);
    }
  }
}

// A locale with a decimal comma, made where the system has none.
class DecimalComma : public testing::Test {
 protected:
  void SetUp() override {
    const std::string command = "localedef -i de_DE -f UTF-8 '" + m_folder.pathUtf8("de_DE.UTF-8") + "' 2>&1";
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
      ASSERT_EQ(std::system(command.c_str()), 0) << "localedef, of Debian's package locales, is needed";
      ASSERT_EQ(setenv("LOCPATH", m_folder.pathUtf8().c_str(), 1), 0);
      ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
      m_ownLocale = true;
    }
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  }
  void TearDown() override {
    std::setlocale(LC_ALL, "C");
    if (m_ownLocale) {
      unsetenv("LOCPATH");
    }
  }

 private:
  TempFolder m_folder;
  bool m_ownLocale = false;
};

TEST_F(DecimalComma, TheLibraryItselfWouldReadOneAndAHalfAsOne) {
  EXPECT_EQ(scanByLibrary(L"%f %f", u"1.5 2").reals[0], 1.0F);
}

TEST_F(DecimalComma, OneAndAHalfStaysOneAndAHalf) {
  const ScanResult result = scanByScanner(L"%f %f %s", u"1.5\t-2.25 3,5");
  EXPECT_EQ(result.fields, 3);
  EXPECT_EQ(result.reals[0], 1.5F);
  EXPECT_EQ(result.reals[1], -2.25F);
  EXPECT_EQ(result.word, u"3,5");
}

TEST_F(DecimalComma, BlanksOfTheLocaleAreNoBlanks) {
  const ScanResult result = scanByScanner(L"%f %f", u"1.5\u20032.5");
  EXPECT_EQ(result.fields, 1);
}

TEST_F(DecimalComma, ARowOfDipolesKeepsItsNumbers) {
  CtfDipoleRow row;
  const AnsiLine line(_T("\t1:\t-2.90\t3.00\t1.25\t1.0000\t0.5\t-0.25\t3.000000\tspike,1"));
  ASSERT_TRUE(row.scan(line));
  EXPECT_EQ(row.location[0], -2.90F);
  EXPECT_EQ(row.location[2], 1.25F);
  EXPECT_EQ(row.orientation[2], -0.25F);
  EXPECT_EQ(row.moment, 3.0F);
  EXPECT_TRUE(row.label == _T("spike,1"));
}
