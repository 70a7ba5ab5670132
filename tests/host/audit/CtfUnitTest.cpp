// Units of a CTF file: what the module makes of a file that does not give them, or gives others.
#include "tests/host/audit/Audited.h"

using host::FindingCode;
using host::LengthUnit;
using host::Severity;

namespace {

const Lines auditory = {"1:\t1.00\t5.20\t5.80\t-0.3\t0.1\t-0.9\t27.3\tleft",
                        "2:\t1.30\t-5.10\t5.60\t-0.2\t0.0\t-0.9\t33.8\tright"};
const Lines auditoryMm = {"1:\t10.0\t52.0\t58.0\t-0.3\t0.1\t-0.9\t27.3\tleft",
                          "2:\t13.0\t-51.0\t56.0\t-0.2\t0.0\t-0.9\t33.8\tright"};
const std::string fit =
    ctfFit + "1:\t1\t1\t0.1\t1\t5\t5\t0\t0\t0\t1\ta.ds\n2:\t1\t1\t0.1\t1\t5\t5\t0\t0\t0\t1\ta.ds\n}\n";
const std::string noUnit = "\t// xp\typ\tzp\txo\tyo\tzo\tMom(nAm)\tLabel\n";
const std::string inMm = "\t// xp (mm)\typ (mm)\tzp (mm)\txo\tyo\tzo\tMom(nAm)\tLabel\n";

Audited imported(const std::string& heading, const Lines& rows, const std::string& before = {}) {
  return Audited("a.dip", ctfSphere + before + ctfSection("Dipoles", heading, rows) + fit);
}

}  // namespace

TEST(CtfUnit, AFileWithAHeaderInCentimetresIsClean) {
  const Audited a = imported(ctfHeading, auditory);
  EXPECT_EQ(a.place(0), (Place3{52, 58, 10}));
  EXPECT_EQ(a.outline(), Lines());
}

TEST(CtfUnit, WithoutAHeaderSmallPlacesAreWrongAndTakenAsCentimetresWhenTheUserSaysSo) {
  Audited a = imported(noUnit, auditory);
  EXPECT_EQ(a.place(0), (Place3{static_cast<double>(5.2F), static_cast<double>(5.8F), 1}));  // 5.2 mm
  const host::Finding finding = a.only(FindingCode::unit);
  EXPECT_EQ(finding.severity, Severity::wrong);
  EXPECT_EQ(finding.slots, (std::vector{0, 1}));
  EXPECT_EQ(finding.line, 11);
  EXPECT_EQ(finding.section, "Dipoles");
  EXPECT_FALSE(finding.remedy.empty());
  EXPECT_EQ(a.outline(), Lines{"wrong unit"});

  EXPECT_EQ(outlineOf(a.repair({FindingCode::unit}).left.findings),
            Lines{"wrong unit"});  // nobody said which
  a.file.unit = LengthUnit::centimetre;
  EXPECT_EQ(a.outline(), Lines{"wrong unit"});
  const host::RepairReport report = a.repair({FindingCode::unit});
  EXPECT_EQ(report.told, Lines{"2 dipoles: the position was taken as cm."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_EQ(a.place(0), (Place3{52, 58, 10}));
  EXPECT_EQ(a.place(1), (Place3{-51, 56, 13}));
  EXPECT_EQ(a.dipole(0).m_rawLocation.m_center[0], 52);  // "back to the file's place" comes here too
  EXPECT_EQ(a.repair({FindingCode::unit}).told, Lines());
  EXPECT_EQ(a.place(0), (Place3{52, 58, 10}));
}

TEST(CtfUnit, WithoutAHeaderLargePlacesAreDoubtfulAndStayWhenTheUserSaysMillimetres) {
  Audited a = imported(noUnit, auditoryMm);
  EXPECT_EQ(a.place(0), (Place3{52, 58, 10}));
  EXPECT_EQ(a.outline(), Lines{"doubtful unit"});
  a.file.unit = LengthUnit::millimetre;
  EXPECT_EQ(a.outline(), Lines());
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
  EXPECT_EQ(a.place(0), (Place3{52, 58, 10}));
}

TEST(CtfUnit, FifteenIsSmallAndBeyondIsLarge) {
  EXPECT_EQ(
      imported(noUnit, {"1: 15 0 0 0 0 1 9 a", "2: -15 0 0 0 0 1 9 a"}).only(FindingCode::unit).severity,
      Severity::wrong);
  EXPECT_EQ(
      imported(noUnit, {"1: 15 0 0 0 0 1 9 a", "2: -15.1 0 0 0 0 1 9 a"}).only(FindingCode::unit).severity,
      Severity::doubtful);
}

TEST(CtfUnit, AHeaderBeforeTheSectionsNameIsNotRead) {
  Audited a = imported({}, auditory, ctfHeading);
  EXPECT_EQ(a.place(1),
            (Place3{static_cast<double>(-5.1F), static_cast<double>(5.6F), static_cast<double>(1.3F)}));
  EXPECT_EQ(a.outline(), Lines{"wrong unit"});
  EXPECT_NE(a.only(FindingCode::unit).sentence.find("before the section"), std::string::npos);
  EXPECT_EQ(imported({}, auditoryMm, ctfHeading).outline(), Lines{"doubtful unit"});
  a.file.unit = LengthUnit::centimetre;
  EXPECT_EQ(outlineOf(a.repair({FindingCode::unit}).left.findings), Lines());
  EXPECT_EQ(a.place(1), (Place3{-51, 56, 13}));
}

TEST(CtfUnit, AHeaderInMillimetresIsANoteForLargePlacesAndWrongForSmallOnes) {
  const Audited large = imported(inMm, auditoryMm);
  EXPECT_EQ(large.place(0), (Place3{52, 58, 10}));
  EXPECT_EQ(large.outline(), Lines{"note unit"});
  EXPECT_TRUE(large.only(FindingCode::unit).remedy.empty());
  for (const LengthUnit unit : {LengthUnit::millimetre, LengthUnit::centimetre}) {
    Audited small = imported(inMm, auditory);
    EXPECT_EQ(small.place(0)[0], static_cast<double>(5.2F));
    EXPECT_EQ(small.outline(), Lines{"wrong unit"});
    small.file.unit = unit;
    EXPECT_EQ(outlineOf(small.repair({FindingCode::unit}).left.findings), Lines());
    EXPECT_EQ(small.place(0)[0], unit == LengthUnit::millimetre ? static_cast<double>(5.2F) : 52.0);
  }
}

TEST(CtfUnit, WhatTheUserSaysDoesNotOverrideTheFile) {
  Audited a = imported(inMm, auditoryMm);
  a.file.unit = LengthUnit::centimetre;
  EXPECT_EQ(a.repair({FindingCode::unit}).told, Lines());
  EXPECT_EQ(a.place(0), (Place3{52, 58, 10}));
  EXPECT_EQ(a.outline(), Lines{"note unit"});
  EXPECT_EQ(a.only(FindingCode::unit).sentence,
            "The file gives its positions in mm; the other unit that you said was not used.");
  EXPECT_EQ(a.only(FindingCode::unit).line, 8);
  a.file.unit = LengthUnit::millimetre;
  EXPECT_EQ(a.outline(), Lines());
  for (const std::string& heading : {ctfHeading, std::string("// (cm) (nAm)\n")}) {
    Audited b = imported(heading, auditory);
    b.file.unit = LengthUnit::millimetre;
    EXPECT_EQ(b.repair({FindingCode::unit}).told, Lines());
    EXPECT_EQ(b.place(0), (Place3{52, 58, 10}));
    EXPECT_EQ(b.outline(), Lines{"note unit"});
  }
}

TEST(CtfUnit, MetresAreWrongAndTakenSo) {
  const Lines metres = {"1:\t0.010\t0.052\t0.058\t-0.3\t0.1\t-0.9\t27.3\tleft",
                        "2:\t0.013\t-0.051\t0.056\t-0.2\t0.0\t-0.9\t33.8\tright"};
  const std::string heading = "\t// xp (m)\typ (m)\tzp (m)\txo\tyo\tzo\tMom(nAm)\tLabel\n";
  for (const bool isBefore : {false, true}) {
    Audited a = isBefore ? imported({}, metres, heading) : imported(heading, metres);
    EXPECT_EQ(a.place(0)[0], static_cast<double>(0.052F));
    EXPECT_EQ(a.outline(), Lines{"wrong unit"});
    EXPECT_EQ(
        a.only(FindingCode::unit).sentence,
        "The file gives its positions in m, but they were taken in another unit: every dipole is shown in "
        "a wrong place.");
    const host::RepairReport report = a.repair({FindingCode::unit});
    EXPECT_EQ(report.told, Lines{"2 dipoles: the position was taken as m, as the file gives it."});
    EXPECT_EQ(outlineOf(report.left.findings), Lines());
    EXPECT_EQ(a.place(1), (Place3{-51, 56, 13}));
  }
  Audited large = imported(heading, auditory);  // as if it were cm
  EXPECT_EQ(large.outline(), Lines{"wrong unit"});
  EXPECT_TRUE(large.only(FindingCode::unit).asksForUnit);
  large.file.unit = LengthUnit::centimetre;
  EXPECT_EQ(outlineOf(large.repair({FindingCode::unit}).left.findings), Lines());
  EXPECT_EQ(large.place(1), (Place3{-51, 56, 13}));
}

TEST(CtfUnit, CentimetresThatAreWrittenOtherwiseThanTheImportKnowsAreWrongAndTakenSo) {
  for (const char* unit : {"(CM)", "( cm )", "/cm"}) {
    std::string heading = ctfHeading;
    for (std::size_t at = heading.find("(cm)"); at != std::string::npos; at = heading.find("(cm)")) {
      heading.replace(at, 4, unit);
    }
    Audited a = imported(heading, auditory);
    EXPECT_EQ(a.place(0)[0], static_cast<double>(5.2F)) << unit;
    EXPECT_EQ(a.outline(), Lines{"wrong unit"}) << unit;
    EXPECT_EQ(outlineOf(a.repair({FindingCode::unit}).left.findings), Lines()) << unit;
    EXPECT_EQ(a.place(0), (Place3{52, 58, 10})) << unit;
  }
}

TEST(CtfUnit, RowsBeforeTheHeaderOfTheirSectionAreOpen) {
  const Audited a("a.dip",
                  ctfSphere + ctfSection("Dipoles", {}, {auditory[0], ctfHeading, auditory[1]}) + fit);
  EXPECT_EQ(a.place(0)[0], static_cast<double>(5.2F));
  EXPECT_EQ(a.place(1)[0], -51);
  EXPECT_EQ(a.only(FindingCode::unit).slots, std::vector{0});
}

TEST(CtfUnit, APlaceThatIsNotTheFilesIsWrong) {
  const Audited a = imported(ctfHeading, auditory);
  a.set->m_dipoles[1]->m_location[2] += 1;
  const host::Finding finding = a.only(FindingCode::lostRows);
  EXPECT_EQ(finding.severity, Severity::wrong);
  EXPECT_EQ(finding.slots, std::vector{1});
}

namespace {

std::string moving(const std::string& latency) {
  return ctfSphere + ctfSection("Fit_Results",
                                "\t//\tTrial\tSample\t" + latency +
                                    "\txp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tErr(%)\tLabel\n",
                                {"1:\t1\t400\t0.08\t1.2\t5.3\t5.6\t-0.3\t0.1\t-0.9\t21.7\t10.9\tleft"});
}

}  // namespace

TEST(CtfLatencyUnit, SecondsInTheHeadingAreClean) {
  const Audited a("a.dip", moving("Latency (s)"), {"moving yes"});
  EXPECT_EQ(a.dipole(0).m_latency, static_cast<double>(0.08F * 1000.0F));
  EXPECT_EQ(a.dipole(0).m_fitError, static_cast<double>(10.9F));
  EXPECT_EQ(a.outline(), Lines());
}

TEST(CtfLatencyUnit, WithoutAUnitLatenciesAreDoubtful) {
  const Audited a("a.dip", moving("Latency"), {"moving yes"});
  EXPECT_EQ(a.dipole(0).m_latency, static_cast<double>(0.08F));
  EXPECT_EQ(a.outline(), Lines{"doubtful latency-unit"});
  EXPECT_TRUE(a.only(FindingCode::latencyUnit).remedy.empty());
}

TEST(CtfLatencyUnit, MillisecondsBesideASecondElsewhereInTheHeadingAreWrongAndRepaired) {
  std::string text = moving("Latency (ms)");
  text.replace(text.find("Label"), 5, "Label (s)");
  Audited a("a.dip", text, {"moving yes"});
  EXPECT_EQ(a.dipole(0).m_latency, static_cast<double>(0.08F * 1000.0F));
  EXPECT_EQ(a.outline(), Lines{"wrong latency-unit"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::latencyUnit}).left.findings), Lines());
  EXPECT_EQ(a.dipole(0).m_latency, static_cast<double>(0.08F));
}

TEST(CtfLatencyUnit, ADipoleWithARowOfFitInformationHasTheLatencyOfThatRow) {
  const std::string fitRow = ctfFit + "1:\t1\t400\t0.1\t5\t4.5\t0\t0\t0\t1\ta.ds\n}\n";
  Audited a("a.dip", moving("Latency (ms)") + fitRow, {"moving yes"});
  EXPECT_EQ(a.dipole(0).m_latency, 100);
  EXPECT_EQ(a.outline(), Lines());
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
  EXPECT_EQ(a.dipole(0).m_latency, 100);
}
