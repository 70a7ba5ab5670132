// readANSI gives the lines of 8-bit text; the parser sees the very same lines.
#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <new>

#include "import/AnsiLineReader.h"
#include "tests/import/CtfImportTest.h"

namespace {

class ReadAnsi : public CtfImport {
 protected:
  // All lines, and last the text that came with the end of the file.
  Texts lines(std::string_view bytes) {
    CFile file(folder.write("lines.txt", bytes), CFile::modeRead);
    CArchive archive(&file, CArchive::load, 4096);
    Texts all;
    CString line;
    while (set->readANSI(archive, line) == 1) {
      all.push_back(toUtf8(line));
    }
    all.push_back(toUtf8(line));
    return all;
  }
};

}  // namespace

TEST_F(ReadAnsi, LineFeedEndsALine) {
  EXPECT_EQ(lines("one\ntwo\n"), (Texts{"one", "two", ""}));
}

TEST_F(ReadAnsi, CarriageReturnEndsALine) {
  EXPECT_EQ(lines("one\rtwo\r"), (Texts{"one", "two", ""}));
}

TEST_F(ReadAnsi, CarriageReturnAndLineFeedEndOneLine) {
  EXPECT_EQ(lines("one\r\ntwo\r\n"), (Texts{"one", "two", ""}));
}

TEST_F(ReadAnsi, BlankLinesAreNeverSeen) {
  EXPECT_EQ(lines("\n\r\n\rone\n\n\n\r\rtwo\n\n"), (Texts{"one", "two", ""}));
}

TEST_F(ReadAnsi, LinesAreNotTrimmed) {
  EXPECT_EQ(lines(" \tone \t\n \n"), (Texts{" \tone \t", " ", ""}));
}

TEST_F(ReadAnsi, TheLastLineWithoutAnEndComesWithTheEndOfTheFile) {
  EXPECT_EQ(lines("one\ntwo"), (Texts{"one", "two"}));
}

TEST_F(ReadAnsi, AnEmptyFileGivesNoLine) {
  EXPECT_EQ(lines(""), (Texts{""}));
}

TEST_F(ReadAnsi, ALineOf2047BytesIsOneLine) {
  const std::string line(2047, 'x');
  EXPECT_EQ(lines(line + "\nnext\n"), (Texts{line, "next", ""}));
}

TEST_F(ReadAnsi, ALineOf2048BytesIsOneLineAndItsEndIsSkipped) {
  const std::string line(2048, 'x');
  EXPECT_EQ(lines(line + "\nnext\n"), (Texts{line, "next", ""}));
}

TEST_F(ReadAnsi, ALineOf2049BytesComesInTwoPieces) {
  EXPECT_EQ(lines(std::string(2048, 'x') + "y\nnext\n"), (Texts{std::string(2048, 'x'), "y", "next", ""}));
}

TEST_F(ReadAnsi, APieceOfALongerLineEndsWithItsBytesWhateverStoodInTheReadersMemory) {
  CFile file(folder.write("long", std::string(2048, 'x') + "y\n"), CFile::modeRead);
  CArchive archive(&file, CArchive::load, 4096);
  alignas(AnsiLineReader) char memory[sizeof(AnsiLineReader)];
  std::fill(std::begin(memory), std::end(memory), '}');
  auto* reader = new (memory) AnsiLineReader(archive);
  AnsiLine line;
  EXPECT_TRUE(reader->next(line));
  EXPECT_EQ(line.end() - line.begin(), 2048);
  EXPECT_FALSE(line.contains("}"));
  std::destroy_at(reader);
}

TEST_F(ReadAnsi, A2048thByteIsALineEvenAtTheEndOfTheFile) {
  EXPECT_EQ(lines(std::string(2048, 'x')), (Texts{std::string(2048, 'x'), ""}));
}

TEST_F(ReadAnsi, LinesAcrossTheArchivesBufferAreWhole) {
  Texts expected;
  std::string bytes;
  for (int length = 1; length <= 300; ++length) {
    expected.emplace_back(static_cast<std::size_t>(length), static_cast<char>('a' + length % 26));
    bytes += expected.back() + "\r\n";
  }
  expected.emplace_back();
  EXPECT_EQ(lines(bytes), expected);
}

TEST_F(ReadAnsi, BytesAreWidenedFromTheAnsiCodePage) {
  EXPECT_EQ(lines("\xE4\x80\x99\n"), (Texts{"\u00E4\u20AC\u2122", ""}));
}

TEST_F(ReadAnsi, Utf8BytesAreTakenOneByOne) {
  EXPECT_EQ(lines("\xC3\xA4\n"), (Texts{"\u00C3\u00A4", ""}));
}

TEST_F(ReadAnsi, AZeroByteEndsTheTextButNotTheLine) {
  using namespace std::string_view_literals;
  EXPECT_EQ(lines("one\0hidden\ntwo\n"sv), (Texts{"one", "two", ""}));
}

TEST_F(ReadAnsi, ALineOfZeroBytesIsAnEmptyLine) {
  using namespace std::string_view_literals;
  EXPECT_EQ(lines("\0\0\ntwo\n"sv), (Texts{"", "two", ""}));
}

TEST_F(ReadAnsi, TheArchiveGoesOnRightBehindTheLine) {
  CFile file(folder.write("mixed", "line\nrest"), CFile::modeRead);
  CArchive archive(&file, CArchive::load, 4096);
  CString line;
  ASSERT_EQ(set->readANSI(archive, line), 1);
  BYTE next = 0;
  archive >> next;
  EXPECT_EQ(next, 'r');
}

TEST_F(ReadAnsi, AllLineEndsGiveTheSameImport) {
  const std::string feeds = oneSphere + dipoles(3);
  for (const std::string_view end : {"\r", "\r\n", "\n\n", "\n\r"}) {
    std::string bytes;
    for (const char c : feeds) {
      bytes += c == '\n' ? std::string(end) : std::string(1, c);
    }
    set->cleanDipoles();
    EXPECT_EQ(parse(bytes), 1);
    EXPECT_EQ(labels(), (Texts{"d1", "d2", "d3"}));
  }
  EXPECT_EQ(shown(), Texts{});
}
