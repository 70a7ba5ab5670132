// A large slice pane has the legend of its colours beside its picture, not over it.
#include <gtest/gtest.h>

#include "host/picture/ColorLegend.h"
#include "tests/host/panes/SlicePaneFixture.h"

namespace {

using host::Image;
using host::PixelPoint;
using host::Rgb;
using host::SlicePane;
using host::Vector3;
using host::View;

struct SlicePaneLegend : SlicePaneFixture {
  SlicePaneLegend() {
    put({40, 0, 0}).m_fitError = 1.0;
    put({-40, 0, 0}).m_fitError = 9.0;
    byError = host::ValueColors(*dipoles, host::DipoleValue::fitError);
    colours = &*byError;
  }

  std::optional<host::DipoleColors> byError;
};

// The column where the picture ends and the legend begins; -1 when the legend is not at the right border.
int legendBegin(const Image& image, const Image& legend) {
  const int begin = image.width() - legend.width();
  for (int row = 0; row < legend.height(); ++row) {
    for (int column = 0; column < legend.width(); ++column) {
      if (image.pixel(begin + column, row) != legend.pixel(column, row)) {
        return -1;
      }
    }
  }
  return begin;
}

}  // namespace

TEST_F(SlicePaneLegend, StandsAtTheRightBorderOfAPaneOfSixHundredPixels) {
  const Image legend = legendPicture(*byError, 400, 15);
  ASSERT_EQ(legend.height(), 400);
  ASSERT_GT(legend.width(), 40);
  for (const View view : allViews) {
    SlicePane pane = paneOf(view, 600, 400);
    const Image& image = pane.paint(contents());
    ASSERT_EQ(image.width(), 600);
    ASSERT_EQ(image.height(), 400);
    const int begin = legendBegin(image, legend);
    EXPECT_EQ(begin, 600 - legend.width()) << nameOf(view);
    EXPECT_TRUE(pane.isInPicture(begin - 1, 200));
    EXPECT_FALSE(pane.isInPicture(begin, 200));
    EXPECT_GT(count(image, {255, 255, 255}, {begin - 28, 184, begin, 216}), 10) << "the side's letter";
  }
}

TEST_F(SlicePaneLegend, IsNotInSmallerPanesNorWhenItIsNotWishedFor) {
  const auto hasLegend = [&](int width) {
    SlicePane pane = paneOf(View::axial, width, 400);
    pane.paint(contents());
    return !pane.isInPicture(width - 1, 200);
  };
  EXPECT_TRUE(hasLegend(600));
  EXPECT_FALSE(hasLegend(599));
  settings.showLegend = false;
  EXPECT_FALSE(hasLegend(600));
  settings.showLegend = true;
  colours = nullptr;
  EXPECT_FALSE(hasLegend(600));
}

TEST_F(SlicePaneLegend, LeavesDipolesInTheirPlacesAndTheWholeHeadInThePicture) {
  SlicePane pane = paneOf(View::axial, 700, 680);
  const Image image = pane.paint(contents());
  for (int slot = 0; slot < 2; ++slot) {
    const CDipoleszq& dipole = *dipoles->getDipole(slot);
    const Vector3 place{dipole.m_location[0], 0, 0};
    const PixelPoint at = pane.pixelOf(place).value();
    EXPECT_EQ(image.pixel(at.column, at.row), colorOf(*byError, dipole));
    EXPECT_EQ(pane.pick(contents(), at.column, at.row), slot);
  }
  const int left = pane.pixelOf({-60, 0, 0}).value().column;
  const int right = pane.pixelOf({60, 0, 0}).value().column;
  int picture = 700;
  while (picture > 0 && !pane.isInPicture(picture - 1, 300)) {
    --picture;
  }
  EXPECT_LT(picture, 660);
  EXPECT_NEAR((left + right) * 0.5, pane.pixelOf({0, 0, 0}).value().column, 1.0);
  EXPECT_GT(left, 10);
  EXPECT_LT(right, picture - 10);
}

TEST_F(SlicePaneLegend, ZoomStillKeepsWhatIsUnderThePixel) {
  SlicePane pane = paneOf(View::axial, 700, 680);
  pane.paint(contents());
  const Vector3 before = pane.headPoint(500, 120);
  pane.zoom(2.5, 500, 120);
  pane.paint(contents());
  const Vector3 after = pane.headPoint(500, 120);
  EXPECT_NEAR(after.x, before.x, pane.mmPerPixel());
  EXPECT_NEAR(after.z, before.z, pane.mmPerPixel());
}
