// File names of any script, also broken ones, come through paths unharmed; texts for readers are UTF-8.
#include <gtest/gtest.h>
#include <string>

#include "host/text/PathText.h"
#include "platform/Utf.h"

namespace {

const std::string everyLength = "a \xC3\xA4 \xE8\x84\xB3 \xF0\x9F\xA7\xA0";  // one to four bytes each

CString unitsOf(std::initializer_list<unsigned> units) {
  CString text;
  for (const unsigned unit : units) {
    text += static_cast<TCHAR>(unit);
  }
  return text;
}

}  // namespace

TEST(PathText, NamesOfEveryScriptComeBack) {
  const CString name = fromUtf8(everyLength);
  EXPECT_EQ(host::textOf(host::pathOf(name)), name);
  EXPECT_TRUE(host::pathOf(name).u8string() == std::u8string(everyLength.begin(), everyLength.end()));
}

TEST(PathText, HalvesOfPairsComeBack) {
  const CString name = unitsOf({'a', 0xDC80, 'b', 0xDCFF, 0xDCE4});
  EXPECT_EQ(host::textOf(host::pathOf(name)), name);
}

// Bytes of a name that look like UTF-8 and are none: too long, a half of a pair, beyond the last, cut off.
TEST(PathText, BytesThatAreNoUtf8ComeBack) {
  for (const CString& name :
       {unitsOf({0xDCC0, 0xDC80}), unitsOf({0xDCC1, 0xDCBF}), unitsOf({0xDCE0, 0xDC9F, 0xDC80}),
        unitsOf({0xDCED, 0xDCA0, 0xDC80}), unitsOf({0xDCF0, 0xDC8F, 0xDC80, 0xDC80}),
        unitsOf({0xDCF4, 0xDC90, 0xDC80, 0xDC80}), unitsOf({0xDCE2, 0xDC82}), unitsOf({0xDCE2, 'x', 0xDC82}),
        unitsOf({0xDCF5, 0xDC80, 0xDC80, 0xDC80})}) {
    EXPECT_EQ(host::textOf(host::pathOf(name)), name);
  }
}

TEST(PathText, EmptyIsEmpty) {
  EXPECT_TRUE(host::pathOf(CString()).empty());
  EXPECT_TRUE(host::textOf({}).IsEmpty());
  EXPECT_EQ(host::utf8Of(CString()), "");
}

TEST(PathText, Utf8HasOneToFourBytes) {
  EXPECT_EQ(host::utf8Of(fromUtf8(everyLength)), everyLength);
  EXPECT_EQ(host::utf8Of(unitsOf({0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0xD800, 0xDC00, 0xDBFF, 0xDFFF})),
            "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(PathText, Utf8HasASignForHalvesThatStandAlone) {
  EXPECT_EQ(host::utf8Of(unitsOf({0xD83E, 'x', 0xDDE0, 0xD83E})), "\xEF\xBF\xBDx\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(host::utf8Of(unitsOf({0xDC00, 0xD800})), "\xEF\xBF\xBD\xEF\xBF\xBD");
}
