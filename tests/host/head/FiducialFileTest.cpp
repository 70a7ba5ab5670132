// A fiducial file gives three points, or is refused with the line and the cause.
#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <system_error>

#include "host/head/FiducialFile.h"
#include "host/text/PathText.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

void expectPoint(const host::Vector3& point, double x, double y, double z) {
  EXPECT_EQ(point.x, x);
  EXPECT_EQ(point.y, y);
  EXPECT_EQ(point.z, z);
}

host::Fiducials read(const std::string& text) {
  const TempFolder folder;
  return host::readFiducialFile(host::pathOf(folder.write("head.fiducials", text))).points;
}

// What is said behind the file's name.
std::string causeOf(const std::string& text) {
  const TempFolder folder;
  const CString path = folder.write("head.fiducials", text);
  const std::string failure = failureOf([&] { (void)host::readFiducialFile(host::pathOf(path)); });
  const std::string begin = "fiducial points " + host::utf8Of(path) + ": ";
  EXPECT_TRUE(failure.empty() || failure.starts_with(begin)) << failure;
  return failure.empty() ? "" : failure.substr(begin.size());
}

}  // namespace

TEST(FiducialFile, LinesStandInAnyOrderWithBlanksAndRemarks) {
  const host::Fiducials points =
      read("# a head\n\n  right 75 -20.5 +3 # from the scanner\nnasion\t0.25 1e2 -4\r\n   \nleft -75 -19 3");
  expectPoint(points.nasion, 0.25, 100, -4);
  expectPoint(points.leftEar, -75, -19, 3);
  expectPoint(points.rightEar, 75, -20.5, 3);
}

TEST(FiducialFile, ARemarkKeepsWhatTheMillimetresAre) {
  const TempFolder folder;
  const host::Fiducials points{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
  const auto spaceIn = [&](const std::string& text) {
    return host::readFiducialFile(host::pathOf(folder.write("a.fiducials", text))).space;
  };
  for (const int code : {-1, 0, 1, 2, 3, 4}) {
    const auto space = static_cast<host::MriSpace>(code);
    EXPECT_EQ(spaceIn(host::fiducialText(points, space)), space);
  }
  EXPECT_EQ(spaceIn("nasion 1 2 3\nleft 4 5 6\nright 7 8 9\n# millimetres: of a friend\n"), std::nullopt);
}

TEST(FiducialFile, ByteOrderMarkOfAnEditorIsNoName) {
  expectPoint(read("\xEF\xBB\xBFnasion 1 2 3\nleft 4 5 6\nright 7 8 9\n").nasion, 1, 2, 3);
}

TEST(FiducialFile, RefusesWhatItDoesNotKnow) {
  EXPECT_EQ(causeOf("nasion 1 2 3\ninion 4 5 6\n"), "line 2 begins with neither nasion, left nor right");
  EXPECT_EQ(causeOf("Nasion 1 2 3\n"), "line 1 begins with neither nasion, left nor right");
}

TEST(FiducialFile, RefusesWhatAreNotThreeNumbers) {
  for (const char* values : {"", " 1 2", " 1 2 3 4", " 1 2 x", " 1 2 nan", " 1 inf 2", " 1,2,3", " 1 2 3mm",
                             " 1 2 1e999", " 1 2 +-3", " 1 2 ++3"}) {
    EXPECT_EQ(causeOf("\nnasion" + std::string(values) + "\n"), "line 2 needs three numbers after nasion")
        << values;
  }
}

TEST(FiducialFile, RefusesAPointTwiceAndAPointLess) {
  EXPECT_EQ(causeOf("left 1 2 3\nleft 1 2 3\n"), "line 2 gives the point left a second time");
  EXPECT_EQ(causeOf("nasion 1 2 3\nright 1 2 3\n"), "no line gives the point left");
  EXPECT_EQ(causeOf(""), "no line gives the point nasion");
}

TEST(FiducialFile, RefusesWhatIsNoFile) {
  const TempFolder folder;
  EXPECT_EQ(failureOf([&] { (void)host::readFiducialFile(host::pathOf(folder.path())); }),
            "fiducial points " + folder.pathUtf8() + ": a folder, not a file");
  EXPECT_EQ(failureOf([&] { (void)host::readFiducialFile(host::pathOf(folder.path("gone"))); }),
            "fiducial points " + host::utf8Of(folder.path("gone")) + ": cannot be opened (" +
                std::generic_category().message(ENOENT) + ")");
}

TEST(FiducialFile, RefusesMoreThan64KiB) {
  const std::string three = "nasion 1 2 3\nleft 4 5 6\nright 7 8 9\n";
  EXPECT_EQ(causeOf(three + std::string(65536 - three.size(), '\n')), "");
  EXPECT_EQ(causeOf(three + std::string(65537 - three.size(), '\n')), "there are more than 64 KiB of it");
}

TEST(ReadCoordinates, SeparatorIsAnswered) {
  expectPoint(*host::readCoordinates("1,-2.5,+3", ','), 1, -2.5, 3);
  expectPoint(*host::readCoordinates(" 1 \t-2.5  3 ", ' '), 1, -2.5, 3);
  for (const char* text : {"", "1,2", "1,2,3,4", "1, 2,3", "1,,3", ",1,2", "1,2,", "1 2 3"}) {
    EXPECT_FALSE(host::readCoordinates(text, ',')) << text;
  }
}
