#include <gtest/gtest.h>
#include <set>

#include "host/audit/Finding.h"
#include "host/dipoles/UnknownValues.h"

using host::Finding;
using host::FindingCode;
using host::Severity;

TEST(Findings, EveryCodeHasANameOfItsOwnAndAMeaning) {
  std::set<std::string_view> names;
  for (const host::FindingMeaning& meaning : host::findingMeanings()) {
    EXPECT_EQ(host::nameOf(meaning.code), meaning.name);
    EXPECT_EQ(host::findingCodeNamed(meaning.name), meaning.code);
    EXPECT_FALSE(meaning.meaning.empty());
    names.insert(meaning.name);
  }
  EXPECT_EQ(names.size(), host::findingMeanings().size());
  EXPECT_EQ(host::nameOf(FindingCode::otherHead), "other-head");  // the last one
  EXPECT_FALSE(host::findingCodeNamed("units").has_value());
}

TEST(Findings, ALineTellsFileLineSeverityCodeAndSentence) {
  Finding finding{FindingCode::rowOrder, Severity::wrong, "a.dip", 12, "Dipole_Flags", {3}, "Mixed up.", "-"};
  EXPECT_EQ(host::lineOf(finding), "a.dip:12: wrong (row-order): Mixed up.");
  finding.line = 0;
  finding.severity = Severity::doubtful;
  EXPECT_EQ(host::lineOf(finding), "a.dip: doubtful (row-order): Mixed up.");
  finding.file.clear();
  EXPECT_EQ(host::lineOf(finding), "doubtful (row-order): Mixed up.");
}

TEST(Findings, OnlyAWrongOneIsWrong) {
  const Finding note{FindingCode::noFit, Severity::note, {}, 0, {}, {}, {}, {}};
  const Finding doubtful{FindingCode::unit, Severity::doubtful, {}, 0, {}, {}, {}, {}};
  const Finding wrong{FindingCode::unit, Severity::wrong, {}, 0, {}, {}, {}, {}};
  EXPECT_FALSE(host::holdsWrong({}));
  EXPECT_FALSE(host::holdsWrong(std::vector{note, doubtful}));
  EXPECT_TRUE(host::holdsWrong(std::vector{note, wrong, doubtful}));
}

TEST(UnknownValuesTest, AreKeptForEachSlotAndValue) {
  host::UnknownValues unknown;
  EXPECT_TRUE(unknown.isEmpty());
  EXPECT_FALSE(unknown.isUnknown(5, host::DipoleValue::latency));
  unknown.mark(5, host::DipoleValue::latency);
  unknown.mark(5, host::DipoleValue::moment);
  EXPECT_TRUE(unknown.isUnknown(5, host::DipoleValue::latency));
  EXPECT_TRUE(unknown.isUnknown(5, host::DipoleValue::moment));
  EXPECT_FALSE(unknown.isUnknown(5, host::DipoleValue::fitError));
  EXPECT_FALSE(unknown.isUnknown(4, host::DipoleValue::latency));
  EXPECT_EQ(unknown.of(5), 5);  // 1 for the latency, 4 for the moment
  EXPECT_EQ(unknown.end(), 6);
}
