// Balls cover the pixels that lines of sight say, at the depth that they say; arrows lie where they point.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "host/paint/SolidShapes.h"
#include "tests/host/paint/SceneShapes.h"

namespace {

using host::DepthPicture;
using host::Rgb;
using host::SceneCamera;
using host::ScreenPoint;
using host::Vector3;

constexpr Rgb black{0, 0, 0};
constexpr Rgb red{230, 0, 0};
constexpr Rgb blue{0, 0, 230};
constexpr double endless = std::numeric_limits<double>::infinity();

bool isDrawn(const Rgb& pixel) {
  return pixel != black;
}

void ball(DepthPicture& picture, const SceneCamera& camera, const Vector3& centre, double radius,
          Rgb colour) {
  drawBall(picture, camera.project(centre), radius * camera.scale(), radius, colour);
}

}  // namespace

TEST(DrawBall, AgreesWithLinesOfSight) {
  std::mt19937 random(2);
  std::uniform_real_distribution<double> places(-60.0, 60.0);
  std::uniform_real_distribution<double> radii(0.4, 30.0);
  for (int round = 0; round < 300; ++round) {
    SceneCamera camera(90, 70);
    camera.lookFrom({places(random) * 3.0, places(random)});
    camera.setScale(0.7 + radii(random) * 0.05);
    const Vector3 centre{places(random), places(random), places(random)};
    const double radius = radii(random);
    DepthPicture picture(90, 70, black);
    ball(picture, camera, centre, radius, red);
    for (int row = 0; row < 70; ++row) {
      for (int column = 0; column < 90; ++column) {
        const double expected = depthOfBall(camera, centre, radius, column, row);
        ASSERT_EQ(isDrawn(picture.image().pixel(column, row)), expected < endless);
        if (expected < endless) {
          ASSERT_NEAR(static_cast<double>(picture.depth(column, row)), expected, 1e-3);
        }
      }
    }
  }
}

TEST(DrawBall, TheNearerOneIsSeenInEitherOrder) {
  SceneCamera camera(60, 60);
  for (const bool nearFirst : {true, false}) {
    DepthPicture picture(60, 60, black);
    ball(picture, camera, {0, 0, nearFirst ? 20.0 : -20.0}, 5, nearFirst ? red : blue);
    ball(picture, camera, {0, 0, nearFirst ? -20.0 : 20.0}, 5, nearFirst ? blue : red);
    EXPECT_GT(drawnWhere(picture.image(), isReddish).pixels, 300);
    EXPECT_EQ(drawnWhere(picture.image(), isBluish).pixels, 0);
  }
}

TEST(DrawBall, TwoThatCutEachOtherShareTheMiddle) {
  SceneCamera camera(80, 60);
  DepthPicture picture(80, 60, black);
  ball(picture, camera, {-4, 0, 0}, 8, red);
  ball(picture, camera, {4, 0, 0}, 8, blue);
  for (int row = 0; row < 60; ++row) {
    for (int column = 0; column < 80; ++column) {
      const Rgb pixel = picture.image().pixel(column, row);
      if (isDrawn(pixel)) {
        ASSERT_EQ(pixel.red > pixel.blue, column < 40) << column << ' ' << row;
      }
    }
  }
}

TEST(DrawBall, IsCutAtEveryBorder) {
  SceneCamera camera(50, 40);
  camera.setScale(1.0);
  for (const Vector3& centre :
       {Vector3{-25, 0, 0}, {25, 0, 0}, {0, 20, 0}, {0, -20, 0}, {25, 20, 0}, {-31, 27, 0}}) {
    DepthPicture picture(50, 40, black);
    ball(picture, camera, centre, 10, red);
    int expected = 0;
    for (int row = 0; row < 40; ++row) {
      for (int column = 0; column < 50; ++column) {
        expected += depthOfBall(camera, centre, 10, column, row) < endless ? 1 : 0;
      }
    }
    EXPECT_GT(expected, 0);
    EXPECT_EQ(drawnWhere(picture.image(), isDrawn).pixels, expected);
  }
}

TEST(DrawBall, IsBrightestTowardsTheLightAtTheUpperLeft) {
  SceneCamera camera(60, 60);
  DepthPicture picture(60, 60, black);
  ball(picture, camera, {}, 12, red);
  EXPECT_GT(picture.image().pixel(24, 22).red, picture.image().pixel(40, 44).red + 60);
}

TEST(DrawArrow, ReachesFromItsStartToItsTip) {
  SceneCamera camera(200, 200);
  camera.setScale(2.0);
  const Vector3 tips[] = {{40, 0, 0}, {-40, 0, 0}, {0, 40, 0}, {0, -40, 0}, {25, -30, 10}, {-20, -20, -30}};
  for (const Vector3& tip : tips) {
    DepthPicture picture(200, 200, black);
    drawArrow(picture, camera, {}, tip, {}, red);
    const ScreenPoint end = camera.project(tip);
    const double across = end.column - 100.0;
    const double down = end.row - 100.0;
    const double extent = std::hypot(across, down);
    double nearest = endless;
    double farthest = -endless;
    double widest = 0.0;
    for (int row = 0; row < 200; ++row) {
      for (int column = 0; column < 200; ++column) {
        if (isDrawn(picture.image().pixel(column, row))) {
          const double x = column + 0.5 - 100.0;
          const double y = row + 0.5 - 100.0;
          nearest = (std::min)(nearest, (x * across + y * down) / extent);
          farthest = (std::max)(farthest, (x * across + y * down) / extent);
          widest = (std::max)(widest, std::abs(x * down - y * across) / extent);
        }
      }
    }
    EXPECT_NEAR(nearest, 0.0, 1.0);
    EXPECT_NEAR(farthest, extent, 2.5);
    EXPECT_NEAR(widest, 4.0, 1.0) << "the head's radius of 2 mm";
  }
}

TEST(DrawArrow, TheHeadIsAtTheTip) {
  SceneCamera camera(200, 100);
  camera.setScale(2.0);
  DepthPicture picture(200, 100, black);
  drawArrow(picture, camera, {-40, 0, 0}, {40, 0, 0}, {}, red);
  const auto tall = [&](int column) {
    int count = 0;
    for (int row = 0; row < 100; ++row) {
      count += isDrawn(picture.image().pixel(column, row)) ? 1 : 0;
    }
    return count;
  };
  EXPECT_NEAR(tall(30), 3.2, 1.0) << "the shaft's width: 1.6 mm";
  EXPECT_GT(tall(169), 6);
  EXPECT_LT(tall(177), 4);
  EXPECT_EQ(tall(181), 0);
  EXPECT_EQ(tall(19), 0);
}

TEST(DrawArrow, DepthFollowsTheShaft) {
  SceneCamera camera(200, 100);
  camera.setScale(2.0);
  DepthPicture picture(200, 100, black);
  drawArrow(picture, camera, {-30, 0, -30}, {30, 0, 30}, {}, red);
  for (int column = 50; column < 140; column += 10) {
    // The surface in the middle of the shaft lies its radius, seen at 45 degrees, before the axis.
    const double x = (column + 0.5 - 100.0) / 2.0;
    EXPECT_NEAR(static_cast<double>(picture.depth(column, 50)), -x - 0.8 * std::sqrt(2.0), 0.15) << column;
  }
}

TEST(DrawArrow, SeenFromItsTipIsARound) {
  SceneCamera camera(100, 100);
  camera.setScale(4.0);
  for (const double z : {30.0, -30.0}) {
    DepthPicture picture(100, 100, black);
    drawArrow(picture, camera, {}, {0, 0, z}, {}, red);
    const Drawn drawn = drawnWhere(picture.image(), isDrawn);
    EXPECT_NEAR(drawn.pixels, 3.14159 * 8.0 * 8.0, 12.0);
    EXPECT_NEAR(drawn.column, 50.0, 0.2);
    EXPECT_NEAR(drawn.row, 50.0, 0.2);
  }
}

TEST(DrawArrow, HidesAndIsHidden) {
  SceneCamera camera(100, 100);
  DepthPicture picture(100, 100, black);
  ball(picture, camera, {}, 6, blue);
  drawArrow(picture, camera, {-20, 0, -10}, {20, 0, -10}, {}, red);
  EXPECT_TRUE(isBluish(picture.image().pixel(50, 50)));
  drawArrow(picture, camera, {-20, 3, 10}, {20, 3, 10}, {}, red);
  EXPECT_TRUE(isReddish(picture.image().pixel(50, 44)));
}

TEST(DrawArrow, WithoutALengthIsNothing) {
  SceneCamera camera(50, 50);
  DepthPicture picture(50, 50, black);
  drawArrow(picture, camera, {1, 1, 1}, {1, 1, 1}, {}, red);
  EXPECT_EQ(drawnWhere(picture.image(), isDrawn).pixels, 0);
}

TEST(DrawArrow, FarOutsideAndHugeDrawsItsPartAndReturns) {
  SceneCamera camera(100, 100);
  camera.setScale(20.0);
  DepthPicture picture(100, 100, black);
  drawArrow(picture, camera, {-100'000, 0, 0}, {100'000, 0, 0}, {}, red);
  EXPECT_NEAR(drawnWhere(picture.image(), isDrawn).pixels, 32 * 100, 200);
  drawArrow(picture, camera, {90'000, 90'000, 0}, {100'000, 100'000, 0}, {}, blue);
  EXPECT_EQ(drawnWhere(picture.image(), isBluish).pixels, 0);
}
