// UTF-8 and UTF-16 turn into each other without loss, whatever the bytes.
#include <gtest/gtest.h>
#include <random>

#include "platform/Utf.h"

namespace {

std::basic_string<TCHAR> units(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

TEST(Utf, KnownCharacters) {
  EXPECT_EQ(units(fromUtf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\xA7\xA0")), _T("a\u00E9\u20AC\U0001F9E0"));
  EXPECT_EQ(toUtf8(_T("a\u00E9\u20AC\U0001F9E0")), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\xA7\xA0");
  EXPECT_EQ(toUtf8(static_cast<LPCTSTR>(nullptr)), "");
}

TEST(Utf, EdgesOfEveryLength) {
  const std::string edges[] = {"\x7F",         "\xC2\x80",         "\xDF\xBF",
                               "\xE0\xA0\x80", "\xED\x9F\xBF",     "\xEE\x80\x80",
                               "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"};
  const unsigned codes[] = {0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF};
  for (std::size_t i = 0; i < std::size(edges); ++i) {
    const CString text = fromUtf8(edges[i]);
    const unsigned first = text[0];
    const unsigned code =
        text.GetLength() == 1 ? first : 0x10000 + ((first - 0xD800) << 10) + (text[1] - 0xDC00U);
    EXPECT_EQ(code, codes[i]);
    EXPECT_EQ(toUtf8(text), edges[i]);
  }
}

TEST(Utf, BytesThatAreNoUtf8AreKeptAsUnits) {
  EXPECT_EQ(units(fromUtf8("\x80")), (std::basic_string<TCHAR>{0xDC80}));
  EXPECT_EQ(units(fromUtf8("\xFF")), (std::basic_string<TCHAR>{0xDCFF}));
  EXPECT_EQ(units(fromUtf8("\xC0\x80")), (std::basic_string<TCHAR>{0xDCC0, 0xDC80}));  // overlong
  EXPECT_EQ(units(fromUtf8("\xE2\x82")), (std::basic_string<TCHAR>{0xDCE2, 0xDC82}));  // cut off
  EXPECT_EQ(units(fromUtf8("\xED\xA0\x80")).size(), 3U);                               // half a pair
  EXPECT_EQ(units(fromUtf8("\xF4\x90\x80\x80")).size(), 4U);                           // beyond the end
  EXPECT_EQ(units(fromUtf8("\xE9"
                           "a")),
            (std::basic_string<TCHAR>{0xDCE9, 'a'}));  // Latin-1
}

TEST(Utf, AnyBytesComeBack) {
  std::mt19937 random(1);
  for (int round = 0; round < 20000; ++round) {
    std::string bytes(random() % 12, '\0');
    for (char& byte : bytes) {
      byte = static_cast<char>(random() % 3 == 0 ? random() : 0x80 + random() % 0x80);
    }
    EXPECT_EQ(toUtf8(fromUtf8(bytes)), bytes);
  }
}

TEST(Utf, ZerosInsideAreKept) {
  const std::string bytes("a\0b", 3);
  EXPECT_EQ(fromUtf8(bytes).GetLength(), 3);
  EXPECT_EQ(toUtf8(fromUtf8(bytes)), bytes);
}

TEST(Utf, LoneHalvesBecomeTheirThreeBytes) {
  EXPECT_EQ(toUtf8(CString(TCHAR{0xD800})), "\xED\xA0\x80");
  EXPECT_EQ(toUtf8(CString(TCHAR{0xDC00})), "\xED\xB0\x80");
}

}  // namespace
