// What a slice pane shows of a set: every dipole that it should and no other, each on its side and in its
// place.
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

#include "host/panes/SlicePane.h"
#include "tests/host/panes/SlicePaneFixture.h"
#include "tests/host/undo/WholeSet.h"

namespace {

using host::axesOf;
using host::Image;
using host::PixelPoint;
using host::Rgb;
using host::SliceAccount;
using host::SlicePane;
using host::Vector3;
using host::View;

struct SlicePaneDipoles : SlicePaneFixture {};

TEST_F(SlicePaneDipoles, TheToleranceHoldsAtBothEdges) {
  const auto shifted = [](View view, double mm) {
    Vector3 place{5, 6, 7};
    place[axesOf(view).slab] += mm;
    return place;
  };
  crosshair = {5, 6, 7};
  settings.toleranceMm = 4.0;
  for (const View view : allViews) {
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
}

TEST_F(SlicePaneDipoles, WithoutOverlapASliceShowsItsOwnDipolesOnly) {
  dipoles->setShowDipole2DOverlap(0);
  settings.toleranceMm.reset();
  settings.thinnestSlice = 2.0;
  for (const double mm : {-1.001, -1.0, 0.0, 1.0, 1.001}) {
    put({0, mm, 0});
  }
  EXPECT_EQ(paintedAccount(View::axial).onSlice, 3);
  dipoles->setShowDipole2DOverlap(1);
  EXPECT_EQ(paintedAccount(View::axial).onSlice, 5);
}

TEST_F(SlicePaneDipoles, AToleranceOfNothingReachesHalfAThinSlice) {
  settings.toleranceMm = 0.0;
  settings.thinnestSlice = 1.0;
  for (const double mm : {-0.501, -0.5, 0.0, 0.5, 0.501}) {
    put({0, mm, 0});
  }
  EXPECT_EQ(paintedAccount(View::axial).onSlice, 3);
  settings.toleranceMm = 0.501;
  EXPECT_EQ(paintedAccount(View::axial).onSlice, 5);
}

TEST_F(SlicePaneDipoles, WithoutAToleranceAllDipolesAreDrawn) {
  settings.toleranceMm.reset();
  put({-20, -250, 10});
  put({20, 99'000, 10});
  SlicePane pane = paneOf(View::axial);
  EXPECT_EQ(count(pane.paint(contents()), orange), 2 * 81);
  EXPECT_EQ(pane.account().onSlice, 2);
}

TEST_F(SlicePaneDipoles, AxialSlicesBelowTheOriginShowTheirDipoles) {
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

TEST_F(SlicePaneDipoles, AnAxialSliceDoesNotShowWhatLiesBetweenItAndTheOrigin) {
  crosshair.y = 40.0;
  put({20, 10, 10});
  SlicePane pane = paneOf(View::axial);
  EXPECT_EQ(count(pane.paint(contents()), orange), 0);
}

TEST_F(SlicePaneDipoles, TheSetIsAsBeforeBitByBit) {
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

TEST_F(SlicePaneDipoles, SwitchesDisplayStateFilterAndLatencyHideAndAreCounted) {
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

TEST_F(SlicePaneDipoles, BeyondThreeHundredMmNothingIsDrawnInAWrongPlace) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  for (int i = 0; i < 20; ++i) {
    pane.zoom(0.5, 200, 180);
  }
  for (const Vector3& place : {Vector3{300.0, 0, 0}, {-301.0, 0, 0}, {0, 0, 450.0}, {0, 0, -300.0}}) {
    put(place);
  }
  put({299.0, 0, -299.0});
  EXPECT_EQ(count(pane.paint(contents()), orange), 81);
  EXPECT_EQ(pane.account().outside, 4);
  EXPECT_EQ(pane.account().onSlice, 1);
}

TEST_F(SlicePaneDipoles, TheCurrentOneAloneIsDrawn) {
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

TEST_F(SlicePaneDipoles, ARingStandsAroundTheCurrentDipole) {
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

TEST_F(SlicePaneDipoles, TheCurrentDipoleIsNotCoveredByLaterOnes) {
  const CDipoleszq& current = put({20, 0, 0});
  for (int i = 0; i < 5; ++i) {
    put({20, 0, 0}).setColorValue(RGB(0, 0, 200));
  }
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const PixelPoint at = pane.pixelOf({20, 0, 0}).value();
  EXPECT_EQ(pane.paint(contents()).pixel(at.column, at.row), (Rgb{0, 0, 200}));
  dipoles->m_currentDipole = 0;
  EXPECT_EQ(pane.paint(contents()).pixel(at.column, at.row), orange);
  EXPECT_EQ(current.m_display, 1);
}

TEST_F(SlicePaneDipoles, ColoursAreThoseOfTheValue) {
  put({-20, 0, 0}).m_fitError = 1.0;
  put({20, 0, 0}).m_fitError = 9.0;
  const host::ValueColors byError(*dipoles, host::DipoleValue::fitError);
  const host::DipoleColors chosen = byError;
  colours = &chosen;
  SlicePane pane = paneOf(View::axial);
  const Image& image = pane.paint(contents());
  EXPECT_EQ(count(image, orange), 0);
  const PixelPoint left = pane.pixelOf({20, 0, 0}).value();
  const PixelPoint right = pane.pixelOf({-20, 0, 0}).value();
  EXPECT_EQ(image.pixel(right.column, right.row), byError.colorOf(1.0));
  EXPECT_EQ(image.pixel(left.column, left.row), byError.colorOf(9.0));
}

TEST_F(SlicePaneDipoles, ArrowsPointWhereTheOrientationPoints) {
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

TEST_F(SlicePaneDipoles, WithoutTheSwitchOrOutOfThePlaneThereIsNoArrow) {
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

TEST_F(SlicePaneDipoles, ManyArrowsKeepTheirDirection) {
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

TEST_F(SlicePaneDipoles, OnAnUnregisteredHeadNoDipoleIsDrawn) {
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

TEST_F(SlicePaneDipoles, PickFindsTheDipoleUnderThePixelAndNoOther) {
  put({-20, 0, 0});
  put({20, 0, 0});
  put({20, 0, 0});
  put({20, 50, 0});
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const PixelPoint at = pane.pixelOf({20, 0, 0}).value();
  for (int across = -6; across <= 6; ++across) {
    for (int down = -6; down <= 6; ++down) {
      const bool isInside = std::abs(across) <= 4 && std::abs(down) <= 4;
      EXPECT_EQ(pane.pick(contents(), at.column + across, at.row + down), isInside ? 1 : -1);
    }
  }
  const PixelPoint right = pane.pixelOf({-20, 0, 0}).value();
  EXPECT_EQ(pane.pick(contents(), right.column, right.row), 0);
}

TEST_F(SlicePaneDipoles, PickTakesTheNearestOfOverlappingSquares) {
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

TEST_F(SlicePaneDipoles, DipolesBeyondTheBordersOfThePaneAreCounted) {
  put({0, 0, 0});
  put({50, 0, 0});
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const PixelPoint at = pane.pixelOf({0, 0, 0}).value();
  for (int i = 0; i < 3; ++i) {
    pane.zoom(2.0, at.column, at.row);
  }
  pane.paint(contents());
  EXPECT_EQ(pane.account().onSlice, 2);
  EXPECT_EQ(pane.account().offPane, 1);
}

TEST_F(SlicePaneDipoles, ADipoleAtTheBorderIsCutNotLost) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  put(pane.headPoint(0, 200));
  put(pane.headPoint(399, 50));
  const Image& image = pane.paint(contents());
  EXPECT_EQ(count(image, orange, {0, 190, 10, 210}), 45);
  EXPECT_EQ(count(image, orange, {390, 40, 400, 60}), 45);
}

TEST_F(SlicePaneDipoles, CaptionsDoNotCoverDipoles) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  for (const int row : {12, 40, 60}) {
    for (int column = 6; column < 150; column += 9) {
      put(pane.headPoint(column + 4, row));
    }
  }
  const Image& image = pane.paint(contents());
  for (const int row : {12, 40, 60}) {
    EXPECT_EQ(count(image, orange, {6, row - 4, 150, row + 5}), 144 * 9) << row;
  }
}

}  // namespace
