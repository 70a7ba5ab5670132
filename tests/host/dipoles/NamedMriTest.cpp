// The MRI that a dipole file names is looked for by its last part, beside that file and nowhere else.
#include <gtest/gtest.h>
#include <string>

#include "host/dipoles/NamedMri.h"
#include "host/text/PathText.h"
#include "tests/support/TempFolder.h"

namespace {

std::string lastPart(const char* name) {
  return host::utf8Of(host::lastPartOf(CString(name)));
}

}  // namespace

TEST(NamedMri, IsTheLastPartWithoutBlanksAndKeyword) {
  for (const char* const name :
       {"head.mri", "  head.mri ", "/scans/head.mri", "C:\\scans\\head.mri", "..\\../head.mri", ":\thead.mri",
        "E:  head.mri", "_FILE:\t/a/b/head.mri\r"}) {
    EXPECT_EQ(lastPart(name), "head.mri") << name;
  }
  for (const char* const name : {"", "non", ".", "..", "/a/b/", "/a/..", "..\\..", ":\t..", " "}) {
    EXPECT_EQ(lastPart(name), "") << name;
  }
}

TEST(NamedMri, OfADriveLeadsOutOfTheFolderAndIsNone) {
  const bool hasDrives = std::filesystem::path("C:head.mri").has_root_name();
  EXPECT_EQ(lastPart("C:head.mri"), hasDrives ? "" : "C:head.mri");
}

TEST(NamedMri, IsFoundBesideItsFileByItsVeryNameFirst) {
  const TempFolder folder;
  const std::filesystem::path dipoles = host::pathOf(folder.path("a.dip"));
  EXPECT_TRUE(host::findNamedMri(dipoles, CString("head.mri")).empty());
  folder.write("Head.mri", std::string("1"));
  const std::filesystem::path found = host::findNamedMri(dipoles, CString(":\thead.MRI"));
  EXPECT_TRUE(std::filesystem::equivalent(found, host::pathOf(folder.path("Head.mri")))) << found;
  // Both names where the system keeps them apart, one file elsewhere.
  folder.write("head.mri", std::string("2"));
  EXPECT_EQ(host::findNamedMri(dipoles, CString("head.mri")).filename(), "head.mri");
  EXPECT_EQ(host::findNamedMri(dipoles, CString("Head.mri")).filename(), "Head.mri");
}
