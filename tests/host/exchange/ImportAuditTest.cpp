// A file that is imported is audited, repaired when that is wanted, and known by its findings among others.
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "host/dipoles/SetFiducials.h"
#include "host/exchange/ImportFile.h"
#include "host/exchange/JoinedSet.h"
#include "host/exchange/SetFile.h"
#include "tests/host/audit/AuditTexts.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"

using host::DipoleFormat;
using host::DipoleValue;
using host::Finding;
using host::FindingCode;
using host::ImportedFile;
using host::JoinedSet;
using host::LengthUnit;
using host::Severity;

namespace {

const std::string noUnit = "// xp yp zp xo yo zo Mom(nAm) Label\n";
const std::string inCm = "// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n";
const Lines row = {"1: 1.0 5.2 5.8 0 0 1 20 left"};
const std::string fit = "Dipole_FitInfo\n{\n// Trial Start Latency (s)\n1: 1 1 0.1 1 5 5 0 0 0 1 a\n}\n";

std::string dipoles(const std::string& heading, const Lines& rows) {
  return ctfSection("Dipoles", heading, rows);
}
std::string patient(const std::string& name) {
  return "File_Info\n{\nPATIENT: " + name + "\n}\n";
}
// The ears so many voxels from the middle.
std::string fiducials(int ears) {
  return "Fid_Points\n{\nNASION: 128 26 156\nLEFT_EAR: " + std::to_string(128 - ears) +
         " 150 165\nRIGHT_EAR: " + std::to_string(128 + ears) + " 150 165\n}\n";
}

std::array<double, 3> place(const CDipoleFace& set, int slot) {
  const double* const at = set.m_dipoles[slot]->m_location;
  return {at[0], at[1], at[2]};
}
constexpr std::array<double, 3> meant = {52, 58, 10};

struct ImportAudit : testing::Test {
  ImportedFile imported(const std::string& name, const std::string& text, const host::Repairs& repairs = {}) {
    return host::importFile(folder.write(name, text), DipoleFormat::ctf, name, repairs);
  }

  TempFolder folder;
  ScriptedOperator user;
};

// A head whose fiducial points are those of files with ears 100 voxels from the middle, in a volume of 100
// mm.
host::Head headOf(double ears) {
  const host::Volume volume({50, 50, 50}, std::vector<float>(125000),
                            {{4, 0, 0}, {0, 4, 0}, {0, 0, 4}, {-100, -100, -100}});
  const host::Fiducials points = {{0, 106.6, 0}, {-ears, 0, 0}, {ears, 0, 0}};
  return {"", std::make_shared<const host::Volume>(volume), host::HeadFrame(points), points};
}

}  // namespace

TEST_F(ImportAudit, RemediesThatAreWantedAreAppliedBehindTheImportAndTold) {
  const std::string text = ctfSphere + dipoles(noUnit, row) + fit;
  const ImportedFile plain = imported("a.dip", text);
  EXPECT_EQ(outlineOf(plain.findings), Lines{"wrong unit"});
  EXPECT_EQ(plain.findings[0].file, "a.dip");
  EXPECT_TRUE(plain.repaired.empty());
  EXPECT_NE(place(*plain.set, 0), meant);
  const ImportedFile repaired = imported("a.dip", text, {{}, LengthUnit::centimetre});
  EXPECT_TRUE(repaired.findings.empty());
  EXPECT_EQ(repaired.repaired, Lines{"1 dipole: the position was taken as cm."});
  EXPECT_EQ(place(*repaired.set, 0), meant);
}

TEST_F(ImportAudit, ARepairMayComeLater) {
  ImportedFile file = imported("a.dip", ctfSphere + dipoles(noUnit, row) + fit);
  file.repair({{FindingCode::labels}, {}});
  EXPECT_EQ(outlineOf(file.findings), Lines{"wrong unit"});
  EXPECT_TRUE(file.repaired.empty());
  file.repair({{}, LengthUnit::centimetre});
  EXPECT_TRUE(file.findings.empty());
  EXPECT_EQ(place(*file.set, 0), meant);
}

TEST_F(ImportAudit, AnImportOfTheModulesOwnIsAuditedAndRepairedInItsSet) {
  const auto set = std::make_unique<CDipoleFace9File>();
  const std::string text = ctfSphere + dipoles(noUnit, row) + fit;
  CString path = folder.write("a.dip", text);
  ASSERT_EQ(set->importDipoleX(path, false), 1);
  ASSERT_EQ(set->importDipoleX(path, false), 1);
  const host::ImportSource source = host::sourceOf(path, DipoleFormat::ctf, {}, "a.dip");
  const host::AuditReport report = host::auditImport(source, *set, 1);
  ASSERT_EQ(outlineOf(report.findings), Lines{"wrong unit"});
  EXPECT_EQ(report.findings[0].slots, std::vector{1});
  EXPECT_TRUE(host::repairImport(source, *set, 1, {{}, LengthUnit::centimetre}).left.findings.empty());
  EXPECT_NE(place(*set, 0), meant);
  EXPECT_EQ(place(*set, 1), meant);
}

TEST_F(ImportAudit, SetsAndTablesAreNotAudited) {
  const ImportedFile file = imported("a.dip", ctfSphere + dipoles(inCm, row) + fit);
  const CString path = folder.path("a.dipset");
  host::writeSet(*file.set, path);
  ImportedFile set = host::importFile(path, DipoleFormat::set);
  set.repair({host::allFindingCodes(), LengthUnit::millimetre});
  EXPECT_TRUE(set.findings.empty());
  EXPECT_TRUE(set.repaired.empty());
  EXPECT_EQ(place(*set.set, 0), meant);
}

TEST_F(ImportAudit, WhatAFileDoesNotGiveIsUnknownOfItsDipolesAmongThoseOfOthers) {
  JoinedSet joined(3);
  joined.add(imported("a.dip", ctfSphere + dipoles(inCm, row) + fit));
  joined.add(imported("b.dip", ctfSphere + dipoles(inCm, row)));
  EXPECT_EQ(joined.unknown().of(3), 0);
  EXPECT_TRUE(joined.unknown().isUnknown(4, DipoleValue::latency));
  EXPECT_TRUE(joined.unknown().isUnknown(4, DipoleValue::fitError));
  EXPECT_FALSE(joined.unknown().isUnknown(4, DipoleValue::moment));
  ASSERT_EQ(outlineOf(joined.findings()), Lines{"note no-fit"});
  EXPECT_EQ(joined.findings()[0].slots, std::vector{4});
}

TEST_F(ImportAudit, DipolesOutsideOfTheSphereOfTheirOwnFileAreFound) {
  JoinedSet joined(3);
  joined.add(imported("a.dip", ctfSphere + dipoles(inCm, row) + fit));
  joined.add(imported("b.dip", ctfSphere + dipoles(inCm, {"1: 1.0 11.0 5.8 0 0 1 20 left"}) + fit));
  ASSERT_EQ(outlineOf(joined.findings()), Lines{"doubtful outside-head"});
  EXPECT_EQ(joined.findings()[0].slots, std::vector{4});
  EXPECT_EQ(joined.findings()[0].file, "b.dip");
}

TEST_F(ImportAudit, FilesAreComparedWithEachOther) {
  JoinedSet joined;
  joined.add(imported("none.dip", ctfSphere + dipoles(inCm, row) + fit));
  joined.add(imported("a.dip", patient("Anna") + ctfSphere + fiducials(100) + dipoles(inCm, row) + fit));
  joined.add(imported("b.dip", patient("Anna") + ctfSphere + fiducials(103) + dipoles(inCm, row) + fit));
  EXPECT_TRUE(host::findingsBetween(joined.parts()).empty());
  joined.add(imported("c.dip", patient("Berta") + ctfSphere + fiducials(80) + dipoles(inCm, row) + fit));
  const std::vector<Finding> between = host::findingsBetween(joined.parts());
  ASSERT_EQ(outlineOf(between), (Lines{"wrong other-head", "doubtful several-patients"}));
  EXPECT_EQ(between[0].file, "c.dip");
  EXPECT_TRUE(between[0].sentence.starts_with("Beside a.dip ")) << between[0].sentence;
  EXPECT_NE(between[1].sentence.find("Anna (a.dip), Berta (c.dip)"), std::string::npos);
}

TEST_F(ImportAudit, FilesAreComparedWithTheHeadTheyAreShownIn) {
  JoinedSet joined(3);
  joined.add(imported("a.dip", fiducials(100) + dipoles(inCm, row) + fit));
  joined.add(imported("b.dip", dipoles(inCm, {"1: 1.0 12.0 5.8 0 0 1 20 left"}) + fit));
  joined.add(imported("c.dip", ctfSphere + fiducials(100) + dipoles(inCm, row) + fit));
  const std::vector<Finding> inOwn = host::findingsIn(headOf(85.9), joined);
  ASSERT_EQ(outlineOf(inOwn), Lines{"doubtful outside-head"});
  EXPECT_EQ(inOwn[0].slots, std::vector{4});
  EXPECT_EQ(inOwn[0].file, "b.dip");
  const std::vector<Finding> inOther = host::findingsIn(headOf(70.0), joined);
  ASSERT_EQ(outlineOf(inOther), (Lines{"wrong other-head", "doubtful outside-head"}));
  EXPECT_EQ(inOther[0].file, "c.dip");

  host::Head phantom = headOf(70.0);
  phantom.isPhantom = true;
  EXPECT_TRUE(host::findingsIn(phantom, joined).empty());
  host::Head open = headOf(70.0);
  open.fiducials.reset();
  EXPECT_TRUE(host::findingsIn(open, joined).empty());
}
