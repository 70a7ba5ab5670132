// Rows and sections of a CTF file that do not arrive.
#include <algorithm>
#include <fstream>
#include <sstream>

#include "tests/host/audit/Audited.h"
#include "tests/support/TestPlaces.h"

using host::FindingCode;
using host::Severity;

namespace {

const std::string first = "1:\t1\t5\t6\t0\t0\t1\t20\ta";
const std::string second = "2:\t2\t5\t6\t0\t0\t1\t20\tb";
const std::string fit = ctfFit + "1: 1 1 0.1 1 5 5 0 0 0 1 a\n2: 1 1 0.1 1 5 5 0 0 0 1 a\n}\n";

Audited ofRows(const Lines& rows, const Lines& answers = {}) {
  return Audited("a.dip", ctfSphere + ctfSection("Dipoles", ctfHeading, rows), answers);
}

// The line and the beginning of the sentence of the only finding beside the note that there is no fit.
void expectLost(const Audited& a, int line, const std::string& beginning) {
  const host::Finding finding = a.only(FindingCode::lostRows);
  EXPECT_EQ(finding.severity, Severity::wrong);
  EXPECT_EQ(finding.line, line);
  EXPECT_TRUE(finding.sentence.starts_with(beginning)) << finding.sentence;
  EXPECT_TRUE(finding.remedy.empty());
  EXPECT_EQ(a.outline(), (Lines{"note no-fit", "wrong lost-rows"}));
}

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

const std::string movingHeading =
    "// Trial Sample Latency (s) xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Err(%) Label\n";
std::string movingSection(const Lines& rows) {
  return ctfSection("Fit_Results", movingHeading, rows);
}
const std::string movingRow = "1: 1 400 0.08 1.2 5.3 5.6 -0.3 0.1 -0.9 21.5 10.5 left";

}  // namespace

TEST(LostRows, ARowWithDecimalCommasIsLost) {
  const Audited a = ofRows({first, "2:\t1,5\t5,0\t6,0\t0\t0\t1\t20\tb"});
  EXPECT_EQ(a.set->m_totalDipoles, 1);
  expectLost(a, 12, "1 row of dipoles did not come: their fields are not the numbers");
}

TEST(LostRows, ARowWithABraceACommentSignOrAUnitIsLost) {
  for (const char* label : {"a//b", "a{b", "x(cm)"}) {
    const Audited a = ofRows({first, "2:\t2\t5\t6\t0\t0\t1\t20\t" + std::string(label), second});
    EXPECT_EQ(a.set->m_totalDipoles, 2) << label;
    expectLost(a, 12, "1 row of dipoles did not come: they hold a brace, // or (cm)");
  }
}

TEST(LostRows, ARowThatIsACommentIsNone) {
  EXPECT_EQ(ofRows({first, "// 2:\t2\t5\t6\t0\t0\t1\t20\tb"}).outline(), Lines{"note no-fit"});
}

TEST(LostRows, RowsBehindAClosingBraceInALabelAreLost) {
  const Audited a = ofRows({first, "2:\t2\t5\t6\t0\t0\t1\t20\ta}", second, second});
  EXPECT_EQ(a.set->m_totalDipoles, 1);
  const host::AuditReport report = host::audit(a.file, *a.set);
  ASSERT_EQ(outlineOf(report.findings), (Lines{"note no-fit", "wrong lost-rows", "wrong lost-rows"}));
  EXPECT_TRUE(report.findings[1].sentence.starts_with("1 row of dipoles did not come: they hold a brace"));
  EXPECT_TRUE(report.findings[2].sentence.starts_with("2 rows of dipoles did not come: they stand behind"));
}

TEST(LostRows, ALastRowWithoutALineEndIsLost) {
  const Audited a("a.dip", ctfSphere + "Dipoles\n{\n" + ctfHeading + first + "\n" + second);
  EXPECT_EQ(a.set->m_totalDipoles, 1);
  EXPECT_EQ(a.outline(), (Lines{"note no-fit", "wrong lost-rows", "wrong sections"}));
}

TEST(LostRows, PlacesThatAreNoNumbersAreWrong) {
  const Audited a = ofRows({first, "2:\tnan\t5\t6\t0\t0\t1\t20\tb", "3:\t1.5.2\t5\t6\t0\t0\t1\t20\tc"});
  EXPECT_EQ(a.set->m_totalDipoles, 3);
  EXPECT_EQ(a.place(2)[0], 2);  // .2 cm, which is no column of the row
  EXPECT_EQ(a.only(FindingCode::lostRows).slots, (std::vector{1, 2}));
  expectLost(a, 12, "2 dipoles came of rows that hold something else than numbers");
}

TEST(LostRows, RowsThatTheUserRefusedAreNotLost) {
  const std::string distant = "2:\t40\t5\t6\t0\t0\t1\t20\tb";
  const Audited refused = ofRows({first, distant, distant}, {"far no", "far yes"});
  EXPECT_EQ(refused.set->m_totalDipoles, 2);
  EXPECT_EQ(refused.outline(), Lines{"note no-fit"});
}

TEST(LostRows, MoreRowsThanASetHoldsAreLost) {
  Lines rows;
  for (int i = 0; i < 30002; ++i) {
    rows.push_back(first);
  }
  const Audited a = ofRows(rows);
  EXPECT_EQ(a.set->m_totalDipoles, 30000);
  const host::Finding finding = a.only(FindingCode::lostRows);
  EXPECT_EQ(finding.line, 30011);
  EXPECT_TRUE(finding.sentence.starts_with("2 rows of dipoles did not come: a set has room"));
}

TEST(LostRows, ASetThatDoesNotHoldWhatShouldHaveComeIsWrong) {
  const Audited a = ofRows({first, second});
  a.set->deleteDipole(0, 1);
  EXPECT_EQ(a.only(FindingCode::lostRows).sentence, "2 dipoles should have come of this file, but 1 did.");
}

TEST(Sections, AnUnclosedSectionSwallowsTheNextAndItsRowsComeAsDipoles) {
  std::string text = ctfSphere + ctfSection("Dipoles", ctfHeading, {first, second});
  text.resize(text.size() - 2);  // the brace
  const Audited a("a.dip", text + fit);
  EXPECT_EQ(a.set->m_totalDipoles, 4);  // two of them are fit information
  EXPECT_EQ(a.place(2)[0], 10);         // a 1 that is no place
  const host::AuditReport report = host::audit(a.file, *a.set);
  EXPECT_EQ(outlineOf(report.findings), (Lines{"note no-fit", "wrong sections", "wrong sections"}));
  EXPECT_EQ(report.findings[1].sentence,
            "The section before Dipole_FitInfo has no end, so Dipole_FitInfo was not read.");
  EXPECT_EQ(report.findings[1].line, 13);
  EXPECT_EQ(report.findings[2].slots, (std::vector{2, 3}));
  EXPECT_EQ(report.findings[0].slots, (std::vector{0, 1}));
}

TEST(Sections, AFileThatEndsInsideOfASectionIsWrong) {
  EXPECT_EQ(Audited("a.dip", ctfSphere + "Dipoles\n{\n" + ctfHeading + first + "\n").outline(),
            (Lines{"note no-fit", "wrong sections"}));
  // Only the line end behind the last brace is missing: nothing is lost.
  EXPECT_EQ(Audited("a.dip", ctfSphere + "Dipoles\n{\n" + ctfHeading + first + "\n}").outline(),
            Lines{"note no-fit"});
}

TEST(Sections, ANameThatDoesNotStandAloneIsNotRead) {
  for (const char* name : {" Dipoles", "Dipoles\t", "Dipoles {"}) {
    const Audited a("a.dip", ctfSphere + ctfSection(name, ctfHeading, {first}));
    EXPECT_EQ(a.set->m_totalDipoles, 0) << name;
    EXPECT_EQ(a.outline(), Lines{"wrong sections"}) << name;
    EXPECT_EQ(a.only(FindingCode::sections).line, 8) << name;
  }
}

TEST(Sections, BehindASectionWithoutDipolesNothingIsRead) {
  const Audited a("a.dip", ctfSphere + ctfSection("Dipoles", ctfHeading, {}) +
                               ctfSection("Dipoles", ctfHeading, {first}));
  EXPECT_EQ(a.set->m_totalDipoles, 0);
  EXPECT_EQ(a.outline(), Lines{"wrong sections"});
}

TEST(Sections, AFileWithoutDipolesIsWrong) {
  EXPECT_EQ(Audited("a.dip", ctfSphere).outline(), Lines{"wrong sections"});
  EXPECT_EQ(Audited("a.dip", "# CoordinateSystem \"Head\"\n 100 100 1 2 3 4 5 6 7 8\n").outline(),
            Lines{"wrong sections"});
}

TEST(Sections, OfSeveralSectionsOfMovingDipolesOnlyTheLastRemains) {
  const std::string text = ctfSphere + movingSection({movingRow}) + movingSection({movingRow, movingRow});
  const Audited both("a.dip", text, {"moving yes", "moving yes"});
  EXPECT_EQ(both.set->m_totalDipoles, 2);
  EXPECT_EQ(both.outline(), Lines{"wrong sections"});
  EXPECT_TRUE(both.only(FindingCode::sections).isAnswered);
  EXPECT_EQ(both.only(FindingCode::sections).sentence,
            "The last section of moving dipoles that was accepted replaced 1 dipole of sections before it.");
  EXPECT_EQ(Audited("a.dip", text, {"moving yes", "moving no"}).outline(), Lines());
  EXPECT_EQ(Audited("a.dip", text, {"moving no", "moving yes"}).outline(), Lines());
  EXPECT_EQ(Audited("a.dip", text, {"moving no", "moving no"}).outline(), Lines());
}

TEST(Sections, MovingDipolesThatReplaceStaticOnesAreDoubtful) {
  const std::string text =
      ctfSphere + ctfSection("Dipoles", ctfHeading, {first, second}) + fit + movingSection({movingRow});
  EXPECT_EQ(Audited("a.dip", text, {"moving yes"}).outline(), Lines{"doubtful sections"});
  EXPECT_EQ(Audited("a.dip", text, {"moving no"}).outline(), Lines());
}

TEST(CtfAudit, TheExamplesAreCleanButForTheColumnsOfTheMovingOnes) {
  for (const char* name : {"auditory.dip", "spikes.dip"}) {
    EXPECT_EQ(Audited("a.dip", contentOf(examplesFolder() + name)).outline(), Lines()) << name;
  }
  EXPECT_EQ(Audited("a.txt", contentOf(examplesFolder() + "median.txt")).outline(), Lines());
  Audited moving("a.dip", contentOf(examplesFolder() + "moving.dip"), {"moving no", "moving yes"});
  EXPECT_EQ(moving.outline(), Lines{"wrong moving-columns"});
  EXPECT_EQ(outlineOf(moving.repair(host::allFindingCodes()).left.findings), Lines());
  const std::string text = contentOf(examplesFolder() + "moving.dip");
  const std::string last = text.substr(text.rfind("\t41:"));  // of the second section
  EXPECT_NE(last.find("\t" + moving.label(40) + "\n"), std::string::npos) << moving.label(40);
}

TEST(CtfAudit, OtherLineEndsAreTheSameFile) {
  std::string text = contentOf(examplesFolder() + "auditory.dip");
  std::string windows;
  std::string old;
  for (const char c : text) {
    windows += c == '\n' ? "\r\n" : std::string(1, c);
    old += c == '\n' ? '\r' : c;
  }
  EXPECT_EQ(Audited("a.dip", windows).outline(), Lines());
  EXPECT_EQ(Audited("a.dip", old).outline(), Lines());
  windows.replace(windows.find("5.20"), 4, "5,20");
  EXPECT_EQ(Audited("a.dip", windows).only(FindingCode::lostRows).line, 39);
}

TEST(LostRows, APlaceBeyondAllNumbersKeepsItsSign) {
  const std::string many(100, '2');
  const Audited a("a.dip", ctfSphere + ctfSection("Dipoles", ctfHeading, {"1: -" + many + " 1 2 0 0 1 9 a"}));
  EXPECT_EQ(a.set->m_totalDipoles, 1);  // the import asks only about places far to the positive side
  const std::vector<std::string> outline = a.outline();
  EXPECT_EQ(std::count(outline.begin(), outline.end(), "wrong lost-rows"), 0);
}
