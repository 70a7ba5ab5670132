// What a line holds is seen wherever in the file it stands: the reader takes the file in blocks, and looks at
// a block of plain text only once.
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "import/AnsiLineReader.h"

namespace {

// Beyond two blocks.
constexpr int farthest = 9000;

// Hands the line after `before` bytes of plain lines, and before many more, to `check`.
template <typename Check>
void readLineAt(int before, std::string_view text, Check check) {
  std::string bytes(static_cast<std::size_t>(before), 'p');
  for (std::size_t end = 99; end < bytes.size(); end += 100) {
    bytes[end] = '\n';
  }
  bytes += '\n';
  bytes += text;
  bytes += '\n' + std::string(1000, 'y') + '\n';
  CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
  CArchive archive(&file, CArchive::load);
  AnsiLineReader reader(archive);
  AnsiLine line;
  while (reader.next(line) && *line.begin() == 'p') {
  }
  check(line);
  ASSERT_TRUE(reader.next(line));
  EXPECT_EQ(line.text(), CString(_T('y'), 1000));
  archive.Close();
}

}  // namespace

TEST(AnsiLineReader, SeesWhatALineHoldsWhereverInTheFileItStands) {
  for (int before = 0; before < farthest; before += before % 1000 < 120 ? 1 : 17) {
    SCOPED_TRACE(before);
    readLineAt(before, "}", [](const AnsiLine& line) { EXPECT_TRUE(line.isEnd()); });
    readLineAt(before, "a // b", [](const AnsiLine& line) { EXPECT_TRUE(line.isPassedOver()); });
    readLineAt(before, "\xE9", [](const AnsiLine& line) { EXPECT_EQ(line.text(), CString(TCHAR{0xE9})); });
    readLineAt(before, std::string_view("a\0b", 3),
               [](const AnsiLine& line) { EXPECT_EQ(line.text(), CString(_T("a"))); });
    readLineAt(before, "x (cm)", [](const AnsiLine& line) { EXPECT_TRUE(line.isUnitHeader()); });
  }
}
