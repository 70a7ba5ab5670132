// A kept grey picture is the one that would be made anew, whatever changed in between.
#include <gtest/gtest.h>
#include <random>

#include "host/panes/GreySlice.h"
#include "tests/host/panes/PaneFixture.h"

using host::GreySlice;
using host::GreyWindow;
using host::SampleGrid;

TEST(GreySlice, IsAlwaysThePictureMadeAnew) {
  std::mt19937 random(12);
  const auto pick = [&](int choices) { return static_cast<int>(random() % static_cast<unsigned>(choices)); };
  PaneFixture fixtures[2];
  fixtures[1].head.volume = std::make_shared<host::Volume>(phantom(tiltedFrame(), {-20, 5, 10}));
  const host::HeadFrame frames[] = {tiltedFrame(), host::HeadFrame({{0, 90, 0}, {-75, 0, 0}, {75, 0, 0}})};
  GreySlice slice;
  for (int round = 0; round < 200; ++round) {
    host::Head head = fixtures[pick(2)].head;
    head.frame = frames[pick(2)];
    const SampleGrid grid{
        {-20.0 + pick(2), pick(2) * 5.0, -30.0}, {1.5, 0, 0}, {0, 0, 1.5}, 30 + pick(2), 40};
    const GreyWindow window{pick(2) * 100.0, 500.0 + pick(2) * 100.0};
    const host::Image& picture = slice.picture(head, grid, window);
    const host::Image wanted =
        greyPicture(sampleSlice(*head.volume, head.frame, grid), grid.columns, grid.rows, window);
    ASSERT_EQ(picture.width(), grid.columns);
    ASSERT_TRUE(picture.pixels() == wanted.pixels()) << "round " << round;
  }
}
