// Flags and fit information of a CTF file that are out of step with its dipoles, or missing.
#include "tests/host/audit/Audited.h"

using host::DipoleValue;
using host::FindingCode;
using host::Severity;

namespace {

const Lines three = {"1:\t1\t5\t6\t0\t0\t1\t20\ta", "2:\t2\t5\t6\t0\t0\t1\t20\tb",
                     "3:\t3\t5\t6\t0\t0\t1\t20\tc"};

// Row n has the latency n * 100 ms and the error n + 0.5.
std::string fitRow(int number, const std::string& megError = "5") {
  const std::string n = std::to_string(number);
  return n + ":\t" + n + "\t1\t0." + n + "\t1\t" + n + ".5\t" + megError + "\t0\t0\t0\t1\ta.ds";
}
std::string fits(const Lines& rows) {
  std::string text = ctfFit;
  for (const std::string& row : rows) {
    text += row + "\n";
  }
  return text + "}\n";
}
std::string flags(const Lines& rows) {
  return ctfSection("Dipole_Flags", "\t//Colour\tShape\tshow dir.\tshowlabel\tshow err\n", rows);
}

Audited withFollowers(const std::string& text, const Lines& rows = three, const Lines& answers = {}) {
  return Audited("a.dip", ctfSphere + ctfSection("Dipoles", ctfHeading, rows) + text, answers);
}

double latency(int number) {
  return static_cast<double>(static_cast<float>(number) / 10.0F * 1000.0F);
}

void expectOwnFits(const Audited& a, const std::vector<int>& numbers) {
  for (std::size_t slot = 0; slot < numbers.size(); ++slot) {
    const CDipoleszq& dipole = a.dipole(static_cast<int>(slot));
    EXPECT_EQ(dipole.m_fitError, numbers[slot] + 0.5) << slot;
    EXPECT_FLOAT_EQ(static_cast<float>(dipole.m_latency), static_cast<float>(latency(numbers[slot]))) << slot;
    EXPECT_EQ(dipole.m_id, numbers[slot]) << slot;
  }
}

}  // namespace

TEST(RowOrder, RowsInStepAreClean) {
  const Audited a = withFollowers(flags({"1: 2 0 1 1 1", "2: 3 1 1 1 1", "3: 9 0 1 1 1"}) +
                                  fits({fitRow(1), fitRow(2), fitRow(3)}));
  expectOwnFits(a, {1, 2, 3});
  EXPECT_EQ(a.outline(), Lines());
}

TEST(RowOrder, FitRowsInAnotherOrderAreGivenToOtherDipolesUntilTheNumbersCount) {
  Audited a = withFollowers(fits({fitRow(2), fitRow(1), fitRow(3)}));
  expectOwnFits(a, {2, 1, 3});
  const host::Finding finding = a.only(FindingCode::rowOrder);
  EXPECT_EQ(finding.severity, Severity::wrong);
  EXPECT_EQ(finding.slots, (std::vector{0, 1}));
  EXPECT_EQ(finding.section, "Dipole_FitInfo");
  EXPECT_EQ(a.outline(), Lines{"wrong row-order"});
  const host::RepairReport report = a.repair({FindingCode::rowOrder});
  EXPECT_EQ(report.told, Lines{"2 dipoles: latency and fit error were taken from its own row."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  expectOwnFits(a, {1, 2, 3});
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(RowOrder, APointInAnIntegersPlaceShiftsAllRowsBehindIt) {
  Audited a = withFollowers(fits({fitRow(1), fitRow(2, "5.5"), fitRow(3)}));
  expectOwnFits(a, {1, 3});
  EXPECT_EQ(a.dipole(2).m_fitError, 0.2);
  EXPECT_EQ(a.only(FindingCode::rowOrder).slots, (std::vector{1, 2}));
  EXPECT_EQ(outlineOf(a.repair({FindingCode::rowOrder}).left.findings), Lines());
  expectOwnFits(a, {1, 2, 3});
}

TEST(RowOrder, APointThatIsReadWithoutAMessageGivesTheErrorZero) {
  Audited a = withFollowers(fits({fitRow(1), "2:\t2\t1\t0.2\t1.0\t2.5\t5\t0\t0\t0\t1\ta.ds", fitRow(3)}));
  const Lines said = a.user.texts();
  const bool isTold =
      std::find(said.begin(), said.end(), "It seems the CTF dipole file is not correct!") != said.end();
  EXPECT_TRUE(isTold);  // the row is refused: 2 is read where .5 follows
  Audited silent = withFollowers(fits({fitRow(1), "2:\t2\t1\t0.2\t1.0\t2\t5\t0\t0\t0\t1\ta.ds", fitRow(3)}));
  EXPECT_EQ(silent.user.texts().size(), 1U);  // the total alone
  EXPECT_EQ(silent.dipole(1).m_fitError, 0.0);
  EXPECT_EQ(silent.only(FindingCode::rowOrder).slots, std::vector{1});
  EXPECT_EQ(outlineOf(silent.repair({FindingCode::rowOrder}).left.findings), Lines());
  EXPECT_EQ(silent.dipole(1).m_fitError, 2.0);
}

TEST(RowOrder, ADipoleThatTheUserRefusedShiftsFlagsAndFits) {
  const Lines rows = {three[0], "2:\t40\t5\t6\t0\t0\t1\t20\tb", three[2]};  // 400 mm
  Audited a = withFollowers(
      flags({"1: 2 0 1 1 1", "2: 3 1 1 1 1", "3: 5 0 1 1 1"}) + fits({fitRow(1), fitRow(2), fitRow(3)}), rows,
      {"far no"});
  EXPECT_EQ(a.set->m_totalDipoles, 2);
  EXPECT_EQ(a.dipole(1).m_display, 2);  // that of the refused one
  expectOwnFits(a, {1, 2});
  EXPECT_EQ(a.outline(), (Lines{"wrong row-order", "wrong row-order"}));
  EXPECT_EQ(outlineOf(a.repair({FindingCode::rowOrder}).left.findings), Lines());
  expectOwnFits(a, {1, 3});
  EXPECT_EQ(a.dipole(1).m_display, 1);
  EXPECT_EQ(a.dipole(1).m_colorF[2], 1.0F);  // white
}

TEST(RowOrder, AMissingFlagsRowLeavesTheInitialColour) {
  Audited a =
      withFollowers(flags({"1: 2 0 1 1 1", "3: 5 1 1 1 1"}) + fits({fitRow(1), fitRow(2), fitRow(3)}));
  EXPECT_EQ(a.only(FindingCode::rowOrder).slots, (std::vector{1, 2}));
  EXPECT_EQ(outlineOf(a.repair({FindingCode::rowOrder}).left.findings), Lines());
  EXPECT_EQ(a.dipole(1).m_display, 1);
  EXPECT_EQ(a.dipole(1).m_colorF[2], 0.0F);  // yellow
  EXPECT_EQ(a.dipole(2).m_display, 2);
}

TEST(RowOrder, FlagsInAnotherOrderAreGivenToOtherDipolesUntilTheNumbersCount) {
  Audited a = withFollowers(flags({"3: 5 1 1 1 1", "2: 2 0 1 1 1", "1: 2 0 1 1 1"}) +
                            fits({fitRow(1), fitRow(2), fitRow(3)}));
  EXPECT_EQ(a.dipole(0).m_display, 2);
  EXPECT_EQ(a.dipole(0).m_colorF[2], 1.0F);  // white, of the third
  const host::Finding finding = a.only(FindingCode::rowOrder);
  EXPECT_EQ(finding.severity, Severity::wrong);
  EXPECT_EQ(finding.section, "Dipole_Flags");
  EXPECT_EQ(finding.slots, (std::vector{0, 2}));
  EXPECT_EQ(a.outline(), Lines{"wrong row-order"});
  const host::RepairReport report = a.repair({FindingCode::rowOrder});
  EXPECT_EQ(report.told, Lines{"2 dipoles: colour and visibility were taken from its own row."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_EQ(a.dipole(0).m_display, 1);
  EXPECT_EQ(a.dipole(0).m_colorF[2], 0.0F);
  EXPECT_EQ(a.dipole(2).m_display, 2);
  EXPECT_EQ(a.dipole(2).m_colorF[2], 1.0F);
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(RowOrder, APointWhereFlagsWantAnIntegerShiftsAllRowsBehindIt) {
  Audited a = withFollowers(flags({"1: 2 0 1 1 1", "2: 2.0 0 1 1 1", "3: 5 1 1 1 1"}) +
                            fits({fitRow(1), fitRow(2), fitRow(3)}));
  EXPECT_EQ(a.dipole(1).m_display, 2);  // that of the third
  EXPECT_EQ(a.dipole(2).m_display, 1);
  EXPECT_EQ(a.only(FindingCode::rowOrder).slots, (std::vector{1, 2}));
  EXPECT_EQ(outlineOf(a.repair({FindingCode::rowOrder}).left.findings), Lines());
  EXPECT_EQ(a.dipole(1).m_display, 1);
  EXPECT_EQ(a.dipole(1).m_colorF[0], 1.0F);  // red
  EXPECT_EQ(a.dipole(1).m_colorF[1], 0.0F);
  EXPECT_EQ(a.dipole(2).m_display, 2);
}

namespace {

std::string headedFits(const std::string& heading, const Lines& rows) {
  return ctfSection("Dipole_FitInfo", heading, rows);
}
const std::string fitHeadingBehindLatency =
    "\tN_Pts\tError\tMEG_Error\tEEG_Error\tErrType\tFitType\tGood\tDataset\n";

}  // namespace

TEST(FitLatencyUnit, MillisecondsAreTakenAsSecondsUntilTheHeadingCounts) {
  Audited a = withFollowers(headedFits("\t//\tTrial\tStart\tLatency (ms)" + fitHeadingBehindLatency,
                                       {"1: 1 1 100 1 1.5 5 0 0 0 1 a.ds", "2: 2 1 200 1 2.5 5 0 0 0 1 a.ds",
                                        "3: 3 1 0 1 3.5 5 0 0 0 1 a.ds"}));
  EXPECT_EQ(a.dipole(1).m_latency, 200000);
  const host::Finding finding = a.only(FindingCode::latencyUnit);
  EXPECT_EQ(finding.severity, Severity::wrong);
  EXPECT_EQ(finding.section, "Dipole_FitInfo");
  EXPECT_EQ(finding.slots, (std::vector{0, 1}));
  EXPECT_EQ(a.outline(), Lines{"wrong latency-unit"});
  EXPECT_EQ(a.repair({FindingCode::rowOrder}).told, Lines());
  const host::RepairReport report = a.repair({FindingCode::latencyUnit});
  EXPECT_EQ(report.told, Lines{"2 dipoles: the latency was taken in the unit that the heading names."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_EQ(a.dipole(1).m_latency, 200);
  EXPECT_EQ(a.dipole(1).m_fitError, 2.5);
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(FitLatencyUnit, MillisecondsInAnotherOrderAreTwoThingsEachRepairedByItself) {
  const std::string text = headedFits("\t//\tTrial\tStart\tLatency (ms)" + fitHeadingBehindLatency,
                                      {"2: 2 1 200 1 2.5 5 0 0 0 1 a.ds", "1: 1 1 100 1 1.5 5 0 0 0 1 a.ds",
                                       "3: 3 1 300 1 3.5 5 0 0 0 1 a.ds"});
  Audited a = withFollowers(text);
  EXPECT_EQ(a.outline(), (Lines{"wrong latency-unit", "wrong row-order"}));
  EXPECT_EQ(a.only(FindingCode::latencyUnit).slots, (std::vector{0, 1, 2}));
  EXPECT_EQ(outlineOf(a.repair({FindingCode::rowOrder}).left.findings), Lines{"wrong latency-unit"});
  EXPECT_EQ(a.dipole(0).m_latency, 100000);
  EXPECT_EQ(outlineOf(a.repair({FindingCode::latencyUnit}).left.findings), Lines());
  EXPECT_EQ(a.dipole(0).m_latency, 100);
  Audited b = withFollowers(text);
  EXPECT_EQ(outlineOf(b.repair(host::allFindingCodes()).left.findings), Lines());
  EXPECT_EQ(b.dipole(0).m_latency, 100);
}

TEST(FitLatencyUnit, WithoutAUnitLatenciesAreDoubtfulAndStay) {
  for (const char* heading : {"\t//\tTrial\tStart\tLatency", ""}) {
    const std::string whole = *heading != '\0' ? heading + fitHeadingBehindLatency : std::string();
    Audited a = withFollowers(headedFits(whole, {fitRow(1), fitRow(2), fitRow(3)}));
    EXPECT_FLOAT_EQ(static_cast<float>(a.dipole(1).m_latency), 200) << heading;
    EXPECT_EQ(a.outline(), Lines{"doubtful latency-unit"}) << heading;
    const host::Finding finding = a.only(FindingCode::latencyUnit);
    EXPECT_EQ(finding.section, "Dipole_FitInfo");
    EXPECT_EQ(finding.slots, (std::vector{0, 1, 2}));
    EXPECT_TRUE(finding.remedy.empty());
    EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
    EXPECT_FLOAT_EQ(static_cast<float>(a.dipole(1).m_latency), 200);
  }
  // A unit counts also where the heading has no name for the error.
  EXPECT_EQ(
      withFollowers(headedFits("// Trial Start Latency (s)\n", {fitRow(1), fitRow(2), fitRow(3)})).outline(),
      Lines());
}

TEST(FitColumns, OtherColumnsAreWrongAndTakenByTheHeading) {
  Audited a = withFollowers(headedFits("// Trial Start Error N_Pts Latency (s) MEG_Error EEG_Error\n",
                                       {"1: 1 1 1.5 1 0.1 5 0 0 0 1 a.ds", "2: 2 1 2.5 1 0.2 5 0 0 0 1 a.ds",
                                        "3: 3 1 3.5 1 0.3 5 0 0 0 1 a.ds"}));
  EXPECT_EQ(a.dipole(1).m_latency, 2500);
  EXPECT_FLOAT_EQ(static_cast<float>(a.dipole(1).m_fitError), 0.2F);
  EXPECT_EQ(a.outline(), Lines{"wrong moving-columns"});
  const host::Finding finding = a.only(FindingCode::movingColumns);
  EXPECT_EQ(finding.section, "Dipole_FitInfo");
  EXPECT_EQ(finding.slots, (std::vector{0, 1, 2}));
  EXPECT_EQ(a.repair({FindingCode::rowOrder}).told, Lines());
  const host::RepairReport report = a.repair({FindingCode::movingColumns});
  EXPECT_EQ(report.told,
            Lines{"3 dipoles: latency and fit error were taken from the columns that the heading names."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  expectOwnFits(a, {1, 2, 3});
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(RowOrder, NumbersThatAreNotUniqueHaveNoRemedy) {
  const Lines same = {"1:\t1\t5\t6\t0\t0\t1\t20\ta", "1:\t2\t5\t6\t0\t0\t1\t20\tb",
                      "2:\t3\t5\t6\t0\t0\t1\t20\tc"};
  EXPECT_EQ(withFollowers(fits({fitRow(1), fitRow(1), fitRow(2)}), same).outline(), Lines());  // in step
  const Audited a = withFollowers(fits({fitRow(1), fitRow(2), fitRow(1)}), same);
  EXPECT_EQ(a.outline(), Lines{"wrong row-order"});
  EXPECT_TRUE(a.only(FindingCode::rowOrder).remedy.empty());
}

TEST(RowOrder, SeveralSectionsOfDipolesEachHaveTheirOwnRows) {
  const std::string second = ctfSection("Dipoles", ctfHeading, {"1:\t4\t5\t6\t0\t0\t1\t20\td"});
  Audited a = withFollowers(fits({fitRow(1), fitRow(2), fitRow(3)}) + second + fits({fitRow(4)}));
  EXPECT_EQ(a.outline(), Lines{"wrong row-order"});  // the number 4 is that of no dipole
  std::string own = fitRow(4);
  own[0] = '1';
  Audited b = withFollowers(fits({fitRow(1), fitRow(2), fitRow(3)}) + second + fits({own}));
  expectOwnFits(b, {4, 2, 3});  // the second section began anew at the first dipole
  EXPECT_EQ(b.dipole(3).m_fitError, 0.2);
  EXPECT_EQ(outlineOf(b.repair({FindingCode::rowOrder}).left.findings), Lines());
  expectOwnFits(b, {1, 2, 3, 4});
}

TEST(RowOrder, MovingDipolesDoNotKeepTheColoursOfTheStaticOnesWhosePlacesTheyTook) {
  const std::string moving = ctfSection(
      "Fit_Results", "// Trial Sample Latency (s) xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Err(%) Label\n",
      {"1: 1 400 0.08 1.2 5.3 5.6 -0.3 0.1 -0.9 21.5 10.5 left"});
  Audited a =
      withFollowers(flags({"1: 2 1 1 1 1", "2: 3 0 1 1 1", "3: 5 0 1 1 1"}) + moving, three, {"moving yes"});
  EXPECT_EQ(a.set->m_totalDipoles, 1);
  EXPECT_EQ(a.dipole(0).m_display, 2);
  EXPECT_EQ(a.outline(), (Lines{"wrong row-order", "doubtful sections"}));
  a.repair({FindingCode::rowOrder});
  EXPECT_EQ(a.outline(), Lines{"doubtful sections"});
  EXPECT_EQ(a.dipole(0).m_display, 1);
  EXPECT_EQ(a.dipole(0).m_fitError, 10.5);
}

TEST(NoFit, WithoutFitInformationLatencyAndErrorAreUnknown) {
  const Audited a = withFollowers({});
  EXPECT_EQ(a.dipole(2).m_latency, 0.0);
  EXPECT_EQ(a.dipole(2).m_fitError, 0.2);
  const host::AuditReport report = host::audit(a.file, *a.set);
  EXPECT_EQ(outlineOf(report.findings), Lines{"note no-fit"});
  EXPECT_EQ(report.findings[0].slots, (std::vector{0, 1, 2}));
  for (int slot = 0; slot < 3; ++slot) {
    EXPECT_TRUE(report.unknown.isUnknown(slot, DipoleValue::latency));
    EXPECT_TRUE(report.unknown.isUnknown(slot, DipoleValue::fitError));
    EXPECT_FALSE(report.unknown.isUnknown(slot, DipoleValue::moment));
  }
}

TEST(NoFit, RowsThatHoldNoNumbersGiveNone) {
  Audited a = withFollowers(fits({"1: - - - -", "2: - - - -", "3: - - - -"}));
  EXPECT_EQ(a.dipole(1).m_latency, 0.0);
  EXPECT_EQ(a.dipole(1).m_fitError, 0.2);
  EXPECT_EQ(a.outline(), Lines{"note no-fit"});
  EXPECT_TRUE(a.only(FindingCode::noFit).remedy.empty());
  const host::RepairReport report = a.repair(host::allFindingCodes());
  EXPECT_EQ(report.told, Lines());
  EXPECT_TRUE(report.left.unknown.isUnknown(1, DipoleValue::latency));
}

TEST(NoFit, OnlyTheDipolesWithoutARowAreUnknown) {
  const Audited a = withFollowers(fits({fitRow(1), fitRow(2)}));
  const host::AuditReport report = host::audit(a.file, *a.set);
  EXPECT_EQ(outlineOf(report.findings), Lines{"note no-fit"});
  EXPECT_EQ(report.findings[0].slots, std::vector{2});
  EXPECT_FALSE(report.unknown.isUnknown(1, DipoleValue::latency));
  EXPECT_TRUE(report.unknown.isUnknown(2, DipoleValue::latency));
}

TEST(RowOrder, SlotsAreThoseOfTheSetBehindOtherFiles) {
  Audited a = withFollowers(fits({fitRow(2), fitRow(1), fitRow(3)}));
  CString path = a.folder.path("a.dip");
  EXPECT_EQ(a.set->importDipoleX(path, false), 1);
  a.file.firstSlot = 3;
  EXPECT_EQ(a.only(FindingCode::rowOrder).slots, (std::vector{3, 4}));
  a.repair({FindingCode::rowOrder});
  EXPECT_EQ(a.dipole(0).m_id, 2);  // of the first import: nobody asked for its repair
  EXPECT_EQ(a.dipole(3).m_id, 1);
}
