// An MRI opens with the fiducial points beside it, or says why it has none.
#include <array>
#include <gtest/gtest.h>
#include <string>

#include "host/head/HeadFile.h"
#include "host/text/PathText.h"
#include "tests/host/head/CtfFile.h"
#include "tests/host/head/NiftiFile.h"
#include "tests/host/text/Failing.h"
#include "tests/support/FailingNew.h"
#include "tests/support/TempFolder.h"

namespace {

// A grid of 5 mm around the scanner's origin: 40 x 48 x 44 voxels.
std::string mri(bool statesSides = true) {
  NiftiFile file;
  file.dim = {3, 40, 48, 44, 1, 1, 1, 1};
  file.pixdim = {1, 5, 5, 5, 0, 0, 0, 0};
  file.srow = {5, 0, 0, -100, 0, 5, 0, -120, 0, 0, 5, -110};
  file.sformCode = statesSides ? 1 : 0;
  file.count();
  return file.version1();
}

constexpr const char* points = "nasion 0 95 -20\nleft -75 -10 -40\nright 75 -10 -40\n";

}  // namespace

TEST(HeadFile, WithoutPointsTheHeadIsNotRegistered) {
  const TempFolder folder;
  const host::OpenedHead opened = host::openHead(folder.write("head.nii", mri()));
  EXPECT_EQ(opened.head.name, "head.nii");
  EXPECT_FALSE(opened.head.isRegistered());
  EXPECT_EQ(opened.notice, "");
  EXPECT_EQ(opened.head.volume->dimensions(), (std::array<int, 3>{40, 48, 44}));
}

TEST(HeadFile, ProvisionalFrameLiesAroundTheMiddleAlongTheScanner) {
  const TempFolder folder;
  const host::OpenedHead opened = host::openHead(folder.write("head.nii", mri()));
  const host::Vector3 place = opened.head.frame.toScanner({10, 20, 30});  // left, up, front
  EXPECT_NEAR(place.x, -2.5 - 10, 1e-9);
  EXPECT_NEAR(place.y, -2.5 + 30, 1e-9);
  EXPECT_NEAR(place.z, -2.5 + 20, 1e-9);
}

TEST(HeadFile, PointsBesideTheFileRegister) {
  const TempFolder folder;
  folder.write("head.fiducials", points);
  for (const char* name : {"head.nii", "head.nii.gz", "head.NII", "head.Nii.GZ", "head.gz", "head"}) {
    const host::OpenedHead opened = host::openHead(folder.write(name, mri()));
    ASSERT_TRUE(opened.head.isRegistered()) << name;
    EXPECT_EQ(opened.head.fiducials->nasion.y, 95.0);
    const host::Vector3 origin = opened.head.frame.toScanner({0, 0, 0});
    EXPECT_NEAR(origin.x, 0, 1e-9);
    EXPECT_NEAR(origin.y, -10, 1e-9);
    EXPECT_NEAR(origin.z, -40, 1e-9);
  }
}

TEST(HeadFile, PointsOfAnotherNameAreNotTaken) {
  const TempFolder folder;
  folder.write("head.fiducials", points);
  EXPECT_FALSE(host::openHead(folder.write("head2.nii", mri())).head.isRegistered());
  EXPECT_FALSE(host::openHead(folder.write("head.nii.old", mri())).head.isRegistered());
}

TEST(HeadFile, BadPointsAreToldAndNotUsed) {
  const TempFolder folder;
  const CString path = folder.write("head.nii", mri());
  const std::string begin = "fiducial points " + host::utf8Of(folder.path("head.fiducials")) + ": ";
  const std::array<std::array<const char*, 2>, 4> cases = {{
      {"nasion 0 95 -20\nleft 75 -10 -40\nright -75 -10 -40\n",
       "the left ear is not on the left of the right ear: the ears are exchanged, or left is given as "
       "positive"},
      {"nasion 0 141 -20\nleft -75 -10 -40\nright 75 -10 -40\n", "the nasion lies outside of this MRI"},
      {"nasion 0 95 -20\nleft -126 -10 -40\nright 75 -10 -40\n", "the left ear lies outside of this MRI"},
      {"nasion 0 95 -20\n", "no line gives the point left"},
  }};
  for (const auto& [text, cause] : cases) {
    folder.write("head.fiducials", std::string_view(text));
    const host::OpenedHead opened = host::openHead(path);
    EXPECT_FALSE(opened.head.isRegistered());
    EXPECT_EQ(opened.notice, begin + cause);
  }
}

TEST(HeadFile, CtfMriRegistersItselfWithTheLeftOnTheLeft) {
  const TempFolder folder;
  const CString path = folder.write("patient.mri", CtfFile().bytes());
  const host::OpenedHead opened = host::openHead(path);
  ASSERT_TRUE(opened.head.isRegistered());
  EXPECT_EQ(opened.notice, "");
  EXPECT_EQ(opened.question, "");
  const host::Vector3 left = opened.head.frame.toScanner({65, 0, 0});
  EXPECT_NEAR(opened.head.volume->sampleScanner(left), 2.0, 0.1);
  EXPECT_LT(left.x, 0);
}

TEST(HeadFile, PointsBesideACtfMriAreTakenBeforeItsOwn) {
  const TempFolder folder;
  folder.write("patient.fiducials", points);
  const host::OpenedHead opened = host::openHead(folder.write("patient.mri", CtfFile().bytes()));
  ASSERT_TRUE(opened.head.isRegistered());
  EXPECT_EQ(opened.head.fiducials->nasion.y, 95.0);
  EXPECT_FALSE(opened.head.source.slices);
}

TEST(HeadFile, PointsOfNoUsualHeadAreTakenOnlyByThoseWhoKnow) {
  const TempFolder folder;
  CtfFile file;
  file.left = {5, 9, 9};
  file.right = {12, 9, 9};
  host::OpenedHead opened = host::openHead(folder.write("patient.mri", file.bytes()));
  EXPECT_FALSE(opened.head.isRegistered());
  EXPECT_NE(opened.question.find("70.0 mm"), std::string::npos) << opened.question;
  host::takeOwnPoints(opened);
  EXPECT_TRUE(opened.head.isRegistered());
  EXPECT_EQ(opened.question, "");
}

TEST(HeadFile, NothingIsPlacedWhereTheFileHasNoPoints) {
  const TempFolder folder;
  CtfFile file;
  file.nasion = file.left = file.right = {0, 0, 0};
  host::OpenedHead opened = host::openHead(folder.write("patient.mri", file.bytes()));
  EXPECT_FALSE(opened.head.isRegistered());
  EXPECT_FALSE(opened.head.volume->sidesStated());
  const std::string failure = failureOf([&] {
    host::registerHead(opened.head, {{0, 70, 0}, {-65, 0, 0}, {65, 0, 0}});
  });
  EXPECT_NE(failure.find("no dipoles can be placed in this MRI"), std::string::npos) << failure;
  EXPECT_FALSE(opened.head.isRegistered());
}

TEST(HeadFile, FailureNamesFileAndCause) {
  const TempFolder folder;
  const CString path = folder.write("head.nii", "no head");
  const std::string failure = failureOf([&] { (void)host::openHead(path); });
  EXPECT_NE(failure.find(host::utf8Of(path)), std::string::npos) << failure;
  EXPECT_NE(failure.find("not an MRI that can be read"), std::string::npos) << failure;
  const std::string gone = failureOf([&] { (void)host::openHead(folder.path("gone.nii")); });
  EXPECT_NE(gone.find("gone.nii"), std::string::npos) << gone;
}

TEST(HeadFile, ExhaustedMemoryIsTold) {
  const TempFolder folder;
  const CString path = folder.write("head.nii", mri());
  folder.write("head.fiducials", points);
  for (int nth = 1; nth < 400; ++nth) {
    std::string failure;
    bool isOpen = false;
    {
      const FailingNew memory(nth, Lasting::fromThenOn);
      try {
        const host::OpenedHead opened = host::openHead(path);
        isOpen = opened.head.isRegistered();
        if (!memory.failed()) {
          break;
        }
      } catch (const std::runtime_error& error) {
        const MemoryTruce truce;
        failure = error.what();
      }
    }
    EXPECT_TRUE(isOpen || !failure.empty()) << nth;
  }
}
