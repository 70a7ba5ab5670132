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
  const Audited a = withFollowers(fits({"1: - - - -", "2: - - - -", "3: - - - -"}));
  EXPECT_EQ(a.outline(), Lines{"note no-fit"});
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
