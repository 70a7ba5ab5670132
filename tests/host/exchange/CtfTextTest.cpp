// A set goes out as a CTF file, and an import of it is the set that an import made: bit by bit, in every
// member.
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "host/exchange/CtfText.h"
#include "host/exchange/ImportFile.h"
#include "host/text/PathText.h"
#include "tests/host/exchange/HostileSet.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"

namespace {

using host::DipoleFormat;
using host::DipoleValue;
using host::ImportedFile;

struct CtfText : testing::Test {
  ImportedFile import(const std::string& text) {
    user.answer(IDYES);
    return host::importFile(folder.write("a.dip", text), DipoleFormat::ctf);
  }
  std::string written(const ImportedFile& file) {
    const host::CtfText ctf = ctfText(*file.set, file.unknown);
    EXPECT_EQ(ctf.losses.sentence(), "");
    return ctf.text;
  }
  void expectSame(const ImportedFile& one, const ImportedFile& other) {
    EXPECT_TRUE(isSame(wholeSet(*one.set), wholeSet(*other.set)));
    for (int slot = 0; slot < one.set->m_totalDipoles; ++slot) {
      ASSERT_EQ(one.unknown.of(slot), other.unknown.of(slot)) << slot;
    }
  }

  TempFolder folder;
  ScriptedOperator user;
};

const std::string header =
    "File_Info\n{\n\tVERSION:\tCTF_HEAD_MODEL_FILE_VERSION_5.0\n  PATIENT: Anna B\n}\n"
    "Model\n{\n\tMODEL_TYPE:\tMEG_ONLY\nMRI_FILE:head.mri\n}\n"
    "MEG_Sphere\n{\n\tORIGIN_X:\t0.123\n\tORIGIN_Y:\t-0.3\n\tORIGIN_Z:\t5.01\n\tRADIUS:\t7.77\n}\n"
    "Fid_Points\n{\n\tNASION:\t128\t20\t140\n\tLEFT_EAR:\t40\t130\t160\n\tRIGHT_EAR:\t216\t131\t161\n}\n";

const std::string rowOfOne = "Dipoles\n{\n// xp (cm) Mom(nAm)\n1: -2.9 3 1 1 0 0 3 spike\n}\n";
const std::string fitOfOne = "Dipole_FitInfo\n{\n1: 1 2 0.1 1 12.5 0 0 0 1 a.ds\n}\n";

}  // namespace

TEST_F(CtfText, OfAnImportIsThatImportAgain) {
  for (const char* name : {"auditory.dip", "spikes.dip", "moving.dip"}) {
    user.answer(IDYES);
    const ImportedFile file =
        host::importFile(CString(examplesFolder().c_str()) + CString(name), DipoleFormat::ctf);
    ASSERT_GT(file.dipoles(), 0);
    const ImportedFile back = import(written(file));
    ASSERT_EQ(back.failure, "");
    expectSame(file, back);
  }
}

// 100 files of rows at random, headers and sections there or not.
TEST_F(CtfText, OfRandomImportsIsThatImportAgain) {
  for (unsigned seed = 0; seed < 100; ++seed) {
    std::mt19937 random(seed);
    const auto number = [&](double most) {
      const double value = std::uniform_real_distribution<double>(-most, most)(random);
      return std::to_string(static_cast<double>(static_cast<float>(value)));
    };
    const auto below = [&](int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); };
    std::string dipoles;
    std::string flags;
    std::string fits;
    const int count = below(40);
    for (int i = 1; i <= count; ++i) {
      const std::string front = std::to_string(i) + ":\t";
      dipoles += front;
      for (const double most : {12.0, 12.0, 12.0, 1.0, 1.0, 1.0, 500.0}) {
        dipoles += number(most) + " ";
      }
      dipoles += seed % 3 == 0 ? "\n" : "label(" + std::to_string(below(9)) + ")/x\n";
      flags += front + std::to_string(below(9)) + " " + std::to_string(below(6)) + " 1 1 1\n";
      fits += front + std::to_string(below(99)) + " " + std::to_string(below(9)) + " " + number(2.0) + " 1 " +
              number(100.0) + " 0 0 0 1 a.ds\n";
    }
    std::string text = seed % 2 == 0 ? header : "";
    text += "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo " +
            std::string(seed % 5 == 0 ? "Mom" : "Mom(nAm)") + " Label\n" + dipoles + "}\n";
    text += seed % 4 == 0 ? "" : "Dipole_Flags\n{\n" + flags + "}\n";
    text += seed % 7 == 0 ? "" : "Dipole_FitInfo\n{\n" + fits + "}\n";
    const ImportedFile file = import(text);
    ASSERT_EQ(file.dipoles(), count);
    expectSame(file, import(written(file)));
  }
}

TEST_F(CtfText, HasTheLayoutOfCtf) {
  EXPECT_EQ(
      written(import(header + "Dipoles\n{\n// xp (cm) Mom(nAm)\n1: -2.9 3 1 1 0 0 3 spike_1\n}\n"
                              "Dipole_FitInfo\n{\n1: 1 2 0.1 1 12.5 0 0 0 1 a.ds\n}\n")),
      "File_Info\n{\n\tVERSION:\tCTF_HEAD_MODEL_FILE_VERSION_5.0\n\t\tPATIENT: Anna B\n}\n"
      "\nModel\n{\n\tMODEL_TYPE:\tMEG_ONLY\nMRI_FILE:head.mri\n}\n"
      "\nMEG_Sphere\n{\n\tORIGIN_X:\t0.123\n\tORIGIN_Y:\t-0.3\n\tORIGIN_Z:\t5.01\n\tRADIUS:\t7.77\n}\n"
      "\nFid_Points\n{\n\t// Fid. Points\tSag\tCor\tAxi\n\tNASION:\t128\t20\t140\n"
      "\tLEFT_EAR:\t40\t130\t160\n\tRIGHT_EAR:\t216\t131\t161\n}\n"
      "\nDipoles\n{\n\t// Dipole parameters ...\n"
      "\t// xp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tLabel\n"
      "\t1:\t-2.9\t3\t1\t1\t0\t0\t3\tspike_1\n}\n"
      "\nDipole_Flags\n{\n\t// Colour\tShape\tshow dir.\tshowlabel\tshow err\n\t1:\t0\t0\t1\t1\t1\n}\n"
      "\nDipole_FitInfo\n{\n\t//\tTrial\tStart\tLatency (s)\tN_Pts\tError\tMEG_Error\tEEG_Error\tErrType\t"
      "FitType\tGood\tDataset\n\t1:\t1\t2\t0.1\t1\t12.5\t13\t0\t0\t0\t1\t-\n}\n");
}

TEST_F(CtfText, OfAnyOtherSetIsAsNearAsItCanBeAndTheRestIsTold) {
  const auto set = std::make_unique<CDipoleFace9File>();
  for (int i = 0; i < 3; ++i) {
    set->addDipole();
    set->m_dipoles[i]->m_location[0] = 10.0 / 3.0;
    set->m_dipoles[i]->m_label = _T("fine");
  }
  set->m_dipoles[0]->m_label = _T("left {spike} // one");
  set->m_dipoles[1]->setColorValue(RGB(250, 10, 10));
  set->m_dipoles[1]->m_display = 7;
  set->m_dipoles[2]->m_selected = true;
  set->m_dipoles[2]->m_label = _T("");
  set->m_patient = _T("A // B");
  host::UnknownValues unknown;
  unknown.mark(1, DipoleValue::fitError);
  const host::CtfText out = ctfText(*set, unknown);
  EXPECT_EQ(
      out.losses.sentence(),
      "This file cannot hold: digits of the position beyond single precision of 3 dipoles, spelling of the "
      "label of 2 dipoles, shade of the color in 3D of 1 dipole, display state of 1 dipole, digits of the "
      "fit error beyond single precision of 3 dipoles, that the fit error is unknown of 1 dipole, color of 1 "
      "dipole, selection of 1 dipole, the text of the patient.");
  const ImportedFile back = import(out.text);
  ASSERT_EQ(back.dipoles(), 3);
  EXPECT_EQ(host::utf8Of(back.set->m_dipoles[0]->m_label), "left__spike__/__one");
  EXPECT_EQ(host::utf8Of(back.set->m_dipoles[2]->m_label), "Non");
  EXPECT_NEAR(back.set->m_dipoles[0]->m_location[0], 10.0 / 3.0, 2e-7);
  EXPECT_EQ(back.set->m_dipoles[1]->m_colorF[0], 1.0F);
  EXPECT_EQ(back.set->m_dipoles[1]->m_colorF[1], 0.0F);
}

TEST_F(CtfText, UnknownValuesAreWrittenAsTheyStandAndToldByName) {
  const std::string start = "This file cannot hold: that the ";
  for (const auto& [value, name] :
       {std::pair(DipoleValue::moment, "moment"), std::pair(DipoleValue::orientation, "orientation"),
        std::pair(DipoleValue::latency, "latency"), std::pair(DipoleValue::fitError, "fit error")}) {
    ImportedFile file = import(rowOfOne + fitOfOne);
    file.unknown.mark(0, value);
    const host::CtfText out = ctfText(*file.set, file.unknown);
    EXPECT_EQ(out.losses.sentence(), start + name + " is unknown of 1 dipole.");
    EXPECT_NE(out.text.find("\t1:\t-2.9\t3\t1\t1\t0\t0\t3\tspike\n"), std::string::npos) << out.text;
    EXPECT_NE(out.text.find("\t1:\t1\t2\t0.1\t1\t12.5\t"), std::string::npos) << out.text;
  }
  ImportedFile two = import("Dipoles\n{\n// (cm)\n1: 1 2 3 1 0 0 5 a\n2: 1 2 3 1 0 0 5 b\n}\n");
  two.unknown.mark(1, DipoleValue::label);
  EXPECT_EQ(ctfText(*two.set, two.unknown).losses.sentence(), start + "label is unknown of 1 dipole.");
}

TEST_F(CtfText, FractionsOfFiducialPointsAreRoundedAndTold) {
  const ImportedFile file = import(header + rowOfOne);
  EXPECT_EQ(ctfText(*file.set, file.unknown).losses.sentence(), "");
  CFiduciaryPtzq& nasion = file.set->m_fiducialMri.m_points[CFiducial::nasion];
  nasion.setPosition(128.0, 116.0, 235.75);
  const host::CtfText out = ctfText(*file.set, file.unknown);
  EXPECT_EQ(out.losses.sentence(), "This file cannot hold: fractions of the fiducial points of the MRI.");
  EXPECT_NE(out.text.find("\tNASION:\t128\t20\t140\n"), std::string::npos) << out.text;
}

TEST_F(CtfText, ALabelIsCutWhereTheImportWouldCutItsLineAndThatIsTold) {
  const ImportedFile file = import(rowOfOne);
  for (const std::size_t size : {1000U, 1001U, 5000U}) {
    file.set->m_dipoles[0]->m_label = CString(std::string(size, 'x').c_str());
    const host::CtfText out = ctfText(*file.set, file.unknown);
    EXPECT_EQ(out.losses.sentence(),
              size == 1000 ? "" : "This file cannot hold: spelling of the label of 1 dipole.");
    EXPECT_EQ(host::utf8Of(import(out.text).set->m_dipoles[0]->m_label), std::string(1000, 'x'));
  }
}

TEST_F(CtfText, AHeaderThatIsNoLineOfItsOwnIsLeftOutAndTold) {
  const ImportedFile file = import(rowOfOne);
  const std::string lost = "This file cannot hold: the text of the patient.";
  for (const std::string& text : {std::string("A\nB"), std::string("A\rB"), std::string("A{"),
                                  std::string("}B"), std::string("A//B"), std::string(2000, 'x')}) {
    file.set->m_patient = CString(text.c_str());
    const host::CtfText out = ctfText(*file.set, file.unknown);
    EXPECT_EQ(out.losses.sentence(), lost) << text;
    EXPECT_EQ(out.text.find("PATIENT"), std::string::npos) << text;
  }
  file.set->m_patient = CString(std::string(1999, 'x').c_str());
  EXPECT_EQ(import(written(file)).set->m_patient, file.set->m_patient);
  file.set->m_patient = host::fromUtf8("A \xE8\x84\xB3");  // no unit of the code page
  const host::CtfText out = ctfText(*file.set, file.unknown);
  EXPECT_EQ(out.losses.sentence(), lost);
  EXPECT_NE(out.text.find("PATIENT:A ?\n"), std::string::npos) << out.text;
}

// A set file keeps that there was one and not where.
TEST_F(CtfText, ASphereWithoutARadiusIsLeftOutAndTold) {
  const ImportedFile file = import(header + rowOfOne);
  EXPECT_NE(written(file).find("MEG_Sphere"), std::string::npos);
  file.set->m_sphereCtf.m_radius = 0.0;
  const host::CtfText out = ctfText(*file.set, file.unknown);
  EXPECT_EQ(out.losses.sentence(), "This file cannot hold: that there was a head sphere.");
  EXPECT_EQ(out.text.find("MEG_Sphere"), std::string::npos);
  file.set->m_bCtfSphereSet = 0;
  EXPECT_EQ(written(file).find("MEG_Sphere"), std::string::npos);
}

TEST_F(CtfText, OfHostileSetsIsAFileOfAsManyDipoles) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    HostileValues hostile(seed);
    const int count = hostile.below(60);
    const Set set = hostile.set(count);
    int filled = 0;
    for (int slot = 0; slot < set->m_totalDipoles; ++slot) {
      if (CDipoleszq* const dipole = set->m_dipoles[slot]) {
        ++filled;
        for (double& coordinate : dipole->m_location) {  // beyond 300 mm the import asks
          coordinate = coordinate > 300.0 ? 299.0 : coordinate;
        }
      }
    }
    const host::CtfText out = ctfText(*set, hostile.unknown(count));
    const ImportedFile once = import(out.text);
    ASSERT_EQ(once.dipoles(), filled) << out.text;
    const ImportedFile twice = import(host::ctfText(*once.set, {}).text);
    EXPECT_TRUE(isSame(wholeSet(*once.set), wholeSet(*twice.set))) << seed;
  }
}

TEST_F(CtfText, EmptySlotsAreLeftOutAndRowsNumberedOn) {
  const ImportedFile file =
      import("Dipoles\n{\n// (cm)\n1: 1 2 3 1 0 0 5 a\n2: 1 2 3 1 0 0 5 b\n3: 1 2 3 1 0 0 5 c\n}\n");
  file.set->deleteDipole(1, 0);
  const std::string text = ctfText(*file.set, file.unknown).text;
  EXPECT_NE(text.find("\t2:\t1\t2\t3\t1\t0\t0\t5\tc\n"), std::string::npos);
}
