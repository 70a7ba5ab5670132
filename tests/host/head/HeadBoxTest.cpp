// The box around the head, in the head's own mm.
#include <gtest/gtest.h>

#include "host/head/HeadBox.h"
#include "tests/host/head/Phantom.h"

TEST(HeadBox, SurroundsTheHeadAndItsBlob) {
  const host::HeadFrame frame = tiltedFrame();
  const host::Volume volume = phantom(frame, {70, 0, 0});
  const host::HeadBox box = host::findHead(volume, frame);
  EXPECT_NEAR(box.low.x, -60, 2.5);
  EXPECT_NEAR(box.high.x, 82, 2.5);
  EXPECT_NEAR(box.low.y, -60, 2.5);
  EXPECT_NEAR(box.high.y, 60, 2.5);
  EXPECT_NEAR(box.low.z, -60, 2.5);
  EXPECT_NEAR(box.high.z, 60, 2.5);
}

TEST(HeadBox, DoesNotGrowForScatteredVoxels) {
  const host::HeadFrame frame({{0, 100, 0}, {-80, 0, 0}, {80, 0, 0}});
  std::vector<float> voxels(std::size_t{100} * 100 * 100, 0.0F);
  for (std::size_t k = 20; k < 80; ++k) {
    for (std::size_t j = 20; j < 80; ++j) {
      for (std::size_t i = 20; i < 80; ++i) {
        voxels[(k * 100 + j) * 100 + i] = static_cast<float>(100 + i);
      }
    }
  }
  voxels[5] = 200.0F;
  voxels[999'990] = 200.0F;
  const host::Affine toScanner({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {-50, -50, -50});
  const host::HeadBox box = host::findHead({{100, 100, 100}, voxels, toScanner}, frame);
  EXPECT_EQ(box.low.y, -30.0);
  EXPECT_EQ(box.high.y, 30.0);
  EXPECT_EQ(box.low.z, -30.0);
  EXPECT_EQ(box.high.z, 30.0);
}

TEST(HeadBox, IsAPointWhenNothingIsBright) {
  const host::HeadFrame frame({{0, 100, 0}, {-80, 0, 0}, {80, 0, 0}});
  const host::HeadBox box = host::findHead({{2, 2, 2}, std::vector<float>(8, 0.0F), host::Affine()}, frame);
  EXPECT_EQ(length(box.low), 0.0);
  EXPECT_EQ(length(box.high), 0.0);
}
