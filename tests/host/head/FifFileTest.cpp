// MNE's fiducial points and transforms are read in the frame that they name, or refused with the cause.
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "host/head/FiducialFile.h"
#include "host/head/FifFile.h"
#include "host/text/PathText.h"
#include "tests/host/head/FifBytes.h"
#include "tests/host/head/NiftiFile.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

std::string pointCause(const std::string& bytes) {
  return failureOf([&] { (void)host::fifPoints(bytes); });
}

std::string wayCause(const std::string& bytes) {
  return failureOf([&] { (void)host::fifHeadToSurface(bytes); });
}

std::string way(std::int32_t from, std::int32_t to, const std::array<float, 12>& numbers = fif::turned) {
  return fif::start() + fif::transform(from, to, numbers) + fif::end();
}

void expectNear(const host::Vector3& found, const host::Vector3& expected) {
  EXPECT_NEAR(length(found - expected), 0.0, 1e-4);
}

}  // namespace

TEST(FifFile, PointsAreMillimetresOfTheFrameThatIsNamed) {
  for (const auto& [number, frame] : {std::pair{5, host::PointFrame::surface},
                                      {4, host::PointFrame::head},
                                      {2002, host::PointFrame::scanner}}) {
    const host::FramedPoints found = host::fifPoints(fif::usualPoints(number));
    EXPECT_EQ(found.frame, frame);
    expectNear(found.points.nasion, {0, 100, 0});
    expectNear(found.points.leftEar, {-70, 0, 0});
    expectNear(found.points.rightEar, {75, 0, 0});
  }
  EXPECT_EQ(pointCause(fif::usualPoints(2001)),
            "its points are in a frame that says nothing about an MRI: voxels of the MRI");
  EXPECT_EQ(pointCause(fif::usualPoints(77)),
            "its points are in a frame that says nothing about an MRI: frame 77");
}

TEST(FifFile, FiducialFileTellsItByItsContent) {
  const TempFolder folder;
  const auto read = [&](const std::string& bytes) {
    return host::readFiducialFile(host::pathOf(folder.write("head.fiducials", bytes)));
  };
  EXPECT_EQ(read(fif::usualPoints()).frame, host::PointFrame::surface);
  EXPECT_EQ(read("nasion 0 90 0\nleft -70 0 0\nright 70 0 0\n").frame, host::PointFrame::scanner);
  EXPECT_EQ(read(gzip(fif::usualPoints())).frame, host::PointFrame::surface);
  const std::string failure = failureOf([&] { (void)read(fif::usualPoints(1)); });
  EXPECT_NE(failure.find("head.fiducials: its points are in a frame"), std::string::npos) << failure;
}

TEST(FifFile, OtherPointsAreLeftOutAndEachCardinalOneIsThereOnce) {
  const std::string frame = fif::number(3506, 5);
  const std::string left = fif::point(1, -0.07F, 0, 0);
  const std::string nasion = fif::point(2, 0, 0.1F, 0);
  const std::string right = fif::point(3, 0.07F, 0, 0);
  EXPECT_EQ(pointCause(fif::points(frame + fif::point(1, 9, 9, 9, 4) + right + nasion + left)), "");
  EXPECT_EQ(pointCause(fif::points(frame + left + right)), "it does not give the nasion");
  EXPECT_EQ(pointCause(fif::points(frame + left + left + nasion + right)), "it gives the left ear twice");
  EXPECT_EQ(pointCause(fif::points(frame + fif::point(4, 0, 0, 0))),
            "a cardinal point has the number 4, where there are 1 to 3");
  EXPECT_EQ(pointCause(fif::points(left + nasion + right)), "it does not name the frame of its points");
  EXPECT_EQ(pointCause(fif::points(frame + frame)), "it names the frame of its points twice");
  EXPECT_EQ(pointCause(fif::points(fif::point(1, std::numeric_limits<float>::quiet_NaN(), 0, 0))),
            "the left ear is not a number");
  EXPECT_EQ(pointCause(way(4, 5)), "it holds no fiducial points");
  const std::string both = fif::number(104, 107) + frame + left + nasion + right + fif::number(105, 107);
  EXPECT_EQ(pointCause(fif::start() + both + both + fif::end()), "it holds points twice");
}

TEST(FifFile, TagsOfOtherSizesAndCutFilesAreRefused) {
  const std::string whole = fif::usualPoints();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const std::string cause = pointCause(whole.substr(0, size));
    // Behind a whole tag the file may end.
    EXPECT_FALSE(cause.empty() && size < whole.size() - 36) << size;
  }
  EXPECT_NE(pointCause(fif::points(fif::tag(213, 33, std::string(24, '\0')))).find("with 24 bytes, where 20"),
            std::string::npos);
  EXPECT_NE(pointCause(fif::points(fif::tag(3506, 4, fif::big(5)))).find("of type 4"), std::string::npos);
  std::string jump = fif::start() + fif::tag(104, 3, fif::big(107), 16);
  EXPECT_EQ(pointCause(jump), "its tags do not stand one behind the other");
  jump = fif::start() + fif::tag(104, 3, fif::big(107), 56) + fif::number(3506, 5) + fif::end();
  EXPECT_EQ(pointCause(jump), "it does not give the left ear");
  for (const std::int32_t size : {-1, 21, std::numeric_limits<std::int32_t>::max()}) {
    std::string file = fif::start();
    file.replace(8, 4, fif::big(size));
    EXPECT_NE(pointCause(file).find("a tag has " + std::to_string(size) + " bytes"), std::string::npos);
  }
}

TEST(FifFile, WayIsReadInEitherDirection) {
  const host::Affine forth = host::fifHeadToSurface(way(4, 5));
  expectNear(forth({1, 0, 0}), {10, 21, 30});
  const host::Affine back = host::fifHeadToSurface(way(5, 4));
  expectNear(back({10, 21, 30}), {1, 0, 0});
}

TEST(FifFile, OtherWaysAreRefusedByName) {
  EXPECT_EQ(
      wayCause(way(1, 4)),
      "it holds no transform between the head and the MRI's surface RAS; it leads from the MEG device to "
      "the head");
  EXPECT_EQ(wayCause(fif::usualPoints()), "it holds no transform between the head and the MRI's surface RAS");
  const std::string one = fif::transform(4, 5, fif::turned);
  EXPECT_EQ(wayCause(fif::start() + one + one + fif::end()),
            "it holds two transforms between the head and the MRI");
  EXPECT_EQ(wayCause(fif::start() + fif::transform(1, 4, fif::turned) + one + fif::end()), "");
}

TEST(FifFile, PackedFilesAreUnpackedButNoMoreOfThemThanAFileMayHold) {
  const TempFolder folder;
  const auto path = [&](const std::string& bytes) {
    return host::pathOf(folder.write("a.fif.gz", gzip(bytes)));
  };
  const host::Affine map = host::readHeadToSurface(path(way(4, 5)));
  expectNear(map({1, 2, 3}), host::fifHeadToSurface(way(4, 5))({1, 2, 3}));
  const std::string large(std::size_t{1} << 21U, '\0');
  EXPECT_NE(failureOf([&] { (void)host::readHeadToSurface(path(large)); }).find("more than 1 MiB"),
            std::string::npos);
  EXPECT_NE(failureOf([&] { (void)host::readFiducialFile(path(large)); }).find("more than 64 KiB"),
            std::string::npos);
}

TEST(FifFile, OnlyATurnAndAShiftIsAWay) {
  const auto with = [](std::size_t index, float value) {
    std::array<float, 12> numbers = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
    numbers.at(index) = value;
    return wayCause(way(4, 5, numbers));
  };
  EXPECT_EQ(with(1, 0.0009F), "");
  EXPECT_NE(with(1, 0.0011F).find("stretches or shears"), std::string::npos);
  EXPECT_EQ(with(0, 1.0004F), "");
  EXPECT_NE(with(0, 1.0006F).find("the product of columns 1 and 1 is 1.0012"), std::string::npos);
  EXPECT_EQ(with(4, -1), "its transform mirrors: left and right would be exchanged");
  EXPECT_NE(with(4, std::numeric_limits<float>::quiet_NaN()).find("stretches"), std::string::npos);
  EXPECT_EQ(with(10, std::numeric_limits<float>::infinity()), "the shift of its transform is not a number");
}

TEST(FifFile, WayOfAFileIsRefusedWithItsName) {
  const TempFolder folder;
  const auto cause = [&](const CString& path) {
    return failureOf([&] { (void)host::readHeadToSurface(host::pathOf(path)); });
  };
  EXPECT_NE(cause(folder.write("a-trans.fif", "nothing of the kind")).find("a-trans.fif: not a .fif file"),
            std::string::npos);
  EXPECT_NE(cause(folder.path("gone.fif")).find("cannot be opened"), std::string::npos);
  EXPECT_NE(
      cause(folder.write("b-trans.fif", fif::start() + std::string(1U << 20U, '\0'))).find("more than 1 MiB"),
      std::string::npos);
  EXPECT_EQ(cause(folder.write("c-trans.fif", way(4, 5))), "");
}
