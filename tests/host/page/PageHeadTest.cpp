// What of a head is in a page, and which of its grey values.
#include <gtest/gtest.h>
#include <vector>

#include "host/page/PageHead.h"
#include "tests/host/panes/PaneFixture.h"

namespace {

using host::GreySteps;
using host::Vector3;
using host::Volume;
using host::VoxelBox;

constexpr std::array<int, 3> many = {100, 100, 100};

// A cube of 80 mm around the middle of 200 mm, voxels of 2 mm; the head frame's axes are the scanner's, x
// mirrored.
host::Head cubeHead(float inside = 100.0F, float outside = 0.0F) {
  std::vector<float> voxels;
  const auto isIn = [](int index) { return index >= 30 && index < 70; };
  for (int k = 0; k < 100; ++k) {
    for (int j = 0; j < 100; ++j) {
      for (int i = 0; i < 100; ++i) {
        voxels.push_back(isIn(i) && isIn(j) && isIn(k) ? inside : outside);
      }
    }
  }
  const host::Fiducials points{{0, 90, 0}, {-80, 0, 0}, {80, 0, 0}};
  const host::Affine map({2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {-99, -99, -99});
  return {"cube", std::make_shared<Volume>(many, std::move(voxels), map), host::HeadFrame(points), points};
}

TEST(PageHead, WhatIsNotBackgroundStaysWithAMarginOf10Mm) {
  const VoxelBox box = host::headVoxels(cubeHead(), {});
  for (std::size_t axis = 0; axis < 3; ++axis) {
    EXPECT_NEAR(box.first.at(axis), 25, 1);  // 30 less 5 voxels
    EXPECT_NEAR(box.end.at(axis), 75, 1);
    EXPECT_LE(box.first.at(axis), 25);
    EXPECT_GE(box.end.at(axis), 75);
  }
}

TEST(PageHead, PlacesInTheVolumeStayToo) {
  const VoxelBox alone = host::headVoxels(cubeHead(), {});
  const VoxelBox box = host::headVoxels(cubeHead(), {{-90, 0, 0}});  // left is -x in the head frame's mirror
  EXPECT_EQ(box.end[0], 100);
  EXPECT_EQ(box.first[0], alone.first[0]);
  EXPECT_EQ(box.first[1], alone.first[1]);
}

TEST(PageHead, PlacesOutsideAndThoseThatAreNoneCountForNothing) {
  const VoxelBox alone = host::headVoxels(cubeHead(), {});
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(host::headVoxels(cubeHead(), {{-140, 0, 0}, {none, 0, 0}, {0, 1e300, 0}}), alone);
}

TEST(PageHead, WholeNumbersThatFitKeepTheirValues) {
  for (const auto& [inside, outside] : {std::pair(100.0F, 0.0F), {-900.0F, -1024.0F}, {4255.0F, 4000.0F}}) {
    const host::Head head = cubeHead(inside, outside);
    const GreySteps steps = host::greyStepsOf(*head.volume, {{}, many});
    EXPECT_TRUE(steps.isExact);
    EXPECT_EQ(steps.slope, 1.0F);
    EXPECT_EQ(steps.intercept, outside);
  }
}

TEST(PageHead, OthersAreTheStepsOfTheGreyWindowAndItsSurroundings) {
  std::vector<float>
      voxels;  // from 300 to 1300, but for one that is much darker and one that is much brighter
  for (int i = 0; i < 1000; ++i) {
    voxels.push_back(300.0F + static_cast<float>(i));
  }
  const VoxelBox all{{}, {10, 10, 10}};
  const auto stepsOf = [&] { return host::greyStepsOf(Volume({10, 10, 10}, voxels, host::Affine()), all); };
  const GreySteps ramp = stepsOf();
  EXPECT_FALSE(ramp.isExact);
  EXPECT_NEAR(ramp.low(), 300, 1e-3);
  EXPECT_NEAR(ramp.high(), 1299, 1e-3);
  voxels.front() = 1.0F;
  voxels.back() = 1e6F;
  const host::GreyWindow window = Volume({10, 10, 10}, voxels, host::Affine()).window();
  const GreySteps cut = stepsOf();
  EXPECT_NEAR(cut.low(), window.low - 0.1 * (window.high - window.low), 1e-3);
  EXPECT_NEAR(cut.high(), window.high + 0.4 * (window.high - window.low), 1e-3);
}

TEST(PageHead, AHeadThatIsNotRegisteredIsNotInAPage) {
  PaneFixture fixture;
  fixture.add(0, 0, 0);
  const host::UnknownValues unknown;
  const auto made = [&] {
    host::KnownHead known;
    known.points = fixture.head.fiducials;
    return host::pageHead({*fixture.dipoles, fixture.head, known, fixture.settings, unknown});
  };
  EXPECT_FALSE(made().json.is_null());
  EXPECT_FALSE(made().nifti.empty());
  for (const bool isPhantom : {false, true}) {
    host::Head& head = fixture.head;
    head.isPhantom = isPhantom;
    head.fiducials = isPhantom ? std::optional(PaneFixture::points()) : std::nullopt;
    EXPECT_TRUE(made().json.is_null());
    EXPECT_TRUE(made().nifti.empty());
  }
}

}  // namespace
