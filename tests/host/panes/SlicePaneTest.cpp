// How a slice pane shows the head: the right slice, its sides, zoom, fit, letters.
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "host/panes/SlicePane.h"
#include "tests/host/panes/SlicePaneFixture.h"

namespace {

using host::axesOf;
using host::Image;
using host::PixelBox;
using host::PixelPoint;
using host::Rgb;
using host::SlicePane;
using host::Vector3;
using host::View;

struct SlicePaneView : SlicePaneFixture {};

TEST_F(SlicePaneView, ThePictureHasTheSizeOfThePane) {
  SlicePane pane = paneOf(View::axial, 321, 234);
  const Image& image = pane.paint(contents());
  EXPECT_EQ(image.width(), 321);
  EXPECT_EQ(image.height(), 234);
  pane.resize(0, -5);
  EXPECT_EQ(pane.paint(contents()).width(), 1);
  EXPECT_EQ(pane.paint(contents()).height(), 1);
}

TEST_F(SlicePaneView, ALeftDipoleIsOnTheRightOfAxialAndCoronalPictures) {
  put({50, 0, 0});
  for (const View view : {View::axial, View::coronal}) {
    SlicePane pane = paneOf(view);
    const Image& image = pane.paint(contents());
    EXPECT_GT(count(image, orange, {200, 0, 400, 360}), 0) << nameOf(view);
    EXPECT_EQ(count(image, orange, {0, 0, 200, 360}), 0) << nameOf(view);
  }
}

TEST_F(SlicePaneView, AFrontDipoleIsAboveInAxialAndRightInSagittalPictures) {
  put({0, 0, 50});
  SlicePane axial = paneOf(View::axial);
  EXPECT_EQ(count(axial.paint(contents()), orange), count(axial.paint(contents()), orange, {0, 0, 400, 180}));
  SlicePane sagittal = paneOf(View::sagittal);
  const Image& image = sagittal.paint(contents());
  EXPECT_GT(count(image, orange), 0);
  EXPECT_EQ(count(image, orange), count(image, orange, {200, 0, 400, 360}));
}

TEST_F(SlicePaneView, AnUpperDipoleIsAboveInCoronalAndSagittalPictures) {
  put({0, 40, 0});
  for (const View view : {View::coronal, View::sagittal}) {
    SlicePane pane = paneOf(view);
    const Image& image = pane.paint(contents());
    EXPECT_EQ(count(image, orange), 81) << nameOf(view);
    EXPECT_EQ(count(image, orange, {0, 0, 400, 180}), 81) << nameOf(view);
  }
}

TEST_F(SlicePaneView, ASquareIsCentredOnThePixelOfItsDipole) {
  std::mt19937 random(4);
  std::uniform_real_distribution<double> place(-55.0, 55.0);
  for (int i = 0; i < 20; ++i) {
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
}

TEST_F(SlicePaneView, HeadPointAndPixelAreInverse) {
  crosshair = {12.25, -7.5, 33.0};
  for (const View view : allViews) {
    SlicePane pane = paneOf(view, 301, 200);
    pane.paint(contents());
    pane.zoom(2.5, 100, 50);
    pane.pan(13, -7);
    pane.paint(contents());
    EXPECT_EQ(pane.position(), crosshair[axesOf(view).slab]);
    for (int row = 0; row < 200; row += 7) {
      for (int column = 0; column < 301; column += 7) {
        const Vector3 place = pane.headPoint(column, row);
        EXPECT_EQ(place[axesOf(view).slab], pane.position());
        EXPECT_EQ(pane.pixelOf(place), (PixelPoint{column, row}));
      }
    }
  }
}

TEST_F(SlicePaneView, PlacesBeyondThePictureHaveNoPixel) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  EXPECT_FALSE(pane.pixelOf(pane.headPoint(-1, 10)).has_value());
  EXPECT_FALSE(pane.pixelOf(pane.headPoint(10, 360)).has_value());
  EXPECT_FALSE(pane.pixelOf({notANumber, 0, 0}).has_value());
  EXPECT_FALSE(pane.pixelOf({0, 0, 1e300}).has_value());
}

TEST_F(SlicePaneView, GreysAreThoseOfTheVolume) {
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
      if (column == cross.column || row == cross.row) {
        continue;
      }
      const Vector3 scanner = head.frame.toScanner(pane.headPoint(column, row));
      const std::uint8_t grey = window.grey(head.volume->sampleScanner(scanner));
      ASSERT_NEAR(image.pixel(column, row).red, grey, 1) << column << ' ' << row;
      ASSERT_EQ(image.pixel(column, row).red, image.pixel(column, row).blue);
      ++compared;
    }
  }
}

TEST_F(SlicePaneView, AnotherWindowOrSliceOrHeadChangesTheGreys) {
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

TEST_F(SlicePaneView, ZoomKeepsWhatIsUnderThePixel) {
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

TEST_F(SlicePaneView, ZoomingInAndOutComesBackWithoutDrift) {
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

TEST_F(SlicePaneView, ZoomEndsAtATenthAndAtFiveMm) {
  SlicePane pane = paneOf(View::sagittal);
  for (int i = 0; i < 30; ++i) {
    pane.zoom(2.0, 5, 5);
  }
  pane.paint(contents());
  // Before the first picture there is nothing that a zoom could keep: the head is fitted first.
  EXPECT_GT(pane.mmPerPixel(), 0.1);
  for (int i = 0; i < 30; ++i) {
    pane.zoom(2.0, 5, 5);
  }
  pane.paint(contents());
  EXPECT_EQ(pane.mmPerPixel(), 0.1);
  for (int i = 0; i < 30; ++i) {
    pane.zoom(0.5, 5, 5);
  }
  pane.paint(contents());
  EXPECT_EQ(pane.mmPerPixel(), 5.0);
  for (const double nonsense : {0.0, -1.0, notANumber, std::numeric_limits<double>::infinity()}) {
    pane.zoom(nonsense, 5, 5);
    pane.paint(contents());
    EXPECT_EQ(pane.mmPerPixel(), 5.0);
  }
}

TEST_F(SlicePaneView, PanMovesThePicture) {
  SlicePane pane = paneOf(View::axial);
  pane.paint(contents());
  const PixelPoint before = pane.pixelOf({10, 0, 20}).value();
  pane.pan(17, -23);
  pane.paint(contents());
  EXPECT_EQ(pane.pixelOf({10, 0, 20}), (PixelPoint{before.column + 17, before.row - 23}));
}

TEST_F(SlicePaneView, FitShowsTheWholeHeadBetweenTheLetters) {
  for (const auto& [width, height] : {std::pair{400, 360}, {300, 700}, {900, 250}, {200, 200}}) {
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
}

TEST_F(SlicePaneView, TheHeadStaysFittedWhenThePaneGrowsUntilTheUserZooms) {
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

TEST_F(SlicePaneView, ACrosshairThatIsNoPlaceIsRefused) {
  SlicePane pane = paneOf(View::axial);
  for (const double nonsense : {notANumber, 1000.5, -std::numeric_limits<double>::infinity()}) {
    crosshair = {0, 0, nonsense};
    EXPECT_THROW(pane.paint(contents()), std::invalid_argument);
  }
  crosshair = {0, 0, 1000.0};
  EXPECT_NO_THROW(pane.paint(contents()));
}

TEST_F(SlicePaneView, TheCrosshairIsOpenAroundItsPoint) {
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

TEST_F(SlicePaneView, LettersStandAtTheBordersOfPanesOfAnySize) {
  const Rgb white{255, 255, 255};
  for (const auto& [width, height] : {std::pair{200, 200}, {500, 450}, {120, 300}}) {
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
}

TEST_F(SlicePaneView, PanesOfAnySizeArePainted) {
  put({0, 0, 0}).m_showOrientation = 1;
  head.fiducials.reset();
  for (const int width : {1, 2, 17, 60, 150}) {
    for (const int height : {1, 3, 40, 90}) {
      for (const View view : allViews) {
        SlicePane pane = paneOf(view, width, height);
        const Image& image = pane.paint(contents());
        EXPECT_EQ(image.width(), width);
        EXPECT_EQ(image.height(), height);
      }
    }
  }
}

}  // namespace
