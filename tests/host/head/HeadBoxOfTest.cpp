// The box of a session's head is the one of its volume and frame at that time.
#include <gtest/gtest.h>

#include "host/head/HeadBoxOf.h"
#include "tests/host/panes/PaneFixture.h"

using host::HeadBox;
using host::Vector3;

namespace {

void expectBox(const HeadBox& box, const HeadBox& wanted) {
  EXPECT_EQ(box.low, wanted.low);
  EXPECT_EQ(box.high, wanted.high);
}

// The scanner's own axes; the phantom's frame is turned against them.
host::HeadFrame straightFrame() {
  return host::HeadFrame({{0, 90, 0}, {-75, 0, 0}, {75, 0, 0}});
}

}  // namespace

TEST(HeadBoxOf, IsTheBoxOfTheHeadAlsoWhenItIsAskedAgain) {
  const PaneFixture fixture;
  const HeadBox wanted = findHead(*fixture.head.volume, fixture.head.frame);
  EXPECT_NEAR(wanted.high.x, 60.0, 3.0);
  expectBox(headBoxOf(fixture.head), wanted);
  expectBox(headBoxOf(fixture.head), wanted);
}

TEST(HeadBoxOf, FollowsTheFrame) {
  PaneFixture fixture;
  const HeadBox before = headBoxOf(fixture.head);
  fixture.head.frame = straightFrame();
  const HeadBox after = headBoxOf(fixture.head);
  expectBox(after, findHead(*fixture.head.volume, straightFrame()));
  EXPECT_NE(before.low, after.low);
}

TEST(HeadBoxOf, FollowsTheVolumeAlsoToOneAtTheSamePlace) {
  PaneFixture fixture;
  const HeadBox before = headBoxOf(fixture.head);
  // The old volume goes first: the new one may get its address.
  fixture.head.volume.reset();
  fixture.head.volume = std::make_shared<host::Volume>(phantom(straightFrame(), {}));
  const HeadBox after = headBoxOf(fixture.head);
  expectBox(after, findHead(*fixture.head.volume, fixture.head.frame));
  EXPECT_NE(before.low, after.low);
}

TEST(HeadBoxOf, WithoutAnythingBrightReachesAHundredMm) {
  PaneFixture fixture;
  const host::Affine toScanner({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {});
  fixture.head.volume =
      std::make_shared<host::Volume>(std::array{2, 2, 2}, std::vector<float>(8, 0.0F), toScanner);
  expectBox(headBoxOf(fixture.head), {{-100, -100, -100}, {100, 100, 100}});
}
