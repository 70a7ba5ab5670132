// 4D/MSI tables whose columns or units are not those that the import takes for granted.
#include "host/text/PathText.h"
#include "tests/host/audit/Audited.h"

using host::FindingCode;
using host::LengthUnit;
using host::Severity;

namespace {

const std::string usual = "Latency  x  y  z  Qx  Qy  Qz  Q  Rad  Corr  GOF  Vol  Grp  A  B  C  D  Label\n";
const std::string row = "20.0 1.5 5.0 6.0 9.0 2.0 -1.0 22.0 4.5 0.97 0.75 0.4 1 a b c 1 N20m\n";

const std::string inMillimetres = "(sec) (mm) (mm) (mm) (nAm) (nAm) (nAm) (nAm) (mm)\n";
const std::string millimetres = "20.0 15 50 60 9.0 2.0 -1.0 22.0 4.5 0.97 0.75 0.4 1 a b c 1 N20m\n";

// As other programs read such tables: the radius before the moment, the goodness far behind.
const std::string other =
    "Latency  x  y  z  Qx  Qy  Qz  Rad  |Q|  RMS  Vol  Corr  Iter  GOF  A  B  C  Label\n";
const std::string otherRow = "20.0 1.5 5.0 6.0 9.0 2.0 -1.0 4.5 22.0 0.3 0.5 0.97 7 0.75 b c 1 N20m\n";

}  // namespace

TEST(MsiColumns, TheUsualTableIsClean) {
  const Audited a("a.txt", usual + row);
  EXPECT_EQ(a.place(0), (Place3{50, 60, 15}));
  EXPECT_EQ(a.dipole(0).m_fitError, 25);
  EXPECT_EQ(a.outline(), Lines());
  EXPECT_EQ(Audited("a.txt", usual + "(msec) (cm) (cm) (cm) (nAm) (nAm) (nAm) (nAm) (cm)\n" + row).outline(),
            Lines());
}

TEST(MsiColumns, AnotherOrderIsWrongAndTakenByTheNames) {
  Audited a("a.txt", other + otherRow);
  EXPECT_EQ(a.dipole(0).m_moment, 4.5);   // the radius
  EXPECT_EQ(a.dipole(0).m_fitError, 50);  // of the volume
  const host::Finding finding = a.only(FindingCode::msiColumns);
  EXPECT_EQ(finding.severity, Severity::wrong);
  EXPECT_EQ(finding.slots, std::vector{0});
  EXPECT_EQ(finding.line, 2);
  EXPECT_EQ(
      finding.sentence,
      "The table has other columns than the import takes for granted: values of others are shown as moment "
      "and fit error.");
  EXPECT_EQ(a.outline(), Lines{"wrong msi-columns"});
  const host::RepairReport report = a.repair({FindingCode::msiColumns});
  EXPECT_EQ(report.told, Lines{"1 dipole: the values were taken from the columns that the heading names."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_EQ(a.dipole(0).m_moment, 22);
  EXPECT_EQ(a.dipole(0).m_fitError, 25);
  EXPECT_EQ(a.dipole(0).m_orientation[0], static_cast<double>(2.0F / 10.0F));
  EXPECT_EQ(a.label(0), "N20m");
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(MsiColumns, PlacesInOtherColumnsAreTakenByTheNames) {
  Audited a("a.txt",
            "Latency  GOF  x  y  z  Qx  Qy  Qz  Q  Rad  Corr  Vol  Grp  A  B  C  D  Label\n"
            "20.0 0.75 1.5 5.0 6.0 9.0 2.0 -1.0 22.0 4.5 0.97 0.5 1 a b c 1 N20m\n");
  EXPECT_EQ(a.place(0), (Place3{15, 50, 7.5}));
  EXPECT_EQ(a.outline(), Lines{"wrong msi-columns"});
  EXPECT_EQ(a.only(FindingCode::msiColumns).slots, std::vector{0});  // once, for place and values
  EXPECT_TRUE(a.only(FindingCode::msiColumns).sentence.ends_with("The dipoles are shown in wrong places."));
  EXPECT_EQ(outlineOf(a.repair({FindingCode::msiColumns}).left.findings), Lines());
  EXPECT_EQ(a.place(0), (Place3{50, 60, 15}));
  EXPECT_EQ(a.dipole(0).m_rawLocation.m_center[0], 50);
  EXPECT_EQ(a.dipole(0).m_fitError, 25);
}

TEST(MsiColumns, AHeadingThatDoesNotFitTheRowsHasNoRemedy) {
  const Audited a("a.txt", "Latency  x  y  z  Qx  Qy  Qz  Rad  |Q|  RMS  Vol  Corr  GOF\n" + otherRow);
  EXPECT_EQ(a.outline(), Lines{"wrong msi-columns"});
  EXPECT_TRUE(a.only(FindingCode::msiColumns).remedy.empty());
}

TEST(MsiColumns, PointsInIntegerColumnsLoseTheRowsThatTheHeadingTells) {
  const std::string pointed = "21.0 1.5 5.0 6.0 9.0 2.0 -1.0 22.0 4.5 0.97 0.5 0.4 1.0 a b c 1 second\n";
  Audited a("a.txt", usual + row + pointed + row);
  EXPECT_EQ(a.set->m_totalDipoles, 2);
  const host::Finding finding = a.only(FindingCode::msiColumns);
  EXPECT_EQ(finding.severity, Severity::wrong);
  EXPECT_EQ(finding.line, 3);
  EXPECT_TRUE(finding.sentence.starts_with("1 row of dipoles did not come"));
  EXPECT_EQ(a.outline(), Lines{"wrong msi-columns"});
  const host::RepairReport report = a.repair({FindingCode::msiColumns});
  EXPECT_EQ(report.told, Lines{"1 dipole that the import had refused came to the set."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  ASSERT_EQ(a.set->m_totalDipoles, 3);
  EXPECT_EQ(a.label(1), "second");  // where it stands in the file
  EXPECT_EQ(a.dipole(1).m_latency, 21);
  EXPECT_EQ(a.dipole(1).m_fitError, 50);
  EXPECT_EQ(a.dipole(2).m_number, 3);
  EXPECT_EQ(a.set->m_importEnd, 3);
  EXPECT_EQ(a.set->m_currentDipole, 2);
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
  EXPECT_EQ(a.set->m_totalDipoles, 3);
}

TEST(MsiColumns, AHeadingWithAWordOfTheLegendHidesTheTable) {
  std::string heading = other;
  heading.replace(heading.find("  A "), 4, "  Code ");
  Audited a("a.txt", heading + otherRow + otherRow);
  EXPECT_EQ(a.set->m_totalDipoles, 0);
  EXPECT_EQ(a.outline(), Lines{"wrong msi-columns"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::msiColumns}).left.findings), Lines());
  ASSERT_EQ(a.set->m_totalDipoles, 2);
  EXPECT_EQ(a.place(1), (Place3{50, 60, 15}));
  EXPECT_EQ(a.dipole(1).m_moment, 22);
  EXPECT_EQ(a.dipole(1).m_fitError, 25);
}

TEST(MsiPercent, GoodnessInPercentIsWrongAndTakenSo) {
  std::string percent = row;
  percent.replace(percent.find("0.75"), 4, "75.5");
  Audited a("a.txt", usual + percent + percent);
  EXPECT_EQ(a.dipole(0).m_fitError, -7450);
  EXPECT_EQ(a.only(FindingCode::msiPercent).slots, (std::vector{0, 1}));
  EXPECT_EQ(a.outline(), Lines{"wrong msi-percent"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::msiPercent}).left.findings), Lines());
  EXPECT_EQ(a.dipole(0).m_fitError, 24.5);
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(MsiPercent, AHeadingThatSaysPercentOverPartsOfOneIsDoubtful) {
  std::string heading = usual;
  heading.replace(heading.find("GOF"), 3, "GOF(%)");
  const Audited a("a.txt", heading + row);
  EXPECT_EQ(a.outline(), Lines{"doubtful msi-percent"});
  EXPECT_TRUE(a.only(FindingCode::msiPercent).remedy.empty());
}

TEST(MsiPercent, BesideOtherColumnsEachIsRepairedByItself) {
  std::string percent = otherRow;
  percent.replace(percent.find("0.75"), 4, "75.5");
  Audited a("a.txt", other + percent);
  EXPECT_EQ(a.outline(), (Lines{"wrong msi-columns", "wrong msi-percent"}));
  a.repair({FindingCode::msiColumns});
  EXPECT_EQ(a.dipole(0).m_fitError, -7450);
  EXPECT_EQ(a.outline(), Lines{"wrong msi-percent"});
  a.repair({FindingCode::msiPercent});
  EXPECT_EQ(a.dipole(0).m_fitError, 24.5);
  EXPECT_EQ(a.outline(), Lines());
}

TEST(MsiUnit, AHeadingInMillimetresIsWrongAndTakenSoWhenTheUserSaysIt) {
  std::string heading = usual;
  heading.replace(heading.find("  x "), 4, "  x(mm) ");
  Audited a("a.txt", heading + millimetres);
  EXPECT_EQ(a.place(0), (Place3{500, 600, 150}));
  EXPECT_EQ(a.outline(), Lines{"wrong unit"});
  EXPECT_FALSE(a.only(FindingCode::unit).asksForUnit);
  const host::RepairReport report = a.repair({FindingCode::unit});
  EXPECT_EQ(report.told, Lines{"1 dipole: the position was taken as mm, as the heading gives it."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_EQ(a.place(0), (Place3{50, 60, 15}));
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(MsiUnit, ALineOfUnitsBehindTheHeadingCounts) {
  Audited a("a.txt", usual + inMillimetres + millimetres);
  EXPECT_EQ(a.place(0), (Place3{500, 600, 150}));
  EXPECT_EQ(a.dipole(0).m_latency, 20);
  EXPECT_EQ(a.outline(), (Lines{"wrong unit", "wrong latency-unit"}));
  EXPECT_EQ(outlineOf(a.repair({FindingCode::unit}).left.findings), Lines{"wrong latency-unit"});
  EXPECT_EQ(a.place(0), (Place3{50, 60, 15}));
  EXPECT_EQ(outlineOf(a.repair({FindingCode::latencyUnit}).left.findings), Lines());
  EXPECT_EQ(a.dipole(0).m_latency, 20000);
  // However it is written, and whether the heading names as many columns as the rows have fields or not.
  const std::string shorter = "Latency  x  y  z  Qx  Qy  Qz  Q  Rad  Corr  GOF  Vol  Grp  Label\n";
  for (const std::string& heading : {usual, shorter}) {
    for (const char* units : {"\t(sec)\t(mm)\t(mm)\t(mm)\n", "( s ) (mm) (mm) (mm)\n", "----\n(s)  (mm)\n",
                              "s  mm  mm  mm  nAm\n"}) {
      EXPECT_EQ(Audited("a.txt", heading + units + millimetres).outline(),
                (Lines{"wrong unit", "wrong latency-unit"}))
          << heading << units;
    }
  }
}

TEST(MsiUnit, MillimetresThatAreSmallEnoughForCentimetresAreTakenInTheUnitThatTheUserSays) {
  std::string deep = millimetres;
  deep.replace(deep.find("15 50 60"), 8, "12 8 14");
  for (const LengthUnit unit : {LengthUnit::millimetre, LengthUnit::centimetre}) {
    Audited a("a.txt", usual + "(msec) (mm) (mm) (mm)\n" + deep);
    EXPECT_EQ(a.place(0), (Place3{80, 140, 120}));
    EXPECT_EQ(a.outline(), Lines{"wrong unit"});
    EXPECT_TRUE(a.only(FindingCode::unit).asksForUnit);
    EXPECT_EQ(outlineOf(a.repair({FindingCode::unit}).left.findings), Lines{"wrong unit"});
    a.file.unit = unit;
    EXPECT_EQ(outlineOf(a.repair({FindingCode::unit}).left.findings), Lines());
    EXPECT_EQ(a.place(0), unit == LengthUnit::millimetre ? (Place3{8, 14, 12}) : (Place3{80, 140, 120}));
  }
}

TEST(MsiUnit, MetresAreWrongAndTakenSo) {
  std::string heading = usual;
  heading.replace(heading.find("  x "), 4, "  x(m) ");
  std::string metres = millimetres;
  metres.replace(metres.find("15 50 60"), 8, "0.015 0.05 0.06");
  for (const std::string& text : {heading + metres, usual + "(msec) (m) (m) (m)\n" + metres}) {
    Audited a("a.txt", text);
    EXPECT_EQ(a.place(0)[0], 0.5);  // mm
    EXPECT_EQ(a.outline(), Lines{"wrong unit"});
    const host::RepairReport report = a.repair({FindingCode::unit});
    EXPECT_EQ(report.told, Lines{"1 dipole: the position was taken as m, as the heading gives it."});
    EXPECT_EQ(outlineOf(report.left.findings), Lines());
    EXPECT_EQ(a.place(0), (Place3{50, 60, 15}));
  }
}

TEST(MsiUnit, WithoutAUnitPositionsThatCannotBeCentimetresAreDoubtfulAndTakenAsTheUserSays) {
  Audited a("a.txt", usual + millimetres);
  EXPECT_EQ(a.place(0), (Place3{500, 600, 150}));
  EXPECT_EQ(a.outline(), Lines{"doubtful unit"});
  EXPECT_TRUE(a.only(FindingCode::unit).asksForUnit);
  EXPECT_EQ(outlineOf(a.repair({FindingCode::unit}).left.findings), Lines{"doubtful unit"});
  a.file.unit = LengthUnit::millimetre;
  EXPECT_EQ(outlineOf(a.repair({FindingCode::unit}).left.findings), Lines());
  EXPECT_EQ(a.place(0), (Place3{50, 60, 15}));
}

TEST(MsiUnit, WhatTheUserSaysDoesNotOverrideTheTable) {
  const std::string accented = row.substr(0, row.size() - 2) + "\xC3\xBC\n";  // every row is looked at
  for (const std::string& text : {usual + accented, usual + "(msec) (cm) (cm) (cm)\n" + row}) {
    Audited a("a.txt", text);
    a.file.unit = LengthUnit::millimetre;
    a.repair({FindingCode::unit, FindingCode::encoding});
    EXPECT_EQ(a.place(0), (Place3{50, 60, 15}));
    EXPECT_EQ(a.outline(), Lines{"note unit"});
    EXPECT_EQ(a.only(FindingCode::unit).sentence,
              "The table gives its positions in cm; the other unit that you said was not used.");
    a.file.unit = LengthUnit::centimetre;
    EXPECT_EQ(a.outline(), Lines());
  }
  Audited b("a.txt", usual + inMillimetres + millimetres);
  b.file.unit = LengthUnit::centimetre;
  b.repair({FindingCode::unit, FindingCode::latencyUnit});
  EXPECT_EQ(b.place(0), (Place3{50, 60, 15}));
  EXPECT_EQ(b.outline(), Lines{"note unit"});
}

TEST(MsiLatencyUnit, SecondsAreWrongAndTakenSo) {
  std::string heading = usual;
  heading.replace(heading.find("Latency"), 7, "Latency(s)");
  Audited a("a.txt", heading + "0.5" + row.substr(4));
  EXPECT_EQ(a.dipole(0).m_latency, 0.5);
  EXPECT_EQ(a.outline(), Lines{"wrong latency-unit"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::latencyUnit}).left.findings), Lines());
  EXPECT_EQ(a.dipole(0).m_latency, 500);
}

TEST(MsiLoss, RowsCutShortOrWithCommasAreLost) {
  const Audited a("a.txt",
                  usual + row + "20,5 1,5 5,0 6,0 9 2 -1 22 4 0 0 0 1 a b c 1 x\n21.0 1.5 5.0 6.0 9.0 2.0\n");
  EXPECT_EQ(a.set->m_totalDipoles, 1);
  const host::Finding finding = a.only(FindingCode::lostRows);
  EXPECT_EQ(finding.line, 3);
  EXPECT_TRUE(finding.sentence.starts_with("2 rows of dipoles did not come"));
  EXPECT_EQ(a.outline(), Lines{"wrong lost-rows"});
}

TEST(MsiLoss, ALastRowWithoutALineEndAndARefusedOne) {
  const Audited a("a.txt", usual + row + row.substr(0, row.size() - 1));
  EXPECT_EQ(a.set->m_totalDipoles, 1);
  EXPECT_EQ(a.only(FindingCode::lostRows).line, 3);
  EXPECT_EQ(Audited("a.txt", usual + row + "20.0 301" + row.substr(8), {"far no"}).outline(), Lines());
}

TEST(MsiLoss, PageHeadersAndRepeatedHeadingsAreNoRows) {
  EXPECT_EQ(Audited("a.txt", usual + row + "\n12-Mar-2005 Page 2 of 3\n" + usual + row).outline(), Lines());
}

TEST(MsiLoss, ValuesThatAreNoNumbersAreWrong) {
  const Audited a("a.txt", usual + row + "20.0 nan" + row.substr(8));
  EXPECT_EQ(a.set->m_totalDipoles, 2);
  EXPECT_EQ(a.only(FindingCode::lostRows).slots, std::vector{1});
}

TEST(MsiLoss, AFileWithoutAHeadingIsWrong) {
  EXPECT_EQ(Audited("a.txt", "LATENCY x y z\n" + row).outline(), Lines{"wrong sections"});
}

TEST(MsiEncoding, Utf8IsANoteAndUtf16IsWrong) {
  const std::string text = "Disk Media: a\nMRI/CT Patient: J\xC3\xB6rg\nDate of File: b\n" + usual + row;
  Audited a("a.txt", text);
  EXPECT_EQ(host::utf8Of(a.set->m_patient), " J\xC3\x83\xC2\xB6rg");  // two letters for one
  EXPECT_EQ(a.outline(), Lines{"note encoding"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::encoding}).left.findings), Lines());
  EXPECT_EQ(host::utf8Of(a.set->m_patient), " J\xC3\xB6rg");
  std::string wide = "\xFE\xFF";
  for (const char c : usual + row) {
    wide += '\0';
    wide += c;
  }
  Audited b("a.txt", wide);
  EXPECT_EQ(b.set->m_totalDipoles, 0);
  EXPECT_EQ(b.outline(), Lines{"wrong encoding"});
  EXPECT_EQ(outlineOf(b.repair({FindingCode::encoding}).left.findings), Lines());
  EXPECT_EQ(b.place(0), (Place3{50, 60, 15}));
}
