// Rows of a CTF file whose columns are not those that the import takes for granted, and labels.
#include "tests/host/audit/Audited.h"

using host::DipoleValue;
using host::FindingCode;
using host::Severity;

namespace {

const std::string usualHeading =
    "\t//\tTrial\tSample\tLatency (s)\txp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tErr(%)\tLabel\n";
const std::string ellipsoidHeading =
    "\t// \tTrial\tSample\tLatency (s)\txp (cm)\typ (cm)\tzp "
    "(cm)\txo\tyo\tzo\tMom(nAm)\tE1x\tE1y\tE1z\tE2x\tE2y\t"
    "E2z\tE3x\tE3y\tE3z\tEcx\tEcy\tEcz\tConf(%)\tErr(%)\tMEG Err(%)\tEEG Err(%)\tLabel\n";
const std::string shortHeading =
    "\t//\tTrial\tSample\tLatency (s)\txp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\n";

const std::string shownAs =
    "The section has other columns than the import takes for granted: values of others are shown as ";

// 27 fields behind the number.
std::string ellipsoidRow(const std::string& error, const std::string& label) {
  return "1:\t1\t400\t0.08\t1.2\t5.3\t5.6\t-0.3\t0.1\t-0.9\t21.7\t0.381\t0.000\t0.000\t0.0\t0.2\t0.0\t0.0\t0."
         "0\t0.4\t"
         "1.2\t5.3\t5.6\t95.0\t" +
         error + "\t10.91\t0.00" + (label.empty() ? "" : "\t" + label);
}

Audited moving(const std::string& heading, const Lines& rows) {
  return Audited("a.dip", ctfSphere + ctfSection("Fit_Results", heading, rows), {"moving yes"});
}

const std::string fit = ctfFit + "1: 1 1 0.1 1 5 5 0 0 0 1 a\n2: 1 1 0.1 1 5 5 0 0 0 1 a\n}\n";

Audited labelled(const std::string& heading, const Lines& rows) {
  return Audited("a.dip", ctfSphere + ctfSection("Dipoles", heading, rows) + fit);
}

}  // namespace

TEST(MovingColumns, AnEllipsoidsAxisIsTakenAsFitErrorUntilTheHeadingsColumnsAreTaken) {
  Audited a = moving(ellipsoidHeading, {ellipsoidRow("10.5", "left")});
  EXPECT_EQ(a.dipole(0).m_fitError, static_cast<double>(0.381F));
  EXPECT_EQ(a.label(0), "0.000");
  const host::Finding finding = a.only(FindingCode::movingColumns);
  EXPECT_EQ(finding.severity, Severity::wrong);
  EXPECT_EQ(finding.slots, std::vector{0});
  EXPECT_EQ(finding.sentence, shownAs + "fit error and label.");
  EXPECT_EQ(a.outline(), Lines{"wrong moving-columns"});
  const host::RepairReport report = a.repair({FindingCode::movingColumns});
  EXPECT_EQ(report.told, Lines{"1 dipole: the values were taken from the columns that the heading names."});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_TRUE(report.left.unknown.isEmpty());
  EXPECT_EQ(a.dipole(0).m_fitError, 10.5);
  EXPECT_EQ(a.label(0), "left");
  EXPECT_EQ(a.dipole(0).m_latency, static_cast<double>(0.08F * 1000.0F));
  EXPECT_EQ(a.place(0), (Place3{53, 56, 12}));
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(MovingColumns, ALabelThatIsMissingAtTheEndOfSuchARowIsNone) {
  Audited a = moving(ellipsoidHeading, {ellipsoidRow("10.5", "left"), ellipsoidRow("9.5", "")});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::movingColumns}).left.findings), Lines());
  EXPECT_EQ(a.dipole(1).m_fitError, 9.5);
  EXPECT_EQ(a.label(1), "Non");
}

TEST(MovingColumns, MoreColumnsThanAHeadingNamesMakeFitErrorAndLabelUnknown) {
  Audited a = moving(shortHeading, {ellipsoidRow("10.5", "left")});
  EXPECT_EQ(a.dipole(0).m_fitError, static_cast<double>(0.381F));
  EXPECT_EQ(a.outline(), Lines{"wrong moving-columns"});
  const host::RepairReport report = a.repair({FindingCode::movingColumns});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_TRUE(report.left.unknown.isUnknown(0, DipoleValue::fitError));
  EXPECT_FALSE(report.left.unknown.isUnknown(0, DipoleValue::latency));
  EXPECT_EQ(a.dipole(0).m_fitError, 0.2);  // as a dipole without one has it
  EXPECT_EQ(a.label(0), "Non");
}

TEST(MovingColumns, ColumnsInAnotherOrderAreTakenByTheirNames) {
  const std::string heading =
      "\t//\tTrial\tSample\tLatency (s)\tErr(%)\txp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tLabel\n";
  Audited a = moving(heading, {"1:\t1\t400\t0.08\t10.5\t1.2\t5.3\t5.6\t-0.3\t0.1\t-0.9\t21.5\tleft"});
  EXPECT_EQ(a.place(0), (Place3{12, 53, 105}));  // the error is the x of the file
  EXPECT_EQ(a.outline(), Lines{"wrong moving-columns"});
  EXPECT_EQ(a.only(FindingCode::movingColumns).sentence,
            shownAs + "place, orientation, moment and fit error. The dipoles are shown in wrong places.");
  EXPECT_EQ(outlineOf(a.repair({FindingCode::movingColumns}).left.findings), Lines());
  EXPECT_EQ(a.place(0), (Place3{53, 56, 12}));
  EXPECT_EQ(a.dipole(0).m_rawLocation.m_center[2], 12);
  EXPECT_EQ(a.dipole(0).m_orientation[1], static_cast<double>(-0.9F));
  EXPECT_EQ(a.dipole(0).m_moment, 21.5);
  EXPECT_EQ(a.dipole(0).m_fitError, 10.5);
}

TEST(MovingColumns, WithTwoColumnsExchangedThePlaceIsNamed) {
  Audited a = labelled("\t// yp (cm)\txp (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tLabel\n",
                       {"1:\t5\t1\t6\t0\t0\t1\t20\tleft", "2:\t-5\t1\t6\t0\t0\t1\t20\tright"});
  EXPECT_EQ(a.place(0), (Place3{10, 60, 50}));
  EXPECT_EQ(a.only(FindingCode::movingColumns).sentence,
            shownAs + "place. The dipoles are shown in wrong places.");
  EXPECT_EQ(outlineOf(a.repair({FindingCode::movingColumns}).left.findings), Lines());
  EXPECT_EQ(a.place(0), (Place3{50, 60, 10}));
}

TEST(MovingColumns, ADipoleCountsOnceWhosePlaceAndValuesAreOfOtherColumns) {
  const std::string heading = "\t// Mom(nAm)\txp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tLabel\n";
  Audited a = labelled(heading, {"1:\t20\t1\t5\t6\t0\t0\t1\tleft", "2:\t30\t1\t-5\t6\t0\t0\t1\tright"});
  EXPECT_EQ(a.place(0), (Place3{10, 50, 200}));
  EXPECT_EQ(a.dipole(0).m_moment, 1);
  EXPECT_EQ(a.only(FindingCode::movingColumns).slots, (std::vector{0, 1}));
  const host::RepairReport report = a.repair({FindingCode::movingColumns});
  EXPECT_EQ(outlineOf(report.left.findings), Lines());
  EXPECT_EQ(a.place(1), (Place3{-50, 60, 10}));
  EXPECT_EQ(a.dipole(1).m_moment, 30);
}

// Its own latency and fit error are what the row of the fit information says, which the import reads last.
TEST(MovingColumns, LatencyAndErrorOfADipoleWithARowOfFitInformationAreThoseOfTheRow) {
  const std::string row = "1:\t1\t400\t0.1\t5\t4.5\t0\t0\t0\t1\ta.ds\n";
  Audited a("a.dip",
            ctfSphere + ctfSection("Fit_Results", ellipsoidHeading, {ellipsoidRow("10.5", "left")}) + ctfFit +
                row + "}\n",
            {"moving yes"});
  EXPECT_EQ(a.outline(), Lines{"wrong moving-columns"});
  EXPECT_EQ(outlineOf(a.repair(host::allFindingCodes()).left.findings), Lines());
  EXPECT_EQ(a.dipole(0).m_latency, 100);
  EXPECT_EQ(a.dipole(0).m_fitError, 4.5);
  EXPECT_EQ(a.label(0), "left");
  EXPECT_EQ(a.repair(host::allFindingCodes()).told, Lines());
}

TEST(MovingColumns, RowsThatTheHeadingDoesNotFitHaveNoRemedy) {
  const Audited a = moving(ellipsoidHeading, {ellipsoidRow("10.5", "left"),
                                              "2:\t1\t401\t0.09\t1.2\t5.3\t5.6\t0\t0\t1\t20\t0.1\t0.2\t0.3"});
  EXPECT_EQ(a.outline(), (Lines{"wrong moving-columns", "wrong moving-columns"}));
  const host::AuditReport report = host::audit(a.file, *a.set);
  EXPECT_EQ(report.findings[0].slots, std::vector{0});
  EXPECT_FALSE(report.findings[0].remedy.empty());
  EXPECT_EQ(report.findings[1].slots, std::vector{1});
  EXPECT_TRUE(report.findings[1].remedy.empty());
}

TEST(MovingColumns, TheUsualColumnsAndALabelOfNumbersAreClean) {
  EXPECT_EQ(
      moving(usualHeading, {"1:\t1\t400\t0.08\t1.2\t5.3\t5.6\t-0.3\t0.1\t-0.9\t21.5\t10.5\t7"}).outline(),
      Lines());
  EXPECT_EQ(moving(usualHeading, {"1:\t1\t400\t0.08\t1.2\t5.3\t5.6\t-0.3\t0.1\t-0.9\t21.5\t10.5"}).outline(),
            Lines());
}

TEST(MovingColumns, StaticDipolesWithAColumnBeforeTheLabelAreTakenByTheHeading) {
  Audited a = labelled("\t// xp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tErr(%)\tLabel\n",
                       {"1:\t1\t5\t6\t0\t0\t1\t20\t4.5\tleft", "2:\t1\t-5\t6\t0\t0\t1\t20\t4.5\tright"});
  EXPECT_EQ(a.label(0), "4.5");
  EXPECT_EQ(a.outline(), Lines{"wrong moving-columns"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::movingColumns}).left.findings), Lines());
  EXPECT_EQ(a.label(0), "left");
  EXPECT_EQ(a.label(1), "right");
}

TEST(Labels, ALabelOfTheDipoleBeforeIsWrongAndTakenOff) {
  Audited a = labelled(ctfHeading, {"1:\t1\t5\t6\t0\t0\t1\t20\tleft", "2:\t1\t-5\t6\t0\t0\t1\t20"});
  EXPECT_EQ(a.label(1), "left");  // on the right
  EXPECT_EQ(a.outline(), Lines{"wrong labels"});
  EXPECT_EQ(a.only(FindingCode::labels).slots, std::vector{1});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::labels}).left.findings), Lines());
  EXPECT_EQ(a.label(0), "left");
  EXPECT_EQ(a.label(1), "Non");
}

TEST(Labels, AFileWithoutLabelsIsClean) {
  EXPECT_EQ(labelled(ctfHeading, {"1:\t1\t5\t6\t0\t0\t1\t20", "2:\t1\t-5\t6\t0\t0\t1\t20"}).outline(),
            Lines());
}

TEST(Labels, LabelsOfSeveralWordsAreCutAndTakenWholeWhereThatIsCertain) {
  Audited a =
      labelled(ctfHeading, {"1:\t1\t5\t6\t0\t0\t1\t20\tleft hand", "2:\t1\t-5\t6\t0\t0\t1\t20\tfoot"});
  EXPECT_EQ(a.label(0), "left");
  EXPECT_EQ(a.outline(), Lines{"note labels"});
  EXPECT_EQ(outlineOf(a.repair({FindingCode::labels}).left.findings), Lines());
  EXPECT_EQ(a.label(0), "left hand");
  EXPECT_EQ(a.label(1), "foot");

  const Audited open =
      labelled("// (cm) (nAm)\n", {"1: 1 5 6 0 0 1 20 left hand", "2: 1 -5 6 0 0 1 20 foot"});
  EXPECT_EQ(open.outline(), Lines{"note labels"});
  EXPECT_TRUE(open.only(FindingCode::labels).remedy.empty());
}
