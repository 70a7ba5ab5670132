// What a slice pane shows: the right slice, every dipole that it should and no other, each on its side and in
// its place.
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

#include "host/session/SlicePane.h"
#include "tests/host/WholeSet.h"
#include "tests/host/session/PaneFixture.h"

namespace {

using host::axesOf;
using host::Image;
using host::PixelBox;
using host::PixelPoint;
using host::Rgb;
using host::SliceAccount;
using host::SlicePane;
using host::Vector3;
using host::View;

constexpr View allViews[] = {View::axial, View::coronal, View::sagittal};
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr Rgb orange{255, 128, 0};

int count(const Image& image, Rgb colour, PixelBox box) {
  int pixels = 0;
  for (int row = (std::max)(box.top, 0); row < (std::min)(box.bottom, image.height()); ++row)
    for (int column = (std::max)(box.left, 0); column < (std::min)(box.right, image.width()); ++column)
      pixels += image.pixel(column, row) == colour ? 1 : 0;
  return pixels;
}

int count(const Image& image, Rgb colour) {
  return count(image, colour, {0, 0, image.width(), image.height()});
}

struct SlicePaneTest : testing::Test, PaneFixture {
  SlicePaneTest() {
    settings.glyphPixels = 9;
    dipoles->m_currentDipole = -1;
  }

  SlicePane paneOf(View view, int width = 400, int height = 360) const {
    SlicePane pane(view);
    pane.resize(width, height);
    return pane;
  }

  // Without a current dipole: no ring covers the squares.
  CDipoleszq& put(const Vector3& place) {
    CDipoleszq& dipole = add(place.x, place.y, place.z);
    dipoles->m_currentDipole = -1;
    return dipole;
  }

  SliceAccount paintedAccount(View view) const {
    SlicePane pane = paneOf(view);
    pane.paint(contents());
    return pane.account();
  }
};

}  // namespace

TEST_F(SlicePaneTest, ThePictureHasTheSizeOfThePane) {
  SlicePane pane = paneOf(View::axial, 321, 234);
  const Image& image = pane.paint(contents());
  EXPECT_EQ(image.width(), 321);
  EXPECT_EQ(image.height(), 234);
  pane.resize(0, -5);
  EXPECT_EQ(pane.paint(contents()).width(), 1);
  EXPECT_EQ(pane.paint(contents()).height(), 1);
}

TEST_F(SlicePaneTest, ALeftDipoleIsOnTheRightOfAxialAndCoronalPictures) {
  put({50, 0, 0});
  for (const View view : {View::axial, View::coronal}) {
    SlicePane pane = paneOf(view);
    const Image& image = pane.paint(contents());
    EXPECT_GT(count(image, orange, {200, 0, 400, 360}), 0) << nameOf(view);
    EXPECT_EQ(count(image, orange, {0, 0, 200, 360}), 0) << nameOf(view);
  }
}

TEST_F(SlicePaneTest, AFrontDipoleIsAboveInAxialAndRightInSagittalPictures) {
  put({0, 0, 50});
  SlicePane axial = paneOf(View::axial);
  EXPECT_EQ(count(axial.paint(contents()), orange), count(axial.paint(contents()), orange, {0, 0, 400, 180}));
  SlicePane sagittal = paneOf(View::sagittal);
  const Image& image = sagittal.paint(contents());
  EXPECT_GT(count(image, orange), 0);
  EXPECT_EQ(count(image, orange), count(image, orange, {200, 0, 400, 360}));
}

TEST_F(SlicePaneTest, AnUpperDipoleIsAboveInCoronalAndSagittalPictures) {
  put({0, 40, 0});
  for (const View view : {View::coronal, View::sagittal}) {
    SlicePane pane = paneOf(view);
    const Image& image = pane.paint(contents());
    EXPECT_EQ(count(image, orange), 81) << nameOf(view);
    EXPECT_EQ(count(image, orange, {0, 0, 400, 180}), 81) << nameOf(view);
  }
}

TEST_F(SlicePaneTest, ASquareIsCentredOnThePixelOfItsDipole) {
  std::mt19937 random(4);
  std::uniform_real_distribution<double> place(-55.0, 55.0);
  for (int i = 0; i < 20; ++i)
    for (const View view : allViews) {
      dipoles->cleanDipoles();
      const Vector3 at{place(random), place(random), place(random)};
      put(at);
      settings.toleranceMm.reset();
      settings.glyphPixels = 5 + 2 * (i % 5);
      SlicePane pane = paneOf(view);
      const Image& image = pane.paint(contents());
      const std::optional<PixelPoint> pixel = pane.pixelOf(at);
      ASSERT_TRUE(pixel.has_value());
      const int half = settings.glyphPixels / 2;
      const int whole = settings.glyphPixels * settings.glyphPixels;
      const PixelBox box{pixel->column - half, pixel->row - half, pixel->column + half + 1,
                         pixel->row + half + 1};
      EXPECT_EQ(count(image, orange, box), whole);
      EXPECT_EQ(count(image, orange), whole);
      EXPECT_EQ(image.pixel(box.left - 1, pixel->row), (Rgb{0, 0, 0}));
      EXPECT_EQ(image.pixel(box.right, pixel->row), (Rgb{0, 0, 0}));
    }
}

TEST_F(SlicePaneTest, HeadPointAndPixelAreInverse) {
  crosshair = {12.25, -7.5, 33.0};
  for (const View view : allViews) {
    SlicePane pane = paneOf(view, 301, 200);
    pane.paint(contents());
    pane.zoom(2.5, 100, 50);
    pane.pan(13, -7);
    pane.paint(contents());
    EXPECT_EQ(pane.position(), crosshair[axesOf(view).slab]);
    for (int row = 0; row < 200; row += 7)
      for (int column = 0; column < 301; column += 7) {
        const Vector3 place = pane.headPoint(column, row);
        EXPECT_EQ(place[axesOf(view).slab], pane.position());
        EXPECT_EQ(pane.pixelOf(place), (PixelPoint{column, row}));
      }
  }
}

TEST_F(SlicePaneTest, PlacesBeyondThePictureHaveNoPixel) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  EXPECT_FALSE(pane.pixelOf(pane.headPoint(-1, 10)).has_value());
  EXPECT_FALSE(pane.pixelOf(pane.headPoint(10, 360)).has_value());
  EXPECT_FALSE(pane.pixelOf({notANumber, 0, 0}).has_value());
  EXPECT_FALSE(pane.pixelOf({0, 0, 1e300}).has_value());
}

TEST_F(SlicePaneTest, GreysAreThoseOfTheVolume) {
  crosshair = {12.0, 8.0, -15.0};
  std::mt19937 random(9);
  for (const View view : allViews) {
    SlicePane pane = paneOf(view);
    const Image& image = pane.paint(contents());
    int compared = 0;
    while (compared < 300) {
      // Between the texts, off the crosshair.
      const int column = 60 + static_cast<int>(random() % 280);
      const int row = 120 + static_cast<int>(random() % 180);
      const PixelPoint cross = pane.pixelOf(crosshair).value();
      if (column == cross.column || row == cross.row)
        continue;
      const Vector3 scanner = head.frame.toScanner(pane.headPoint(column, row));
      const std::uint8_t grey = window.grey(head.volume->sampleScanner(scanner));
      ASSERT_NEAR(image.pixel(column, row).red, grey, 1) << column << ' ' << row;
      ASSERT_EQ(image.pixel(column, row).red, image.pixel(column, row).blue);
      ++compared;
    }
  }
}

TEST_F(SlicePaneTest, AnotherWindowOrSliceOrHeadChangesTheGreys) {
  SlicePane pane = paneOf(View::axial);
  const auto greyAt = [&](const Vector3& place) {
    const Image& image = pane.paint(contents());
    const PixelPoint pixel = pane.pixelOf(place).value();
    return static_cast<int>(image.pixel(pixel.column, pixel.row).red);
  };
  const Vector3 at{30, 10, 20};  // the white blob of 600
  crosshair = {0, 10, 0};
  EXPECT_EQ(greyAt(at), 153);
  window = {0.0, 600.0};
  EXPECT_EQ(greyAt(at), 255);
  crosshair.y = -30.0;
  EXPECT_LT(greyAt(at), 150);
  head.volume = std::make_shared<host::Volume>(phantom(tiltedFrame(), {30, -30, 20}));
  EXPECT_EQ(greyAt(at), 255);
}

TEST_F(SlicePaneTest, ZoomKeepsWhatIsUnderThePixel) {
  for (const View view : allViews) {
    SlicePane pane = paneOf(view);
    pane.paint(contents());
    for (const auto& [factor, column, row] :
         {std::tuple{1.25, 300, 80}, {1.25, 10, 350}, {2.0, 200, 180}, {0.5, 77, 30}, {0.8, 399, 0}}) {
      const Vector3 before = pane.headPoint(column, row);
      const double mmBefore = pane.mmPerPixel();
      pane.zoom(factor, column, row);
      pane.paint(contents());
      const Vector3 after = pane.headPoint(column, row);
      EXPECT_NEAR(pane.mmPerPixel(), mmBefore / factor, 1e-12);
      const double halves = 0.5 * (mmBefore + pane.mmPerPixel()) + 1e-9;  // both pictures keep whole pixels
      EXPECT_NEAR(after[axesOf(view).column], before[axesOf(view).column], halves);
      EXPECT_NEAR(after[axesOf(view).row], before[axesOf(view).row], halves);
    }
  }
}

TEST_F(SlicePaneTest, ZoomingInAndOutComesBackWithoutDrift) {
  SlicePane pane = paneOf(View::coronal);
  pane.paint(contents());
  pane.zoom(1.0, 0, 0);  // from here on the user's
  pane.paint(contents());
  const Vector3 before = pane.headPoint(50, 60);
  for (int i = 0; i < 40; ++i) {
    pane.zoom(1.1, 300, 100);
    pane.paint(contents());
    pane.zoom(1.0 / 1.1, 300, 100);
    pane.paint(contents());
  }
  EXPECT_NEAR(pane.headPoint(50, 60).x, before.x, pane.mmPerPixel());
  EXPECT_NEAR(pane.headPoint(50, 60).y, before.y, pane.mmPerPixel());
}

TEST_F(SlicePaneTest, ZoomEndsAtATenthAndAtFiveMm) {
  SlicePane pane = paneOf(View::sagittal);
  for (int i = 0; i < 30; ++i)
    pane.zoom(2.0, 5, 5);
  pane.paint(contents());
  // Before the first picture there is nothing that a zoom could keep: the head is fitted first.
  EXPECT_GT(pane.mmPerPixel(), 0.1);
  for (int i = 0; i < 30; ++i)
    pane.zoom(2.0, 5, 5);
  pane.paint(contents());
  EXPECT_EQ(pane.mmPerPixel(), 0.1);
  for (int i = 0; i < 30; ++i)
    pane.zoom(0.5, 5, 5);
  pane.paint(contents());
  EXPECT_EQ(pane.mmPerPixel(), 5.0);
  for (const double nonsense : {0.0, -1.0, notANumber, std::numeric_limits<double>::infinity()}) {
    pane.zoom(nonsense, 5, 5);
    pane.paint(contents());
    EXPECT_EQ(pane.mmPerPixel(), 5.0);
  }
}

TEST_F(SlicePaneTest, PanMovesThePicture) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const PixelPoint before = pane.pixelOf({10, 0, 20}).value();
  pane.pan(17, -23);
  pane.paint(contents());
  EXPECT_EQ(pane.pixelOf({10, 0, 20}), (PixelPoint{before.column + 17, before.row - 23}));
}

TEST_F(SlicePaneTest, FitShowsTheWholeHeadBetweenTheLetters) {
  for (const auto& [width, height] : {std::pair{400, 360}, {300, 700}, {900, 250}, {200, 200}})
    for (const View view : allViews) {
      SlicePane pane = paneOf(view, width, height);
      pane.paint(contents());
      pane.zoom(4.0, 3, 3);
      pane.pan(500, 500);
      pane.paint(contents());
      EXPECT_FALSE(pane.pixelOf({0, 0, 0}).has_value());
      pane.fit();
      pane.paint(contents());
      double largest = 0.0;  // part of the pane that the head takes
      for (const int axis : {axesOf(view).column, axesOf(view).row}) {
        Vector3 low;
        Vector3 high;
        low[axis] = -60.0;
        high[axis] = 60.0;
        const std::optional<PixelPoint> one = pane.pixelOf(low);
        const std::optional<PixelPoint> other = pane.pixelOf(high);
        ASSERT_TRUE(one.has_value() && other.has_value());
        const int extent = axis == axesOf(view).column ? other->column - one->column : one->row - other->row;
        largest = (std::max)(largest, extent / (axis == axesOf(view).column ? width * 1.0 : height * 1.0));
      }
      EXPECT_GT(largest, 0.65) << width << " x " << height;
    }
}

TEST_F(SlicePaneTest, TheHeadStaysFittedWhenThePaneGrowsUntilTheUserZooms) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const double small = pane.mmPerPixel();
  pane.resize(800, 720);
  pane.paint(contents());
  EXPECT_LT(pane.mmPerPixel(), 0.6 * small);
  pane.zoom(2.0, 400, 360);
  pane.paint(contents());
  const double zoomed = pane.mmPerPixel();
  pane.resize(400, 360);
  pane.paint(contents());
  EXPECT_EQ(pane.mmPerPixel(), zoomed);
}

TEST_F(SlicePaneTest, TheToleranceHoldsAtBothEdges) {
  const auto shifted = [](View view, double mm) {
    Vector3 place{5, 6, 7};
    place[axesOf(view).slab] += mm;
    return place;
  };
  crosshair = {5, 6, 7};
  settings.toleranceMm = 4.0;
  for (const View view : allViews)
    for (const double side : {-1.0, 1.0}) {
      dipoles->cleanDipoles();
      put(shifted(view, side * 4.0));
      EXPECT_EQ(paintedAccount(view).onSlice, 1) << nameOf(view) << side;
      dipoles->cleanDipoles();
      put(shifted(view, side * 4.001));
      SlicePane pane = paneOf(view);
      const Image& image = pane.paint(contents());
      EXPECT_EQ(count(image, orange), 0) << nameOf(view) << side;
      EXPECT_EQ(pane.account().onSlice, 0);
      EXPECT_EQ(pane.account().away, 1);
    }
}

TEST_F(SlicePaneTest, WithoutOverlapASliceShowsItsOwnDipolesOnly) {
  dipoles->setShowDipole2DOverlap(0);
  settings.toleranceMm.reset();
  settings.thinnestSlice = 2.0;
  for (const double mm : {-1.001, -1.0, 0.0, 1.0, 1.001})
    put({0, mm, 0});
  EXPECT_EQ(paintedAccount(View::axial).onSlice, 3);
  dipoles->setShowDipole2DOverlap(1);
  EXPECT_EQ(paintedAccount(View::axial).onSlice, 5);
}

TEST_F(SlicePaneTest, WithoutAToleranceAllDipolesAreDrawn) {
  settings.toleranceMm.reset();
  put({-20, -250, 10});
  put({20, 99'000, 10});
  SlicePane pane = paneOf(View::axial);
  EXPECT_EQ(count(pane.paint(contents()), orange), 2 * 81);
  EXPECT_EQ(pane.account().onSlice, 2);
}

TEST_F(SlicePaneTest, AxialSlicesBelowTheOriginShowTheirDipoles) {
  crosshair.y = -30.0;
  put({-20, -30, 10});
  put({20, -28, 10});
  SlicePane pane = paneOf(View::axial);
  EXPECT_EQ(count(pane.paint(contents()), orange), 2 * 81);
  crosshair.y = 1.0;
  put({0, 2, -20});
  put({0, -2, 20});
  EXPECT_EQ(count(pane.paint(contents()), orange), 2 * 81);
}

TEST_F(SlicePaneTest, AnAxialSliceDoesNotShowWhatLiesBetweenItAndTheOrigin) {
  crosshair.y = 40.0;
  put({20, 10, 10});
  SlicePane pane = paneOf(View::axial);
  EXPECT_EQ(count(pane.paint(contents()), orange), 0);
}

TEST_F(SlicePaneTest, TheSetIsAsBeforeBitByBit) {
  settings.toleranceMm.reset();
  std::mt19937 random(6);
  std::uniform_real_distribution<double> place(-80.0, 80.0);
  for (int i = 0; i < 40; ++i) {
    CDipoleszq& dipole = put({place(random), place(random), place(random)});
    dipole.m_display = i % 3;
    dipole.m_size = i * 0.7;
    dipole.m_color = static_cast<COLORREF>(random() & 0xFFFFFFU);
    dipole.m_showOrientation = i % 2;
    dipole.setDimensionXYZ(i, i + 1, i + 2);
  }
  put({notANumber, 0, 0});
  dipoles->deleteDipole(3, 0);
  dipoles->m_currentDipole = 4;
  dipoles->setDimensionXYZ(7, 8, 9);
  dipoles->setSpaceXYZ(0.1, 0.2, 0.3);
  const WholeSet before = wholeSet(*dipoles);
  for (const View view : allViews) {
    SlicePane pane = paneOf(view);
    pane.paint(contents());
    EXPECT_TRUE(isSame(wholeSet(*dipoles), before)) << nameOf(view);
  }
}

TEST_F(SlicePaneTest, SwitchesDisplayStateFilterAndLatencyHideAndAreCounted) {
  put({0, 0, 0});
  put({10, 0, 0}).m_show = 0;
  put({20, 0, 0}).m_display = 2;
  put({30, 0, 0}).m_fitError = 50.0;
  put({-30, 0, 0}).m_latency = 500.0;
  put({notANumber, 0, 0});
  put({40, 90, 0});
  put({350, 0, 0});
  settings.filter.fitError.most = 20.0;
  settings.latency = {-1.0, 100.0};
  dipoles->setShowDipoleLatencySelected(1);
  SlicePane pane = paneOf(View::axial);
  EXPECT_EQ(count(pane.paint(contents()), orange), 81);
  const SliceAccount& account = pane.account();
  EXPECT_EQ(account.total, 8);
  EXPECT_EQ(account.onSlice, 1);
  EXPECT_EQ(account.switchedOff, 2);
  EXPECT_EQ(account.filtered, 2);
  EXPECT_EQ(account.nowhere, 1);
  EXPECT_EQ(account.away, 1);
  EXPECT_EQ(account.outside, 1);
  EXPECT_EQ(account.offPane, 0);
}

TEST_F(SlicePaneTest, BeyondThreeHundredMmNothingIsDrawnInAWrongPlace) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  for (int i = 0; i < 20; ++i)
    pane.zoom(0.5, 200, 180);
  for (const Vector3& place : {Vector3{300.0, 0, 0}, {-301.0, 0, 0}, {0, 0, 450.0}, {0, 0, -300.0}})
    put(place);
  put({299.0, 0, -299.0});
  EXPECT_EQ(count(pane.paint(contents()), orange), 81);
  EXPECT_EQ(pane.account().outside, 4);
  EXPECT_EQ(pane.account().onSlice, 1);
}

TEST_F(SlicePaneTest, TheCurrentOneAloneIsDrawn) {
  put({-20, 0, 0});
  put({20, 0, 0});
  dipoles->m_showCurrentDipoleOnly = 1;
  dipoles->m_currentDipole = 0;
  SlicePane pane = paneOf(View::axial);
  const Image& image = pane.paint(contents());
  EXPECT_EQ(pane.account().onSlice, 1);
  EXPECT_EQ(count(image, orange, {200, 0, 400, 360}), 0);
  EXPECT_GT(count(image, orange, {0, 0, 200, 360}), 0);
}

TEST_F(SlicePaneTest, ARingStandsAroundTheCurrentDipole) {
  put({-20, 0, 0});
  put({20, 0, 0});
  const Rgb white{255, 255, 255};
  const auto around = [&](const Image& image, const PixelPoint& at) {
    return count(image, white, {at.column - 13, at.row - 13, at.column + 14, at.row + 14});
  };
  SlicePane pane = paneOf(View::axial);
  const Image without = pane.paint(contents());
  dipoles->m_currentDipole = 1;
  const Image with = pane.paint(contents());
  const PixelPoint left = pane.pixelOf({20, 0, 0}).value();
  const PixelPoint right = pane.pixelOf({-20, 0, 0}).value();
  EXPECT_EQ(around(without, left), 0);
  EXPECT_GT(around(with, left), 30);
  EXPECT_EQ(around(with, right), 0);
}

TEST_F(SlicePaneTest, TheCurrentDipoleIsNotCoveredByLaterOnes) {
  const CDipoleszq& current = put({20, 0, 0});
  for (int i = 0; i < 5; ++i)
    put({20, 0, 0}).setColorValue(RGB(0, 0, 200));
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const PixelPoint at = pane.pixelOf({20, 0, 0}).value();
  EXPECT_EQ(pane.paint(contents()).pixel(at.column, at.row), (Rgb{0, 0, 200}));
  dipoles->m_currentDipole = 0;
  EXPECT_EQ(pane.paint(contents()).pixel(at.column, at.row), orange);
  EXPECT_EQ(current.m_display, 1);
}

TEST_F(SlicePaneTest, ColoursAreThoseOfTheValue) {
  put({-20, 0, 0}).m_fitError = 1.0;
  put({20, 0, 0}).m_fitError = 9.0;
  const host::ValueColors byError(*dipoles, host::DipoleValue::fitError);
  colours = &byError;
  SlicePane pane = paneOf(View::axial);
  const Image& image = pane.paint(contents());
  EXPECT_EQ(count(image, orange), 0);
  const PixelPoint left = pane.pixelOf({20, 0, 0}).value();
  const PixelPoint right = pane.pixelOf({-20, 0, 0}).value();
  EXPECT_EQ(image.pixel(right.column, right.row), byError.colorOf(1.0));
  EXPECT_EQ(image.pixel(left.column, left.row), byError.colorOf(9.0));
}

TEST_F(SlicePaneTest, ArrowsPointWhereTheOrientationPoints) {
  // From the dipole: axial right = left, up = front.
  struct Case {
    View view;
    Vector3 orientation;
    int columns;
    int rows;
  };
  for (const Case& wanted : {Case{View::axial, {5, 0, 0}, 1, 0},
                             {View::axial, {0, 0, 3}, 0, -1},
                             {View::axial, {-2, 0, 0}, -1, 0},
                             {View::coronal, {0, 7, 0}, 0, -1},
                             {View::coronal, {1, 0, 0}, 1, 0},
                             {View::sagittal, {0, 0, 2}, 1, 0},
                             {View::sagittal, {0, -1, 0}, 0, 1}}) {
    dipoles->cleanDipoles();
    CDipoleszq& dipole = put({0, 0, 0});
    dipole.m_showOrientation = 1;
    dipole.m_orientationLength = 30.0;
    dipole.setDipoleOrientation(wanted.orientation.x, wanted.orientation.y, wanted.orientation.z);
    SlicePane pane = paneOf(wanted.view);
    const Image& image = pane.paint(contents());
    const PixelPoint at = pane.pixelOf({0, 0, 0}).value();
    // Away from square and head; the line is two pixels wide.
    const int along = static_cast<int>(18.0 / pane.mmPerPixel());
    const auto isShaftAt = [&](int columns, int rows) {
      const int column = at.column + columns * along;
      const int row = at.row + rows * along;
      return count(image, orange, {column - 1, row - 1, column + 2, row + 2}) > 0;
    };
    EXPECT_TRUE(isShaftAt(wanted.columns, wanted.rows));
    EXPECT_FALSE(isShaftAt(-wanted.columns, -wanted.rows));
    EXPECT_FALSE(isShaftAt(wanted.rows, wanted.columns));
    EXPECT_FALSE(isShaftAt(-wanted.rows, -wanted.columns));
    // 30 mm long, whatever the length of the stored vector.
    const int tip = static_cast<int>(std::lround(30.0 / pane.mmPerPixel()));
    const auto isInk = [&](int distance) {
      const int column = at.column + wanted.columns * distance;
      const int row = at.row + wanted.rows * distance;
      return count(image, orange, {column - 1, row - 1, column + 2, row + 2}) > 0;
    };
    EXPECT_TRUE(isInk(tip - 2));
    EXPECT_FALSE(isInk(tip + 4));
  }
}

TEST_F(SlicePaneTest, WithoutTheSwitchOrOutOfThePlaneThereIsNoArrow) {
  CDipoleszq& dipole = put({0, 0, 0});
  dipole.setDipoleOrientation(1, 0, 0);
  SlicePane axial = paneOf(View::axial);
  EXPECT_EQ(count(axial.paint(contents()), orange), 81);
  dipole.m_showOrientation = 1;
  EXPECT_GT(count(axial.paint(contents()), orange), 100);
  SlicePane sagittal = paneOf(View::sagittal);
  EXPECT_EQ(count(sagittal.paint(contents()), orange), 81);
  dipole.m_orientationLength = notANumber;
  EXPECT_EQ(count(axial.paint(contents()), orange), 81);
}

TEST_F(SlicePaneTest, ManyArrowsKeepTheirDirection) {
  settings.glyphPixels = 3;
  for (int i = 0; i < 600; ++i) {
    CDipoleszq& dipole = put({0, 0, 0});
    dipole.m_showOrientation = 1;
    dipole.setDipoleOrientation(0, 0, 1);
  }
  SlicePane pane = paneOf(View::axial);
  const Image& image = pane.paint(contents());
  const PixelPoint at = pane.pixelOf({0, 0, 0}).value();
  const int tip = static_cast<int>(std::lround(30.0 / pane.mmPerPixel()));
  // Up to the edge of the square, two pixels above its middle.
  EXPECT_EQ(count(image, orange, {at.column, at.row - tip + 1, at.column + 1, at.row - 2}), tip - 3);
  EXPECT_EQ(count(image, orange, {0, 0, 400, at.row - tip - 1}), 0);
  EXPECT_EQ(count(image, orange, {0, at.row + 3, 400, 360}), 0);
}

TEST_F(SlicePaneTest, OnAnUnregisteredHeadNoDipoleIsDrawn) {
  settings.toleranceMm.reset();
  CDipoleszq& dipole = put({0, 0, 0});
  dipole.m_showOrientation = 1;
  dipoles->m_currentDipole = 0;
  head.fiducials.reset();
  for (const View view : allViews) {
    SlicePane pane = paneOf(view);
    const Image& image = pane.paint(contents());
    EXPECT_EQ(count(image, orange), 0);
    EXPECT_GT(count(image, {255, 190, 70}), 50) << "the warning";
    EXPECT_EQ(pane.account().onSlice, 0);
    EXPECT_EQ(pane.account().unregistered, 1);
    EXPECT_EQ(pane.pick(contents(), 200, 180), -1);
  }
}

TEST_F(SlicePaneTest, PickFindsTheDipoleUnderThePixelAndNoOther) {
  put({-20, 0, 0});
  put({20, 0, 0});
  put({20, 0, 0});
  put({20, 50, 0});
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const PixelPoint at = pane.pixelOf({20, 0, 0}).value();
  for (int across = -6; across <= 6; ++across)
    for (int down = -6; down <= 6; ++down) {
      const bool isInside = std::abs(across) <= 4 && std::abs(down) <= 4;
      EXPECT_EQ(pane.pick(contents(), at.column + across, at.row + down), isInside ? 1 : -1);
    }
  const PixelPoint right = pane.pixelOf({-20, 0, 0}).value();
  EXPECT_EQ(pane.pick(contents(), right.column, right.row), 0);
}

TEST_F(SlicePaneTest, PickTakesTheNearestOfOverlappingSquares) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const double mm = pane.mmPerPixel();
  put({0.5 * mm, 0, 0});
  put({5.5 * mm, 0, 0});
  pane.paint(contents());
  const PixelPoint at = pane.pixelOf({0.5 * mm, 0, 0}).value();
  EXPECT_EQ(pane.pick(contents(), at.column + 1, at.row), 0);
  EXPECT_EQ(pane.pick(contents(), at.column + 2, at.row), 0);
  EXPECT_EQ(pane.pick(contents(), at.column + 3, at.row), 1);
  dipoles->deleteDipole(1, 0);
  EXPECT_EQ(pane.pick(contents(), at.column + 3, at.row), 0) << "a slot that became empty is not picked";
}

TEST_F(SlicePaneTest, DipolesBeyondTheBordersOfThePaneAreCounted) {
  put({0, 0, 0});
  put({50, 0, 0});
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const PixelPoint at = pane.pixelOf({0, 0, 0}).value();
  for (int i = 0; i < 3; ++i)
    pane.zoom(2.0, at.column, at.row);
  pane.paint(contents());
  EXPECT_EQ(pane.account().onSlice, 2);
  EXPECT_EQ(pane.account().offPane, 1);
}

TEST_F(SlicePaneTest, ADipoleAtTheBorderIsCutNotLost) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  put(pane.headPoint(0, 200));
  put(pane.headPoint(399, 50));
  const Image& image = pane.paint(contents());
  EXPECT_EQ(count(image, orange, {0, 190, 10, 210}), 45);
  EXPECT_EQ(count(image, orange, {390, 40, 400, 60}), 45);
}

TEST_F(SlicePaneTest, CaptionsDoNotCoverDipoles) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  for (const int row : {12, 40, 60})
    for (int column = 6; column < 150; column += 9)
      put(pane.headPoint(column + 4, row));
  const Image& image = pane.paint(contents());
  for (const int row : {12, 40, 60})
    EXPECT_EQ(count(image, orange, {6, row - 4, 150, row + 5}), 144 * 9) << row;
}

TEST_F(SlicePaneTest, ACrosshairThatIsNoPlaceIsRefused) {
  SlicePane pane = paneOf(View::axial);
  for (const double nonsense : {notANumber, 1000.5, -std::numeric_limits<double>::infinity()}) {
    crosshair = {0, 0, nonsense};
    EXPECT_THROW(pane.paint(contents()), std::invalid_argument);
  }
  crosshair = {0, 0, 1000.0};
  EXPECT_NO_THROW(pane.paint(contents()));
}

TEST_F(SlicePaneTest, TheCrosshairIsOpenAroundItsPoint) {
  crosshair = {10, 0, 5};
  SlicePane pane = paneOf(View::axial);
  const Image& image = pane.paint(contents());
  const PixelPoint at = pane.pixelOf(crosshair).value();
  const auto isLine = [&](int column, int row) {
    const Rgb pixel = image.pixel(column, row);
    return pixel.green > pixel.red + 20;
  };
  EXPECT_TRUE(isLine(at.column + 40, at.row));
  EXPECT_TRUE(isLine(at.column - 40, at.row));
  EXPECT_TRUE(isLine(at.column, at.row + 40));
  EXPECT_FALSE(isLine(at.column, at.row));
  EXPECT_FALSE(isLine(at.column + 5, at.row));
  EXPECT_FALSE(isLine(at.column + 40, at.row + 2));
}

TEST_F(SlicePaneTest, LettersStandAtTheBordersOfPanesOfAnySize) {
  const Rgb white{255, 255, 255};
  for (const auto& [width, height] : {std::pair{200, 200}, {500, 450}, {120, 300}})
    for (const View view : allViews) {
      SlicePane pane = paneOf(view, width, height);
      const Image& image = pane.paint(contents());
      const int x = width / 2;
      const int y = height / 2;
      EXPECT_GT(count(image, white, {0, y - 16, 28, y + 16}), 10);
      EXPECT_GT(count(image, white, {width - 28, y - 16, width, y + 16}), 10);
      EXPECT_GT(count(image, white, {x - 12, 0, x + 12, 34}), 4);
      EXPECT_GT(count(image, white, {x - 12, height - 34, x + 12, height}), 4);
    }
}

TEST_F(SlicePaneTest, PanesOfAnySizeArePainted) {
  put({0, 0, 0}).m_showOrientation = 1;
  head.fiducials.reset();
  for (const int width : {1, 2, 17, 60, 150})
    for (const int height : {1, 3, 40, 90})
      for (const View view : allViews) {
        SlicePane pane = paneOf(view, width, height);
        const Image& image = pane.paint(contents());
        EXPECT_EQ(image.width(), width);
        EXPECT_EQ(image.height(), height);
      }
}
