// One reading of numbers, whatever the locale, and one of UTF-8.
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "host/text/Numbers.h"
#include "host/text/Utf8.h"

TEST(Numbers, AreReadAsAWholeOrNotAtAll) {
  EXPECT_EQ(host::numberOf("1.5"), 1.5);
  EXPECT_EQ(host::numberOf("+1e3"), 1000.0);
  EXPECT_EQ(host::numberOf("-0.25"), -0.25);
  for (const char* text :
       {"", "+", "+-1", "++1", "1,5", "1.5 ", " 1", "nan", "inf", "1e999", "0x10", "1mm"}) {
    EXPECT_EQ(host::numberOf(text), std::nullopt) << text;
  }
}

TEST(Utf8, IsTakenApartAndPutTogether) {
  for (const char32_t point :
       {U'a', char32_t{0xE4}, char32_t{0x20AC}, char32_t{0x1F9E0}, char32_t{0x10FFFF}}) {
    std::string text;
    host::appendUtf8(text, point);
    const host::Utf8Character first = host::firstCharacter(text + "x");
    EXPECT_EQ(first.point, point);
    EXPECT_EQ(first.length, text.size());
  }
  for (const char* text :
       {"\x80", "\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
    EXPECT_EQ(host::firstCharacter(text).length, 0U);
  }
}

TEST(Utf8, BytesThatAreNoneSurviveInText) {
  const CString text = host::fromUtf8("a\xFC\xC3\xA4\xF0\x9F\xA7\xA0");
  ASSERT_EQ(text.GetLength(), 5);
  EXPECT_EQ(static_cast<unsigned>(text[1]), 0xDCFCU);
  EXPECT_EQ(static_cast<unsigned>(text[2]), 0xE4U);
  EXPECT_EQ(static_cast<unsigned>(text[3]), 0xD83EU);
}
