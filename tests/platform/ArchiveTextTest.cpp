// Text in an archive: its forms, byte by byte, and lengths that lie.
#include <afx.h>

#include <gtest/gtest.h>

#include "tests/support/MemoryArchive.h"
#include "tests/support/Promising.h"
#include "tests/support/StreamFile.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Thrown.h"

namespace {

const std::string wideMark = "\xFF\xFE\xFF";

std::string stored(const CString& text) {
  return storedBytes([&](CArchive& archive) { archive << text; });
}

CString loaded(const std::string& bytes) {
  CString text = _T("before");
  loadBytes(bytes, [&](CArchive& archive) { archive >> text; });
  return text;
}

std::string little(unsigned value, int bytes) {
  std::string result;
  for (int i = 0; i < bytes; ++i) {
    result += static_cast<char>(value >> (8 * i));
  }
  return result;
}

// The length as it stands in the file.
std::string lengthForm(unsigned length) {
  if (length < 0xFF) {
    return little(length, 1);
  }
  return length < 0xFFFE ? std::string("\xFF").append(little(length, 2))
                         : std::string("\xFF\xFF\xFF").append(little(length, 4));
}

std::string wideUnits(unsigned count) {
  std::string units;
  for (unsigned i = 0; i < count; ++i) {
    units += little('a' + i % 26, 2);
  }
  return units;
}

TEST(ArchiveText, ShortTextsByteByByte) {
  EXPECT_EQ(stored(CString()), std::string("\xFF\xFE\xFF\x00", 4));
  EXPECT_EQ(stored(_T("a\u20AC")), std::string("\xFF\xFE\xFF\x02\x61\x00\xAC\x20", 8));
  EXPECT_EQ(stored(CString(_T("a\0b"), 3)), std::string("\xFF\xFE\xFF\x03"
                                                        "a\0\0\0b\0",
                                                        10));
}

TEST(ArchiveText, LengthsAtTheEdgesOfEveryForm) {
  for (const unsigned length :
       {0U, 1U, 253U, 254U, 255U, 256U, 4096U, 65533U, 65534U, 65535U, 65536U, 70000U}) {
    std::string narrow;
    CString text;
    for (unsigned i = 0; i < length; ++i) {
      narrow += static_cast<char>('a' + i % 26);
    }
    text = narrow.c_str();
    EXPECT_EQ(stored(text), wideMark + lengthForm(length) + wideUnits(length)) << length;
    EXPECT_EQ(loaded(wideMark + lengthForm(length) + wideUnits(length)), text) << length;
    EXPECT_EQ(loaded(lengthForm(length) + narrow), text) << length;
  }
}

TEST(ArchiveText, LongFormsOfShortLengthsAreRead) {
  EXPECT_EQ(toUtf8(loaded(std::string("\xFF\x02\x00", 3) + "ab")), "ab");
  EXPECT_EQ(toUtf8(loaded(std::string("\xFF\xFF\xFF\x02\x00\x00\x00", 7) + "ab")), "ab");
  EXPECT_EQ(toUtf8(loaded(wideMark + std::string("\xFF\x01\x00", 3) + little('z', 2))), "z");
}

TEST(ArchiveText, EightBitTextIsWidened) {
  EXPECT_EQ(toUtf8(loaded("\x03"
                          "a\xE9\x80")),
            "aé€");
}

TEST(ArchiveText, EveryCutOffFormEndsTheFile) {
  for (const std::string& whole :
       {stored(_T("abc")), stored(CString(_T('x'), 300)), stored(CString(_T('x'), 70000)),
        std::string("\x03"
                    "abc"),
        lengthForm(300) + std::string(300, 'x')}) {
    const std::size_t step = whole.size() > 1000 ? 997 : 1;
    for (std::size_t length = 0; length < whole.size(); length += step) {
      EXPECT_EQ(archiveCause([&] { loaded(whole.substr(0, length)); }), CArchiveException::endOfFile)
          << length;
    }
  }
}

TEST(ArchiveText, ReadingTextThatIsCutOffKeepsTheTextBefore) {
  const Promising promising(Promising::more);
  CString text = _T("before");
  EXPECT_EQ(archiveCause([&] {
              loadBytes(
                  "\x05"
                  "ab",
                  [&](CArchive& archive) { archive >> text; });
            }),
            CArchiveException::endOfFile);
  EXPECT_EQ(toUtf8(text), "before");
}

// A file of a few bytes that claims gigabytes takes no more memory than a piece of them.
TEST(ArchiveText, LyingLengthsEndTheFile) {
  const Promising promising(Promising::more);
  for (const std::string& lie :
       {std::string("\xFF\xFF\xFF\xFF\xFF\xFF\x7F", 7), std::string("\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 7),
        wideMark + std::string("\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 7),
        wideMark + std::string("\xFF\xFD\xFF", 3)}) {
    EXPECT_EQ(archiveCause([&] { loaded(lie + "abc"); }), CArchiveException::endOfFile);
    const TempFolder folder;
    CFile file(folder.write("x", lie + "abc"), CFile::modeRead);
    EXPECT_EQ(archiveCause([&] {
                CArchive archive(&file, CArchive::load);
                CString text;
                archive >> text;
              }),
              CArchiveException::endOfFile);
  }
}

TEST(ArchiveText, OfAFileWithoutALengthIsReadAcrossTheBuffersEnd) {
  for (const int length : {10, 126, 127, 300, 5000, 70000}) {
    const CString text(_T('x'), length);
    StreamFile file(stored(text) + stored(_T("next")));
    CArchive archive(&file, CArchive::load, 128);
    CString first;
    CString second;
    archive >> first >> second;
    EXPECT_EQ(first, text) << length;
    EXPECT_EQ(toUtf8(second), "next");
  }
}

TEST(ArchiveText, SecondMarkIsRefused) {
  EXPECT_EQ(archiveCause([] { loaded(wideMark + wideMark + std::string(10, '\0')); }),
            CArchiveException::genericException);
}

TEST(ArchiveText, SeveralTextsFollowEachOther) {
  const std::string bytes = storedBytes(
      [](CArchive& archive) { archive << CString(_T("one")) << 2 << CString() << CString(_T("three")); });
  loadBytes(bytes, [](CArchive& archive) {
    CString one;
    CString empty = _T("x");
    CString three;
    int two = 0;
    archive >> one >> two >> empty >> three;
    EXPECT_EQ(toUtf8(one + _T("|") + empty + _T("|") + three), "one||three");
    EXPECT_EQ(two, 2);
  });
}

TEST(ArchiveString, WritesUnitsAndNothingElse) {
  EXPECT_EQ(storedBytes([](CArchive& archive) {
              archive.WriteString(_T("a\r\n\u20AC"));
              archive.WriteString(_T(""));
            }),
            std::string("a\0\r\0\n\0\xAC\x20", 8));
}

TEST(ArchiveString, ReadsLines) {
  const std::string bytes =
      storedBytes([](CArchive& archive) { archive.WriteString(_T("one\r\n\ntwo\rx\nend")); });
  loadBytes(bytes, [](CArchive& archive) {
    CString line;
    EXPECT_TRUE(archive.ReadString(line));
    EXPECT_EQ(toUtf8(line), "one");
    EXPECT_TRUE(archive.ReadString(line));
    EXPECT_EQ(toUtf8(line), "");
    EXPECT_TRUE(archive.ReadString(line));
    EXPECT_EQ(toUtf8(line), "two\rx");
    EXPECT_TRUE(archive.ReadString(line));
    EXPECT_EQ(toUtf8(line), "end");
    EXPECT_FALSE(archive.ReadString(line));
    EXPECT_EQ(toUtf8(line), "");
  });
}

}  // namespace
