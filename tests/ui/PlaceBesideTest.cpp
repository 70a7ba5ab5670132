// Where a window opens that is to leave others in sight.
#include <gtest/gtest.h>
#include <ostream>

#include "ui/PlaceBeside.h"

namespace {

const CRect screen(0, 0, 1600, 1200);
const CRect window(24, 24, 424, 324);  // 400 times 300

CRect at(int left, int top) {
  return {left, top, left + window.Width(), top + window.Height()};
}

CRect placed(const std::vector<CRect>& others, const std::vector<CRect>& screens = {screen}) {
  return placeBeside(window, others, screens);
}

TEST(PlaceBeside, RightOfTheOtherIsTheFirstChoice) {
  EXPECT_EQ(placed({CRect(500, 300, 1000, 600)}), at(1000, 300));
  EXPECT_EQ(placed({CRect(500, 300, 1200, 600)}), at(1200, 300));  // it fits exactly
}

TEST(PlaceBeside, LeftBelowAndAboveFollow) {
  EXPECT_EQ(placed({CRect(500, 300, 1201, 600)}), at(100, 300));
  EXPECT_EQ(placed({CRect(399, 300, 1201, 600)}), at(399, 600));
  EXPECT_EQ(placed({CRect(399, 700, 1201, 1000)}), at(399, 400));
}

TEST(PlaceBeside, TheWindowStaysWholeOnTheScreen) {
  EXPECT_EQ(placed({CRect(500, 1000, 1000, 1200)}), at(1000, 900));
  EXPECT_EQ(placed({CRect(500, -50, 1000, 300)}), at(1000, 0));
  EXPECT_EQ(placed({CRect(1210, 500, 1700, 800)}, {CRect(0, 0, 1600, 1160)}), at(810, 500));
}

TEST(PlaceBeside, NoneOfTheOthersIsCoveredWhereThatIsPossible) {
  const CRect manager(500, 300, 1000, 600);
  EXPECT_EQ(placed({manager, CRect(1100, 200, 1500, 900)}), at(100, 300));
  EXPECT_EQ(placed({manager, CRect(0, 0, 1600, 700)}), at(0, 700));
}

TEST(PlaceBeside, TheLastOnesAreGivenUpBeforeTheFirst) {
  const CRect manager(500, 300, 1000, 600);
  EXPECT_EQ(placed({manager, screen}), at(1000, 300));
  EXPECT_EQ(placed({manager, CRect(1000, 0, 1600, 1200), screen}), at(100, 300));
}

TEST(PlaceBeside, AnotherScreenIsTakenForTheFirstAlone) {
  const CRect right(1600, 0, 3200, 1200);
  EXPECT_EQ(placed({screen}, {screen, right}), at(1600, 0));
  EXPECT_EQ(placed({CRect(500, 300, 1000, 600), screen}, {screen, right}), at(1000, 300));
}

TEST(PlaceBeside, TheNearestOtherScreenIsTaken) {
  const CRect left(-1600, 0, 0, 1200);
  const CRect farLeft(-3200, 0, -1600, 1200);
  EXPECT_EQ(placed({screen}, {farLeft, left, screen}), at(-400, 0));
  const CRect above(0, -1200, 1600, 0);
  EXPECT_EQ(placed({screen}, {farLeft, above, screen}), at(1200, -300));
}

TEST(PlaceBeside, TheScreenOfTheFirstIsTheOneWithItsMiddle) {
  const CRect right(1600, 0, 3200, 1200);
  EXPECT_EQ(placed({CRect(1500, 300, 2000, 600)}, {screen, right}), at(2000, 300));
  EXPECT_EQ(placed({CRect(1200, 300, 1700, 600)}, {right, screen}), at(800, 300));
}

TEST(PlaceBeside, WithoutAnyRoomTheFirstIsCoveredAsLittleAsPossible) {
  EXPECT_EQ(placed({CRect(0, 0, 1500, 1200)}), at(1200, 0));
  EXPECT_EQ(placed({CRect(150, 0, 1600, 1200)}), at(0, 0));
  EXPECT_EQ(placed({CRect(0, 0, 1600, 1100)}), at(0, 900));
  EXPECT_EQ(placed({screen}), at(1200, 0));
}

TEST(PlaceBeside, AWindowLargerThanTheScreenKeepsItsCaptionThere) {
  const CRect large(0, 0, 2000, 1500);
  const CRect place = placeBeside(large, {CRect(500, 300, 1000, 600)}, {screen});
  EXPECT_EQ(place, large);
}

TEST(PlaceBeside, WithoutOthersOrScreensItStays) {
  EXPECT_EQ(placed({}), window);
  EXPECT_EQ(placed({screen}, {}), window);
}

TEST(IsWellPlaced, OnOneScreenAndNotOverTheFirst) {
  const CRect right(1600, 0, 3200, 1200);
  EXPECT_TRUE(isWellPlaced(window, {CRect(424, 24, 800, 324)}, {screen, right}));
  EXPECT_FALSE(isWellPlaced(window, {CRect(423, 24, 800, 324)}, {screen, right}));
  EXPECT_TRUE(isWellPlaced(window, {CRect(500, 0, 600, 100), window}, {screen}));
  EXPECT_TRUE(isWellPlaced(window, {}, {screen}));
  EXPECT_TRUE(isWellPlaced(at(1600, 0), {window}, {screen, right}));
  EXPECT_FALSE(isWellPlaced(at(1599, 0), {window}, {screen, right}));  // half here, half there
  EXPECT_FALSE(isWellPlaced(at(1300, 0), {window}, {screen}));
}

}  // namespace
