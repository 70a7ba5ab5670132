// What a .dip is stands in it, whatever its name says.
#include <gtest/gtest.h>
#include <string>

#include "host/exchange/DipContent.h"
#include "host/exchange/FileKind.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"

namespace {

using host::DipContent;
using host::dipContentOf;

const std::string heading =
    "#   begin     end   X (mm)   Y (mm)   Z (mm)   Q(nAm)  Qx(nAm)  Qy(nAm)  Qz(nAm)    g/%\n";
const std::string row =
    "    100.0   100.0    10.10   -52.30    58.50   25.000   15.000   20.000    0.000  93.46\n";

}  // namespace

TEST(DipContent, OfSectionsIsCtf) {
  EXPECT_EQ(dipContentOf("Dipoles\n{\n1: 1 2 3\n}\n"), DipContent::ctf);
  EXPECT_EQ(dipContentOf("// a comment\r\nFile_Info\r\n"), DipContent::ctf);
  EXPECT_EQ(dipContentOf("Fit_Results\n"), DipContent::ctf);
  EXPECT_EQ(dipContentOf("Anything\n\t{ \n"), DipContent::ctf);
}

TEST(DipContent, OfAHeadingOrASystemIsNeuromag) {
  EXPECT_EQ(dipContentOf(heading + row), DipContent::neuromag);
  EXPECT_EQ(dipContentOf("# CoordinateSystem \"Head\"\n"), DipContent::neuromag);
  EXPECT_EQ(dipContentOf("\xEF\xBB\xBF% begin Q/nAm\n"), DipContent::neuromag);
  EXPECT_EQ(dipContentOf("  # BEGIN x g/%\r\n"), DipContent::neuromag);
}

TEST(DipContent, ABraceDecidesBeforeAHeading) {
  EXPECT_EQ(dipContentOf(heading + "{\n"), DipContent::ctf);
}

TEST(DipContent, OfBareRowsIsToldApart) {
  EXPECT_EQ(dipContentOf(row), DipContent::rows);
  EXPECT_EQ(dipContentOf("\n" + row + row), DipContent::rows);
  EXPECT_EQ(dipContentOf("1 2 3 4 5 6 7 8 9\n"), DipContent::other);
  EXPECT_EQ(dipContentOf(row + "a { b }\n"), DipContent::other);
}

TEST(DipContent, OfNothingKnownIsOther) {
  EXPECT_EQ(dipContentOf(""), DipContent::other);
  EXPECT_EQ(dipContentOf("# some comment about the begin\nwords\n"), DipContent::other);
  EXPECT_EQ(dipContentOf(std::string(1000, '\0')), DipContent::other);
}

TEST(DipContent, LooksAtTheFrontAlone) {
  EXPECT_EQ(dipContentOf(std::string(host::dipContentBytes, '\n') + heading), DipContent::other);
}

TEST(DipContent, TellsTheFormatOfADipAndOfNothingElse) {
  const TempFolder folder;
  EXPECT_EQ(host::dipoleFormatOfFile(folder.write("a.dip", heading + row)), host::DipoleFormat::neuromag);
  EXPECT_EQ(host::dipoleFormatOfFile(folder.write("b.DIP", row)), host::DipoleFormat::neuromag);
  EXPECT_EQ(host::dipoleFormatOfFile(folder.write("c.dip", "Dipoles\n{\n}\n")), host::DipoleFormat::ctf);
  EXPECT_EQ(host::dipoleFormatOfFile(folder.write("d.dip", "")), host::DipoleFormat::ctf);
  EXPECT_EQ(host::dipoleFormatOfFile(folder.write("e.txt", heading + row)), host::DipoleFormat::msi);
  EXPECT_EQ(host::dipoleFormatOfFile(folder.write("f.bdip", row)), host::DipoleFormat::bdip);
  EXPECT_EQ(host::dipoleFormatOfFile(_T("there is none.dip")), host::DipoleFormat::ctf);
  EXPECT_EQ(host::dipoleFormatOfFile(CString(examplesFolder().c_str()) + _T("spikes.dip")),
            host::DipoleFormat::ctf);
}
