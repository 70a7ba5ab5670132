// Neuromag's dipoles come into a set in its own frame and units, and nothing is shown that the file does not
// say.
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "host/exchange/ImportFile.h"
#include "host/exchange/JoinedSet.h"
#include "host/head/NeuromagFrame.h"
#include "host/text/PathText.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"

namespace {

using host::DipoleFormat;
using host::DipoleValue;
using host::Finding;
using host::FindingCode;
using host::ImportedFile;
using host::Severity;

const std::string heading =
    "# CoordinateSystem \"Head\"\n"
    "# begin end X (mm) Y (mm) Z (mm) Q(nAm) Qx(nAm) Qy(nAm) Qz(nAm) g/%\n";
const host::Fiducials crooked{{5, 100, 0}, {-75, -5, 0}, {75, 5, 0}};

struct NeuromagSet : testing::Test {
  ImportedFile imported(const std::string& text, DipoleFormat format = DipoleFormat::neuromag,
                        const std::optional<host::Fiducials>& points = crooked) {
    return host::importFile(folder.write("a.dip", text), format, "a.dip", {}, points);
  }
  static const Finding* find(const ImportedFile& file, FindingCode code) {
    for (const Finding& finding : file.findings) {
      if (finding.code == code) {
        return &finding;
      }
    }
    return nullptr;
  }

  TempFolder folder;
  ScriptedOperator user;
};

}  // namespace

TEST_F(NeuromagSet, SymmetricEarsAreTakenAndTold) {
  const ImportedFile file =
      imported(heading + "100 100 10 20 30 25 15 20 0 93.46\n", DipoleFormat::neuromag, {});
  ASSERT_EQ(file.failure, "");
  const CDipoleszq& dipole = *file.set->m_dipoles[0];
  EXPECT_EQ(dipole.m_location[0], -10.0);  // right is not left
  EXPECT_EQ(dipole.m_location[1], 30.0);
  EXPECT_EQ(dipole.m_location[2], 20.0);
  EXPECT_DOUBLE_EQ(dipole.m_orientation[0], -0.6);
  EXPECT_DOUBLE_EQ(dipole.m_orientation[1], 0.0);
  EXPECT_DOUBLE_EQ(dipole.m_orientation[2], 0.8);
  const Finding* const finding = find(file, FindingCode::symmetricEars);
  ASSERT_NE(finding, nullptr);
  EXPECT_EQ(finding->severity, Severity::doubtful);
  EXPECT_NE(finding->sentence.find("some mm"), std::string::npos);
  EXPECT_NE(finding->sentence.find("some degrees"), std::string::npos);
}

TEST_F(NeuromagSet, WhereATransformPlacesThemNothingIsSaidToBeWrongInTheMri) {
  const ImportedFile file =
      host::importFile(folder.write("a.dip", heading + "100 100 10 20 30 25 15 20 0 93.46\n"),
                       DipoleFormat::neuromag, "a.dip", {}, {std::nullopt, true});
  const Finding* const finding = find(file, FindingCode::symmetricEars);
  ASSERT_NE(finding, nullptr);
  EXPECT_NE(finding->sentence.find("In the MRI, where the transform places them,"), std::string::npos);
  EXPECT_NE(finding->sentence.find("in other head frames positions may be wrong"), std::string::npos);
}

TEST_F(NeuromagSet, PointsCarryIntoTheHeadFrameWithoutAWord) {
  const ImportedFile file = imported(heading + "100 100 10 20 30 25 15 20 0 93.46\n");
  EXPECT_EQ(find(file, FindingCode::symmetricEars), nullptr);
  const host::Affine toHead = host::neuromagToHead(crooked);
  const host::Vector3 place = toHead({10, 20, 30});
  const host::Vector3 direction = turned(toHead, {0.6, 0.8, 0});
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_DOUBLE_EQ(file.set->m_dipoles[0]->m_location[axis], place[axis]);
    EXPECT_NEAR(file.set->m_dipoles[0]->m_orientation[axis], direction[axis], 1e-15);
    EXPECT_DOUBLE_EQ(file.set->m_dipoles[0]->m_rawLocation.m_center[axis], place[axis]);
  }
  EXPECT_GT(std::abs(place.x + 10), 1.0);  // the ears are not symmetric
}

TEST_F(NeuromagSet, GoodnessOfFitBecomesFitErrorAndIsToldSo) {
  const ImportedFile file = imported(heading + "1 1 0 0 0 1 1 0 0 93.46\n1 1 0 0 0 1 1 0 0 100\n");
  EXPECT_EQ(file.set->m_dipoles[0]->m_fitError, 6.54);
  EXPECT_EQ(file.set->m_dipoles[1]->m_fitError, 0.0);
  const Finding* const finding = find(file, FindingCode::goodness);
  ASSERT_NE(finding, nullptr);
  EXPECT_EQ(finding->severity, Severity::note);
  EXPECT_EQ(file.set->m_momentInNAm, 1);
}

TEST_F(NeuromagSet, WhatTheFileLacksIsUnknown) {
  const ImportedFile file =
      imported("# begin X/mm Y/mm Z/mm Qx/nAm Qy/nAm Qz/nAm\nnan 1 2 3 0 0 0\n5 1 2 3 3 0 4\n");
  ASSERT_EQ(file.failure, "");
  EXPECT_TRUE(file.unknown.isUnknown(0, DipoleValue::latency));
  EXPECT_FALSE(file.unknown.isUnknown(1, DipoleValue::latency));
  EXPECT_TRUE(file.unknown.isUnknown(0, DipoleValue::fitError));
  EXPECT_TRUE(file.unknown.isUnknown(0, DipoleValue::label));
  EXPECT_TRUE(file.unknown.isUnknown(0, DipoleValue::orientation));
  EXPECT_FALSE(file.unknown.isUnknown(1, DipoleValue::orientation));
  EXPECT_FALSE(file.unknown.isUnknown(1, DipoleValue::moment));
  EXPECT_EQ(file.set->m_dipoles[1]->m_moment, 5.0);
}

TEST_F(NeuromagSet, TheNameOfTheFileIsTheLabelOfEachDipole) {
  const ImportedFile file = imported(heading + "1 1 0 0 0 1 1 0 0 9\n## Name \"left N20 dipoles\"\n");
  EXPECT_EQ(host::utf8Of(file.set->m_dipoles[0]->m_label), "left N20");
  EXPECT_FALSE(file.unknown.isUnknown(0, DipoleValue::label));
}

// Rounded to 0.001 nAm, an amplitude need not be the length of its components: both come back.
TEST_F(NeuromagSet, MomentIsTheAmplitudeTimesTheDirectionToTheLastDigit) {
  const ImportedFile file = imported(heading + "1 1 0 0 0 110.000 63.509 63.508 63.509 9\n");
  const CDipoleszq& dipole = *file.set->m_dipoles[0];
  EXPECT_EQ(find(file, FindingCode::momentVector), nullptr);
  EXPECT_EQ(dipole.m_moment, 110.0);
  const host::Vector3 back =
      turned(host::headToNeuromag(crooked),
             {dipole.m_orientation[0], dipole.m_orientation[1], dipole.m_orientation[2]});
  EXPECT_NEAR(back.x * 110.0, 63.509, 1e-12);
  EXPECT_NEAR(back.y * 110.0, 63.508, 1e-12);
}

TEST_F(NeuromagSet, NegativeAmplitudesTurnTheDirection) {
  const ImportedFile file = imported(heading + "1 1 0 0 0 -25 15 20 0 9\n", DipoleFormat::neuromag, {});
  EXPECT_EQ(file.set->m_dipoles[0]->m_moment, -25.0);
  EXPECT_DOUBLE_EQ(file.set->m_dipoles[0]->m_orientation[0], 0.6);
}

TEST_F(NeuromagSet, AContradictionOfAmplitudeAndMomentIsTold) {
  const ImportedFile file =
      imported(heading + "1 1 0 0 0 25 15 20 0 9\n1 1 0 0 0 20 15 20 0 9\n1 1 0 0 0 0 15 20 0 9\n",
               DipoleFormat::neuromag, {});
  const Finding* const finding = find(file, FindingCode::momentVector);
  ASSERT_NE(finding, nullptr);
  EXPECT_EQ(finding->slots, (std::vector<int>{1, 2}));
  EXPECT_EQ(file.set->m_dipoles[1]->m_moment, 20.0);
  EXPECT_DOUBLE_EQ(file.set->m_dipoles[1]->m_orientation[0], -0.6);
  EXPECT_TRUE(file.unknown.isUnknown(2, DipoleValue::moment));
  EXPECT_DOUBLE_EQ(file.set->m_dipoles[2]->m_orientation[2], 0.8);
}

// As an unknown moment is written: nothing is contradicted.
TEST_F(NeuromagSet, NoAmplitudeBesideADirectionOfLengthOneIsAnUnknownMoment) {
  const ImportedFile file = imported(heading + "1 1 0 0 0 0 0.577 0.577 0.578 9\n");
  EXPECT_EQ(find(file, FindingCode::momentVector), nullptr);
  EXPECT_TRUE(file.unknown.isUnknown(0, DipoleValue::moment));
}

TEST_F(NeuromagSet, RangesOfTimeAndMoreColumnsAreToldByNameAndCount) {
  const ImportedFile file = imported(heading.substr(0, heading.size() - 1) +
                                     " khi^2\n1 1 0 0 0 1 1 0 0 9 5\n1 2 0 0 0 1 1 0 0 9 5\n");
  const Finding* const finding = find(file, FindingCode::leftOut);
  ASSERT_NE(finding, nullptr);
  EXPECT_EQ(finding->sentence,
            "A set has no room for khi^2 of 2 dipoles, the end of the time of 1 dipole (the begin is the "
            "latency).");
  EXPECT_EQ(file.set->m_dipoles[1]->m_latency, 1.0);
  const ImportedFile toZero = imported(heading + "-50 0 0 0 0 1 1 0 0 9\n0 0 0 0 0 1 1 0 0 9\n");
  ASSERT_NE(find(toZero, FindingCode::leftOut), nullptr);
  EXPECT_EQ(find(toZero, FindingCode::leftOut)->slots, std::vector<int>());
  EXPECT_NE(find(toZero, FindingCode::leftOut)->sentence.find("time of 1 dipole"), std::string::npos);
}

TEST_F(NeuromagSet, PlacesThatAreNoNumbersAreWrong) {
  const ImportedFile file = imported(heading + "1 1 0 0 0 1 1 0 0 9\n1 1 0 nan 0 1 1 0 0 9\n");
  const Finding* const finding = find(file, FindingCode::lostRows);
  ASSERT_NE(finding, nullptr);
  EXPECT_EQ(finding->severity, Severity::wrong);
  EXPECT_EQ(finding->slots, (std::vector<int>{1}));
}

TEST_F(NeuromagSet, AMissingHeadingOrSystemIsDoubtful) {
  for (const std::string& text : {std::string("1 1 0 0 0 1 1 0 0 9\n"),
                                  heading.substr(heading.find('\n') + 1) + "1 1 0 0 0 1 1 0 0 9\n"}) {
    const ImportedFile file = imported(text);
    const Finding* const finding = find(file, FindingCode::heading);
    ASSERT_NE(finding, nullptr);
    EXPECT_EQ(finding->severity, Severity::doubtful);
  }
  EXPECT_EQ(find(imported(heading + "1 1 0 0 0 1 1 0 0 9\n"), FindingCode::heading), nullptr);
}

TEST_F(NeuromagSet, OneFileIsNeverTakenForTheOther) {
  const std::string ctf = "Dipoles\n{\n// xp (cm)\n1: 1 2 3 1 0 0 5 a\n}\n";
  EXPECT_EQ(imported(heading + "1 1 0 0 0 1 1 0 0 9\n", DipoleFormat::ctf).failure,
            "it is a Neuromag (Xfit, MNE) file of dipoles, not one of CTF");
  EXPECT_EQ(imported(ctf).failure, "it is a CTF file of dipoles, not one of Neuromag");
  EXPECT_EQ(imported(ctf, DipoleFormat::bdip).failure, "it is a CTF file of dipoles, not one of Neuromag");
  EXPECT_EQ(imported(ctf, DipoleFormat::ctf).dipoles(), 1);
}

TEST_F(NeuromagSet, AFaultIsToldWithItsLineAndNothingComes) {
  const ImportedFile file = imported(heading + "1 1 0 0 0 1 1 0 0 9\n1 1 0 0\n");
  EXPECT_EQ(file.failure, "line 4: this line has 4 cells, the heading names 10");
  EXPECT_EQ(file.dipoles(), 0);
  std::string many = heading;
  for (int i = 0; i <= int{DipoleTable::capacity}; ++i) {
    many += "1 1 0 0 0 1 1 0 0 9\n";
  }
  EXPECT_EQ(imported(many).failure, "it has more dipoles than a set holds, 30000");
}

TEST_F(NeuromagSet, DipolesOfASecondFileAreNumberedOn) {
  host::JoinedSet joined;
  joined.add(imported(heading + "1 1 0 0 0 1 1 0 0 9\n"));
  joined.add(imported(heading + "1 1 0 0 0 1 1 0 0 9\n"));
  EXPECT_EQ(joined.set().m_dipoles[1]->m_number, 2);
}
