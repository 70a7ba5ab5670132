// Names of labels are read as the known texts have them, and what cannot be a name is refused by its line.
#include <gtest/gtest.h>
#include <string>

#include "host/head/LabelNames.h"
#include "host/text/PathText.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

using host::LabelNames;
using host::labelNamesOf;

std::string refusal(const std::string& text) {
  return failureOf([&] { (void)labelNamesOf(text); });
}

}  // namespace

TEST(LabelNames, ACodeBehindEachNameIsNoPartOfIt) {
  const LabelNames names = labelNamesOf("1 Precentral_L 2001\r\n2 Precentral_R 2002\r\n\r\n");
  EXPECT_EQ(names, (LabelNames{{1, "Precentral_L"}, {2, "Precentral_R"}}));
}

TEST(LabelNames, ColorsBehindEachNameAreNoPartOfIt) {
  EXPECT_EQ(
      labelNamesOf("# No. Label R G B A\n\n  0   Unknown   0 0 0 0\n 12   Left-Putamen   236 13 176 0\n"),
      (LabelNames{{12, "Left-Putamen"}}));
}

TEST(LabelNames, BehindATabTheNameMayHoldBlanks) {
  EXPECT_EQ(labelNamesOf("0\tUnclassified\r\n3\tGenu of corpus callosum\r\n4\tBody\tof no use\n"),
            (LabelNames{{3, "Genu of corpus callosum"}, {4, "Body"}}));
}

TEST(LabelNames, ANumberThatTellsNamesApartIsAPartOfThem) {
  EXPECT_EQ(labelNamesOf("4 Area 4\n6 Area 6"), (LabelNames{{4, "Area 4"}, {6, "Area 6"}}));
}

TEST(LabelNames, ANumberThatNoCodeIsLikeIsAPartOfAName) {
  EXPECT_EQ(labelNamesOf("91 Crus 1\n97 Vermis 3\n99 Lobule 10\n"),
            (LabelNames{{91, "Crus 1"}, {97, "Vermis 3"}, {99, "Lobule 10"}}));
  EXPECT_EQ(labelNamesOf("1 Crus 1\n"), (LabelNames{{1, "Crus 1"}}));
  EXPECT_EQ(labelNamesOf("1 S_Sup-1 2\n2 S_Sup-2 3\n3 G_Inf 5\n"),
            (LabelNames{{1, "S_Sup-1"}, {2, "S_Sup-2"}, {3, "G_Inf"}}));
}

TEST(LabelNames, WhereALineHasNoCodeNoneHas) {
  EXPECT_EQ(labelNamesOf("1 Frontal Pole\n2 Insula 2\n"), (LabelNames{{1, "Frontal Pole"}, {2, "Insula 2"}}));
}

TEST(LabelNames, AByteOrderMarkIsLeftOut) {
  EXPECT_EQ(labelNamesOf("\xEF\xBB\xBF"
                         "1 a 2005"),
            (LabelNames{{1, "a"}}));
}

TEST(LabelNames, RefusesByTheLineWhatIsNoName) {
  EXPECT_EQ(refusal("1 a\nb c\n"), "line 2: it does not begin with a label, a whole number from 0 to 65535");
  EXPECT_EQ(refusal("-1 a\n"), "line 1: it does not begin with a label, a whole number from 0 to 65535");
  EXPECT_EQ(refusal("65536 a\n"), "line 1: it does not begin with a label, a whole number from 0 to 65535");
  EXPECT_EQ(refusal("\n1.5 a\n"), "line 2: it does not begin with a label, a whole number from 0 to 65535");
  EXPECT_EQ(refusal("7\n"), "line 1: the name is missing");
  EXPECT_EQ(refusal("7\t\tx\n"), "");
  EXPECT_EQ(refusal("1 a\n1 b\n"), "line 2: the label 1 is there twice");
  EXPECT_EQ(refusal("1 \xFFx\n"), "line 1: this is no UTF-8");
  EXPECT_EQ(refusal("1 a\x1Bx\n"), "line 1: there is a control character in it");
  EXPECT_EQ(refusal("1 a\n2\tb\x7F\n"), "line 2: there is a control character in it");
  EXPECT_EQ(refusal(std::string("1 a\0b\n", 6)), "line 1: there is a control character in it");
  EXPECT_EQ(refusal("1 " + std::string(200, 'x')), "");
  EXPECT_EQ(refusal("1 " + std::string(201, 'x')), "line 1: a name of more than 200 bytes");
}

TEST(LabelNames, AFileIsNamedByWhatIsSaidOfIt) {
  const TempFolder folder;
  const CString path = folder.write("names.txt", "1 a\n1 b\n");
  const std::string text = failureOf([&] { (void)host::readLabelNames(host::pathOf(path)); });
  EXPECT_EQ(text, host::utf8Of(path) + ": line 2: the label 1 is there twice");
  const CString large = folder.write("large.txt", std::string((1U << 20U) + 1, '\n'));
  EXPECT_EQ(failureOf([&] { (void)host::readLabelNames(host::pathOf(large)); }),
            host::utf8Of(large) + ": there is more than 1 MiB of it");
  EXPECT_NE(failureOf([&] { (void)host::readLabelNames(host::pathOf(folder.path("none.txt"))); }), "");
}
