// What the 3D pane shows, and what is picked in it.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

#include "host/panes/ScenePane.h"
#include "host/picture/ColorLegend.h"
#include "tests/host/paint/SceneShapes.h"
#include "tests/host/panes/PaneFixture.h"
#include "tests/host/undo/WholeSet.h"

namespace {

using host::Image;
using host::Rgb;
using host::ScenePane;
using host::ScreenPoint;
using host::Standpoint;
using host::Vector3;

struct ScenePaneTest : testing::Test, PaneFixture {
  ScenePaneTest() {
    pane.resize(420, 360);
    pane.lookFrom(Standpoint::front);
    settings.ballRadius = 5.0;
    crosshair = {0, 0, -40};
    dipoles->m_currentDipole = -1;
  }

  // A ball in strong red or blue; no mark has these colours.
  CDipoleszq& put(const Vector3& place, COLORREF colour = RGB(255, 0, 0)) {
    CDipoleszq& dipole = add(place.x, place.y, place.z);
    dipole.setColorValue(colour);
    dipoles->m_currentDipole = -1;
    return dipole;
  }

  const Image& paint() { return pane.paint(contents()); }

  int pickAt(const Vector3& place) const {
    const ScreenPoint at = pane.camera().project(place);
    return pane.pick(contents(), static_cast<int>(at.column), static_cast<int>(at.row));
  }

  ScenePane pane;
};

}  // namespace

TEST_F(ScenePaneTest, BallsStandWhereTheCameraSeesThem) {
  put({40, 20, 0});
  put({-40, -20, 0}, RGB(0, 0, 255));
  const Image& image = paint();
  EXPECT_EQ(image.width(), 420);
  EXPECT_EQ(image.height(), 360);
  const ScreenPoint left = pane.camera().project({40, 20, 0});
  const Drawn red = drawnWhere(image, isReddish);
  EXPECT_GT(red.pixels, 100);
  EXPECT_NEAR(red.column, left.column, 1.5);
  EXPECT_NEAR(red.row, left.row, 1.5);
  EXPECT_GT(left.column, 210.0) << "from the front the patient's left is on the right";
  EXPECT_LT(drawnWhere(image, isBluish).column, 210.0);
}

TEST_F(ScenePaneTest, OnlyVisibleDipolesAreDrawnAndCounted) {
  put({40, 20, 0}).m_show = 0;
  put({40, 20, 0}).m_fitError = 50.0;
  put({40, 20, 0}).m_latency = 900.0;
  put({std::numeric_limits<double>::quiet_NaN(), 0, 0});
  put({-40, -20, 0}, RGB(0, 0, 255));
  put({-40, 20, 0}).m_display = 0;
  settings.filter.fitError.most = 20.0;
  settings.latency = {-1.0, 100.0};
  dipoles->setShowDipoleLatencySelected(1);
  const Image& image = paint();
  EXPECT_EQ(drawnWhere(image, isReddish).pixels, 0);
  EXPECT_GT(drawnWhere(image, isBluish).pixels, 100);
  EXPECT_EQ(static_cast<const host::VisibleCount&>(pane.count()), (host::VisibleCount{6, 1, 2, 2, 1}));
}

TEST_F(ScenePaneTest, ColoursAreThoseOfTheValue) {
  put({40, 20, 0}).m_fitError = 1.0;
  put({-40, -20, 0}).m_fitError = 9.0;
  const host::DipoleColors byError = host::ValueColors(*dipoles, host::DipoleValue::fitError);
  settings.showLegend = false;
  EXPECT_GT(drawnWhere(paint(), isReddish).pixels, 100);
  colours = &byError;
  EXPECT_EQ(drawnWhere(paint(), isReddish).pixels, 0);
}

TEST_F(ScenePaneTest, PickFindsTheBallThatIsSeen) {
  put({40, 20, 0});
  put({-40, -20, 0});
  put({-40, -20, 30});
  paint();
  EXPECT_EQ(pickAt({40, 20, 0}), 0);
  EXPECT_EQ(pickAt({-40, -20, 0}), 2) << "the nearer one";
  EXPECT_EQ(pickAt({40, -20, 0}), -1);
  EXPECT_EQ(pane.pick(contents(), -1, 5), -1);
  EXPECT_EQ(pane.pick(contents(), 5, 360), -1);
  pane.lookFrom(Standpoint::back);
  paint();
  EXPECT_EQ(pickAt({-40, -20, 0}), 1);
  dipoles->deleteDipole(1, 0);
  EXPECT_EQ(pickAt({-40, -20, 0}), -1) << "a slot that became empty is not picked";
}

TEST_F(ScenePaneTest, ADipoleBehindASliceShowsThroughAndCanBePicked) {
  put({20, 20, -10});
  window = {0.0, 600.0};
  crosshair = {-50, -50, 10};  // the coronal slice stands before the dipole
  const Image& image = paint();
  const ScreenPoint at = pane.camera().project({20, 20, -10});
  const Rgb through = image.pixel(static_cast<int>(at.column), static_cast<int>(at.row));
  EXPECT_GT(through.red, through.blue + 40);
  EXPECT_GT(through.blue, 30) << "the slice is seen too";
  EXPECT_EQ(pickAt({20, 20, -10}), 0);
  crosshair.z = -40;
  const Image& open = paint();
  const Rgb before = open.pixel(static_cast<int>(at.column), static_cast<int>(at.row));
  EXPECT_GT(before.red, through.red);
}

TEST_F(ScenePaneTest, SlicesFollowTheCrosshair) {
  const auto greyAt = [&](const Vector3& place) {
    const Image& image = paint();
    const ScreenPoint at = pane.camera().project(place);
    return static_cast<int>(image.pixel(static_cast<int>(at.column), static_cast<int>(at.row)).red);
  };
  window = {0.0, 600.0};
  crosshair = {-50, -50, 20};
  EXPECT_GT(greyAt({30, 10, 20}), 240) << "the white blob";
  crosshair.z = -10;
  EXPECT_LT(greyAt({30, 10, -10}), 200);
  window = {0.0, 300.0};
  EXPECT_GT(greyAt({30, 10, -10}), 240) << "another grey window";
}

TEST_F(ScenePaneTest, OnAnUnregisteredHeadThereAreDipolesButNoSlices) {
  put({40, 20, 0});
  const auto greys = [](const Image& image) {
    return drawnWhere(image,
                      [](const Rgb& pixel) {
                        return pixel.red > 60 && pixel.red == pixel.green && pixel.red == pixel.blue;
                      })
        .pixels;
  };
  EXPECT_GT(greys(paint()), 5000);
  head.fiducials.reset();
  const Image& image = paint();
  EXPECT_LT(greys(image), 1500) << "letters only";
  EXPECT_GT(drawnWhere(image, isReddish).pixels, 100);
  EXPECT_GT(drawnWhere(image, [](const Rgb& pixel) { return pixel == Rgb{255, 190, 70}; }).pixels, 50);
}

TEST_F(ScenePaneTest, AnUnregisteredHeadIsShownWhileThereIsNothingToMisplace) {
  head.fiducials.reset();
  const auto warnings = [&] {
    return drawnWhere(paint(), [](const Rgb& pixel) { return pixel == Rgb{255, 190, 70}; }).pixels;
  };
  EXPECT_EQ(warnings(), 0);
  EXPECT_GT(drawnWhere(paint(),
                       [](const Rgb& pixel) {
                         return pixel.red > 60 && pixel.red == pixel.green && pixel.red == pixel.blue;
                       })
                .pixels,
            5000);
  dipoles->m_sphereCtf.m_radius = 70.0;
  EXPECT_GT(warnings(), 50);
  dipoles->m_sphereCtf.m_radius = 0.0;
  put({std::numeric_limits<double>::quiet_NaN(), 0, 0});
  EXPECT_GT(warnings(), 50);
}

TEST_F(ScenePaneTest, TheLegendStandsAtTheRightBorderBesideTheScene) {
  put({40, 20, 0}).m_fitError = 1.0;
  put({-40, -20, 0}).m_fitError = 9.0;
  const host::DipoleColors byError = host::ValueColors(*dipoles, host::DipoleValue::fitError);
  colours = &byError;
  pane.resize(500, 360);
  const Image& image = paint();
  const Image legend = legendPicture(byError, 360, 15);
  ASSERT_EQ(legend.height(), 360);
  EXPECT_EQ(pane.camera().width(), 500 - legend.width());
  for (int row = 0; row < 360; ++row) {
    for (int column = 0; column < legend.width(); ++column) {
      ASSERT_EQ(image.pixel(500 - legend.width() + column, row), legend.pixel(column, row));
    }
  }
  EXPECT_EQ(pane.pick(contents(), 499, 180), -1);
  settings.showLegend = false;
  paint();
  EXPECT_EQ(pane.camera().width(), 500);
  settings.showLegend = true;
  pane.resize(200, 360);
  paint();
  EXPECT_EQ(pane.camera().width(), 200) << "no room";
}

TEST_F(ScenePaneTest, DraggingTurnsTheHeadWithTheHand) {
  const Vector3 nose{0, 0, 60};
  const ScreenPoint before = pane.camera().project(nose);
  pane.turn(40, 0);
  EXPECT_DOUBLE_EQ(pane.camera().angles().yaw, -20.0);
  EXPECT_GT(pane.camera().project(nose).column, before.column);
  pane.turn(0, 30);
  EXPECT_DOUBLE_EQ(pane.camera().angles().pitch, 15.0);
  EXPECT_GT(pane.camera().project(nose).row, before.row);
}

TEST_F(ScenePaneTest, FitShowsTheWholeHeadFromEverySide) {
  paint();
  pane.zoom(5.0);
  pane.pan(300, 100);
  paint();
  pane.fit();
  for (const Standpoint standpoint : host::allStandpoints) {
    pane.lookFrom(standpoint);
    paint();
    for (int axis = 0; axis < 3; ++axis) {
      for (const double end : {-60.0, 60.0}) {
        Vector3 place;
        place[axis] = end;
        const ScreenPoint at = pane.camera().project(place);
        EXPECT_GT(at.column, 20.0);
        EXPECT_LT(at.column, 400.0);
        EXPECT_GT(at.row, 20.0);
        EXPECT_LT(at.row, 340.0);
      }
    }
  }
  EXPECT_GT(pane.camera().scale() * 120.0, 240.0) << "and not smaller than need be";
}

TEST_F(ScenePaneTest, ZoomAndPanStayUntilTheNextFit) {
  paint();
  const double fitted = pane.camera().scale();
  pane.zoom(1.5);
  for (const double nonsense : {0.0, -2.0, std::numeric_limits<double>::quiet_NaN()}) {
    pane.zoom(nonsense);
  }
  paint();
  EXPECT_DOUBLE_EQ(pane.camera().scale(), fitted * 1.5);
  const double column = pane.camera().project({}).column;
  pane.pan(25, 0);
  paint();
  EXPECT_NEAR(pane.camera().project({}).column, column + 25.0, 1e-9);
  pane.fit();
  paint();
  EXPECT_DOUBLE_EQ(pane.camera().scale(), fitted);
  EXPECT_NEAR(pane.camera().project({}).column, column, 2.0);
}

TEST_F(ScenePaneTest, TheSetIsAsBefore) {
  for (int i = 0; i < 10; ++i) {
    put({i * 4.0, 0, 0}).m_showOrientation = 1;
  }
  dipoles->m_currentDipole = 3;
  const WholeSet before = wholeSet(*dipoles);
  paint();
  EXPECT_TRUE(isSame(wholeSet(*dipoles), before));
}

TEST_F(ScenePaneTest, ACrosshairThatIsNoPlaceIsRefused) {
  crosshair.y = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THROW(paint(), std::invalid_argument);
  crosshair.y = -1000.1;
  EXPECT_THROW(paint(), std::invalid_argument);
}

TEST_F(ScenePaneTest, PanesOfAnySizeArePainted) {
  put({40, 20, 0}).m_showOrientation = 1;
  for (const int width : {1, 2, 30, 200}) {
    for (const int height : {1, 5, 100}) {
      pane.resize(width, height);
      EXPECT_EQ(paint().width(), width);
      EXPECT_EQ(paint().height(), height);
    }
  }
}
