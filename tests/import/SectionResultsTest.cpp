// What the readers of a file's sections give to the parser: the importer goes on or stops by it.
#include "file/DipoleFace9File.h"
#include "import/AnsiLineReader.h"
#include "tests/import/CtfImportTest.h"
#include "tests/support/MemoryArchive.h"
#include "tests/support/PrivateMember.h"

namespace {

using Ctf = CDipoleFace8Import01_CTF;
using CtfSection = int (Ctf::*)(AnsiLineReader&);
using Msi = CDipoleFace8Import02_4DMSI;
using MsiZone = int (Msi::*)(AnsiLineReader&);

struct FileInfo : PrivateTag<CtfSection> {};
struct ModelInfo : PrivateTag<CtfSection> {};
struct MegSphere : PrivateTag<CtfSection> {};
struct StaticDipoles : PrivateTag<CtfSection> {};
struct MovingDipoles : PrivateTag<CtfSection> {};
struct FiducialPoints : PrivateTag<CtfSection> {};
struct Flags : PrivateTag<int (Ctf::*)(AnsiLineReader&, unsigned long)> {};
struct FitInfo : PrivateTag<int (Ctf::*)(AnsiLineReader&, int)> {};
struct MsiFileInfo : PrivateTag<MsiZone> {};
struct MsiDipoles : PrivateTag<MsiZone> {};
struct MsiFile : PrivateTag<int (Msi::*)(CString)> {};

}  // namespace

template struct PrivateMember<FileInfo, &Ctf::readCtfFileInfo>;
template struct PrivateMember<ModelInfo, &Ctf::readCtfModelInfo>;
template struct PrivateMember<MegSphere, &Ctf::readCtfMEGsphere>;
template struct PrivateMember<StaticDipoles, &Ctf::readCtfDipoles>;
template struct PrivateMember<MovingDipoles, &Ctf::readCtfMovingDipoles>;
template struct PrivateMember<FiducialPoints, &Ctf::readCtfMriFiducialPt>;
template struct PrivateMember<Flags, &Ctf::readCtfDipoleFlag>;
template struct PrivateMember<FitInfo, &Ctf::readCtfDipoleFitInfo>;
template struct PrivateMember<MsiFileInfo, &Msi::read4DMSIFileInfo>;
template struct PrivateMember<MsiDipoles, &Msi::read4DMSIDipoles>;
template struct PrivateMember<MsiFile, &Msi::parse4DDipoles>;

namespace {

class SectionResults : public testing::Test {
 protected:
  // Reads bytes from behind a section's name on; `more` is what the reader takes beside the lines.
  template <class Section, class... More>
  int result(Section section, const std::string& bytes, More... more) {
    int given = -1;
    loadBytes(bytes, [&](CArchive& archive) {
      AnsiLineReader reader(archive);
      given = ((*set).*section)(reader, more...);
    });
    return given;
  }

  void expectOneAtTheBraceAndZeroAtTheEndOfTheFile(CtfSection section, const std::string& body) {
    EXPECT_EQ(result(section, "{\n" + body + "}\n"), 1);
    EXPECT_EQ(result(section, "{\n" + body), 0);
    EXPECT_EQ(result(section, "{\n" + body + "}"), 0);  // a last line without an end is none
  }

  ScriptedOperator user;
  std::unique_ptr<CDipoleFace9File> set = std::make_unique<CDipoleFace9File>();
};

const std::string twoRows = unitHeader + "1: 1 2 3 0 0 1 5 a\n2: 1 2 3 0 0 1 5 b\n";
const std::string twoMoving = movingHeader + "1: 1 1 0.1 1 2 3 0 0 1 5 2 a\n2: 1 2 0.2 1 2 3 0 0 1 5 2 b\n";
const std::string twoFlags = "1: 0 0 0 0 0\n2: 0 0 0 0 0\n";
const std::string twoFits = "1: 1 1 0.1 0 5 0 0 0 x\n2: 1 1 0.1 0 5 0 0 0 x\n";
const std::string msiRow = "1 1 2 3 0 0 1 5 1 1 0.9 1 0 a b c 0 label\n";

}  // namespace

TEST_F(SectionResults, OfTextSectionsTellTheBraceFromTheEndOfTheFile) {
  expectOneAtTheBraceAndZeroAtTheEndOfTheFile(privateFunction<FileInfo>, "VERSION: 1\n");
  expectOneAtTheBraceAndZeroAtTheEndOfTheFile(privateFunction<ModelInfo>, "MRI_FILE: a\n");
  expectOneAtTheBraceAndZeroAtTheEndOfTheFile(privateFunction<FiducialPoints>, "NASION: 1 2 3\n");
}

TEST_F(SectionResults, OfTheSphereAreOneInEveryCase) {
  EXPECT_EQ(result(privateFunction<MegSphere>, "{\nRADIUS: 8\n}\n"), 1);
  EXPECT_EQ(result(privateFunction<MegSphere>, "{\nRADIUS: 8\n"), 1);
}

TEST_F(SectionResults, OfDipolesAreTheCollectionsCountOrZeroAtTheEndOfTheFile) {
  set->addDipole();
  EXPECT_EQ(result(privateFunction<StaticDipoles>, "{\n" + twoRows + "}\n"), 3);
  EXPECT_EQ(result(privateFunction<StaticDipoles>, "{\n" + twoRows), 0);
  EXPECT_EQ(result(privateFunction<MovingDipoles>, "{\n" + twoMoving + "}\n"), 7);
  EXPECT_EQ(result(privateFunction<MovingDipoles>, "{\n" + twoMoving), 0);
}

TEST_F(SectionResults, OfDipolesThatFindNoPlaceAreTheFullCount) {
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    set->addDipole();
  }
  EXPECT_EQ(result(privateFunction<StaticDipoles>, "{\n" + twoRows), 30000);
  EXPECT_EQ(result(privateFunction<MovingDipoles>, "{\n" + twoMoving), 30000);
  EXPECT_EQ(result(privateFunction<MsiDipoles>, msiRow), 30000);
}

TEST_F(SectionResults, OfRowsThatAddToDipolesAreTheFirstSlotAndTheRowsOrZeroAtTheEndOfTheFile) {
  for (int slot = 0; slot < 5; ++slot) {
    set->addDipole();
  }
  EXPECT_EQ(result(privateFunction<Flags>, "{\n" + twoFlags + "}\n", 3UL), 5);
  EXPECT_EQ(result(privateFunction<Flags>, "{\n" + twoFlags + "}\n", 1UL), 3);
  EXPECT_EQ(result(privateFunction<Flags>, "{\n" + twoFlags, 3UL), 0);
  EXPECT_EQ(result(privateFunction<FitInfo>, "{\n" + twoFits + "}\n", 3), 5);
  EXPECT_EQ(result(privateFunction<FitInfo>, "{\n" + twoFits + "}\n", 1), 3);
  EXPECT_EQ(result(privateFunction<FitInfo>, "{\n" + twoFits, 3), 0);
  EXPECT_EQ(result(privateFunction<Flags>, "{\n" + twoFlags, 29999UL), 30000);  // no slot for the second row
}

TEST_F(SectionResults, OfA4DTableAreZeroAtItsEndAndOneBehindItsInformation) {
  EXPECT_EQ(result(privateFunction<MsiDipoles>, msiRow), 0);
  EXPECT_EQ(set->m_totalDipoles, 1);
  EXPECT_EQ(result(privateFunction<MsiFileInfo>, "Dipole File: a\nDate of File: b\n"), 1);
  EXPECT_EQ(result(privateFunction<MsiFileInfo>, "Dipole File: a\nneither\n"), 1);
  EXPECT_EQ(result(privateFunction<MsiFileInfo>, "Dipole File: a\n"), 0);
  const TempFolder folder;
  EXPECT_EQ(((*set).*privateFunction<MsiFile>)(folder.write("a.txt", "no table\n")), 1);
}
