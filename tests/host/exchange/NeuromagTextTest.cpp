// Neuromag's text of dipoles is read whatever program or hand wrote it, and written as MNE does.
#include <cmath>
#include <gtest/gtest.h>
#include <string>

#include "host/exchange/DelimitedText.h"
#include "host/exchange/NeuromagText.h"

namespace {

using host::NeuromagDipole;
using host::NeuromagDipoles;
using host::readNeuromagText;

const std::string systemLine = "# CoordinateSystem \"Head\"\n";
const std::string heading =
    "#   begin     end   X (mm)   Y (mm)   Z (mm)   Q(nAm)  Qx(nAm)  Qy(nAm)  Qz(nAm)    g/%\n";
const std::string first =
    "    100.0   100.0    10.10   -52.30    58.50   25.000   15.000   20.000    0.000  93.46\n";
const std::string second =
    "    123.5   123.5   -13.00    51.00    56.00  110.000    0.000    0.000  110.000 100.00\n";
const std::string name = "## Name \"spike A dipoles\" Style \"Dipoles\"";
const std::string whole = systemLine + heading + first + second + name;

void expectFirst(const NeuromagDipole& dipole) {
  EXPECT_EQ(dipole.begin, 100.0);
  EXPECT_EQ(dipole.place, (host::Vector3{10.10, -52.30, 58.50}));
  EXPECT_EQ(dipole.amplitude, 25.0);
  EXPECT_EQ(dipole.moment, (host::Vector3{15, 20, 0}));
  EXPECT_EQ(dipole.goodness, 93.46);
}

std::string faultOf(const std::string& text) {
  try {
    (void)readNeuromagText(text);
  } catch (const host::TableFault& fault) {
    return fault.of("t").what();
  }
  return "was taken";
}

}  // namespace

TEST(NeuromagText, IsReadWhole) {
  const NeuromagDipoles file = readNeuromagText(whole);
  ASSERT_EQ(file.dipoles.size(), 2U);
  expectFirst(file.dipoles[0]);
  EXPECT_EQ(file.dipoles[1].end, 123.5);
  EXPECT_EQ(file.name, "spike A");
  EXPECT_TRUE(file.hasHeading && file.hasSystem && file.leftOut.empty());
}

TEST(NeuromagText, IsWrittenByteForByteAsItWasRead) {
  EXPECT_EQ(neuromagText(readNeuromagText(whole)), whole);
  EXPECT_EQ(neuromagText(readNeuromagText(systemLine + heading + first)), systemLine + heading + first);
}

TEST(NeuromagText, WritesWhatIsUnknownAsNanAndNeverAMinusZero) {
  NeuromagDipoles file;
  file.dipoles.push_back({NeuromagDipole::none, NeuromagDipole::none, {-0.001, 0, 0}, 0.0, {0, 0, -0.0}});
  EXPECT_EQ(neuromagText(file), systemLine + heading +
                                    "      nan     nan     0.00     0.00     0.00    0.000    0.000    0.000 "
                                    "   0.000    nan\n");
}

TEST(NeuromagText, LargeNumbersStayApart) {
  NeuromagDipoles file;
  file.dipoles.push_back({123456789.5, 1e12, {-123456.78, 1e300, 0}, 1e9, {-1e8, 2, 3}, -1234567.89});
  const NeuromagDipoles back = readNeuromagText(neuromagText(file));
  EXPECT_EQ(back.dipoles[0].begin, 123456789.5);
  EXPECT_EQ(back.dipoles[0].end, 1e12);
  EXPECT_EQ(back.dipoles[0].place.y, 1e300);
  EXPECT_EQ(back.dipoles[0].goodness, -1234567.89);
}

// Each of these is met: some readers refuse them, or take them for rows.
TEST(NeuromagText, ToleratesWhatHandsAndProgramsMakeOfIt) {
  std::string windows;
  std::string old;
  for (const char c : whole) {
    windows += c == '\n' ? "\r\n" : std::string(1, c);
    old += c == '\n' ? '\r' : c;
  }
  for (const std::string& text : {
           windows,                                                              // line ends
           old,                                                                  // of a Macintosh
           "\xEF\xBB\xBF" + whole,                                               // byte order mark
           "\n\n" + systemLine + "\n" + heading + "\n" + first + "\n" + second,  // blank lines
           systemLine + heading + "# a comment\n" + first + "  # indented\n" + second + "% another\n",
           name + "\n" + systemLine + heading + first + second,  // the name in front
           systemLine + "## Name \"x\"\n" + heading + "## y\n" + first + second,
           systemLine + "# begin end X/mm Y/mm Z/mm Q/nAm Qx/nAm Qy/nAm Qz/nAm g/%\n" + first + second,
           systemLine + "%BEGIN END x (MM) y (mm) z (mm) q(nam) QX(NAM) qy(nam) qz(nam) G/%\n" + first +
               second,
           heading + first + second,
           whole + "\n",
       }) {
    const NeuromagDipoles file = readNeuromagText(text);
    ASSERT_EQ(file.dipoles.size(), 2U) << text;
    expectFirst(file.dipoles[0]);
  }
}

TEST(NeuromagText, SaysWhatItDoesNotName) {
  EXPECT_FALSE(readNeuromagText(heading + first).hasSystem);
  const NeuromagDipoles bare = readNeuromagText(first + second);
  EXPECT_FALSE(bare.hasHeading);
  expectFirst(bare.dipoles[0]);
}

TEST(NeuromagText, FindsColumnsByTheirNamesInAnyOrder) {
  const NeuromagDipoles file = readNeuromagText(
      "# g/% Qz(nAm) Qy(nAm) Qx(nAm) Z (mm) Y (mm) X (mm) begin\n93.46 0 20 15 58.5 -52.3 10.1 100\n");
  EXPECT_TRUE(std::isnan(file.dipoles[0].amplitude));
  EXPECT_TRUE(std::isnan(file.dipoles[0].end));
  NeuromagDipole dipole = file.dipoles[0];
  dipole.amplitude = 25;
  expectFirst(dipole);
}

TEST(NeuromagText, CountsWhatItHasNoRoomFor) {
  std::string more = heading;
  more.insert(more.size() - 1, "    khi^2  free  vol/mm^3");
  std::string row = first;
  row.insert(row.size() - 1, " 12.5 61 nan");
  const NeuromagDipoles file = readNeuromagText(systemLine + more + row + row);
  const std::vector<std::pair<std::string, int>> expected = {{"khi^2", 2}, {"free", 2}};
  EXPECT_EQ(file.leftOut, expected);
  expectFirst(file.dipoles[1]);
}

TEST(NeuromagText, TakesNumbersThatAreNone) {
  std::string row = first;
  row.replace(row.find("93.46"), 5, "  nan");
  row.replace(row.find("100.0"), 5, "-inf ");
  const NeuromagDipole dipole = readNeuromagText(systemLine + heading + row).dipoles[0];
  EXPECT_TRUE(std::isnan(dipole.goodness));
  EXPECT_TRUE(std::isinf(dipole.begin));
}

TEST(NeuromagText, TheLastNameIsTaken) {
  EXPECT_EQ(readNeuromagText(whole + "\n%% Name \"other\"").name, "other");
  EXPECT_EQ(readNeuromagText(whole + "\n## Name unquoted").name, "spike A");
}

TEST(NeuromagText, RefusesWhatCannotBeRightAndSaysWhere) {
  EXPECT_EQ(faultOf(""), "t: it holds no dipoles");
  EXPECT_EQ(faultOf(systemLine + heading), "t: it holds no dipoles");
  EXPECT_EQ(faultOf(systemLine + heading + "1 2 3\n"),
            "t, line 3: this line has 3 cells, the heading names 10");
  EXPECT_EQ(faultOf(systemLine + heading + first + first.substr(0, first.size() - 1) + " 5\n"),
            "t, line 4: this line has 11 cells, the heading names 10");
  EXPECT_EQ(faultOf(systemLine + heading + "1 2 3,5 4 5 6 7 8 9 10\n"),
            "t, line 3, column 3: \"3,5\" is no number");
  EXPECT_EQ(faultOf(systemLine + heading + "1 2 x 4 5 6 7 8 9 10\n"),
            "t, line 3, column 3: \"x\" is no number");
  EXPECT_EQ(faultOf("1 2 3 4 5 6 7 8 9 10 11\n"), "t, line 1: this line has 11 cells, the heading names 10");
  EXPECT_EQ(faultOf("# CoordinateSystem \"Device\"\n" + heading + first),
            "t, line 1: the positions are in the coordinate system \"Device\"; only \"Head\" is known");
  EXPECT_EQ(faultOf("# CoordinateSystem Head\n" + heading + first),
            "t, line 1: the positions are in the coordinate system \"\"; only \"Head\" is known");
  EXPECT_EQ(faultOf("# begin X (mm) Y (mm) Q(nAm) Qx(nAm) Qy(nAm) Qz(nAm) g/%\n" + first),
            "t, line 1: the heading has no column z/mm");
  EXPECT_EQ(faultOf("# begin begin g/%\n" + first), "t, line 1, column 2: the column begin is there twice");
  EXPECT_EQ(faultOf(whole + "\n" + heading + first), "t, line 6: a second heading follows rows of dipoles");
}
