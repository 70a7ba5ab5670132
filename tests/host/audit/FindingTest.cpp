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
  EXPECT_EQ(host::nameOf(FindingCode::mriPoints), "mri-points");  // the last one
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

TEST(Findings, WhatIsWrongIsATextForPicturesOnceForAllFilesThatHaveIt) {
  const auto of = [](host::Severity severity, const std::string& file, const std::string& sentence) {
    return host::Finding{host::FindingCode::unit, severity, file, 3, {}, {}, sentence, {}};
  };
  const std::vector<host::Finding> findings = {
      of(host::Severity::wrong, "folder/a.dip", "No unit."), of(host::Severity::doubtful, "a.dip", "Open."),
      of(host::Severity::wrong, "b.dip", "No unit."),        of(host::Severity::wrong, "C:\\c.dip", "Lost."),
      of(host::Severity::note, "a.dip", "A note."),          of(host::Severity::wrong, {}, "Two heads.")};
  EXPECT_EQ(host::wrongTexts(findings),
            (std::vector<std::string>{"a.dip and 1 more: No unit.", "c.dip: Lost.", "Two heads."}));
}

TEST(Findings, WhatIsSaidOfSeveralFilesNamesThemOnce) {
  const std::vector<host::FileText> texts = {{"folder/a.dip", "1 dipole: moved."},
                                             {"b.dip", "2 dipoles: moved."},
                                             {"c.dip", "1 dipole: moved."},
                                             {"", "All."}};
  EXPECT_EQ(host::textsWithFiles(texts), (std::vector<std::string>{"a.dip and 1 more: 1 dipole: moved.",
                                                                   "b.dip: 2 dipoles: moved.", "All."}));
}
