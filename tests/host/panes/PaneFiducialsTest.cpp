// The head's registered points stand in all panes, and those that are only placed look different.
#include <gtest/gtest.h>

#include "host/panes/PaneFiducials.h"
#include "host/panes/ScenePane.h"
#include "host/picture/ScenePainter.h"
#include "tests/host/paint/SceneShapes.h"
#include "tests/host/panes/SlicePaneFixture.h"

namespace {

using host::Image;
using host::PixelPoint;
using host::Vector3;
using host::View;

constexpr std::string_view letters = "NLR";

struct PaneFiducials : SlicePaneFixture {
  // Places of the points in the head frame: all on the axial slice through the origin.
  Vector3 place(char letter) const {
    const host::Fiducials p = points();
    return head.frame.fromScanner(letter == 'N' ? p.nasion : letter == 'L' ? p.leftEar : p.rightEar);
  }

  static int inkOf(const Image& image, char letter) { return count(image, host::fiducialColour(letter)); }
  static int inkAt(const Image& image, const PixelPoint& at, char letter) {
    constexpr int reach = 26;  // with the letter
    return count(image, host::fiducialColour(letter),
                 {at.column - reach, at.row - reach, at.column + reach, at.row + reach});
  }

  // The ball ends before the nasion does: a pane that shows both.
  host::SlicePane widePane(View view) const {
    host::SlicePane pane = paneOf(view);
    pane.paint(contents());
    pane.zoom(0.5, 200, 180);
    return pane;
  }

  // The letters of the points that a slice shows.
  std::string seen(View view) const {
    host::SlicePane pane = widePane(view);
    const Image& image = pane.paint(contents());
    std::string all;
    for (const char letter : letters) {
      if (inkOf(image, letter) > 0) {
        all += letter;
      }
    }
    return all;
  }

  host::ScenePane scenePane() const {
    host::ScenePane pane;
    pane.resize(600, 600);
    pane.lookFrom(host::Standpoint::front);
    return pane;
  }

  static PixelPoint pixelIn(const host::ScenePane& pane, const Vector3& at) {
    const host::ScreenPoint screen = pane.camera().project(at);
    return {static_cast<int>(screen.column), static_cast<int>(screen.row)};
  }
};

}  // namespace

TEST_F(PaneFiducials, OfARegisteredHeadStandOnTheirSlicesInTheirPlaces) {
  host::SlicePane pane = widePane(View::axial);
  const Image& image = pane.paint(contents());
  for (const char letter : letters) {
    const PixelPoint at = pane.pixelOf(place(letter)).value();
    EXPECT_GT(inkAt(image, at, letter), 10) << letter;
    EXPECT_EQ(inkAt(image, at, letter), inkOf(image, letter)) << letter;
  }
  crosshair = {0, 30, 0};
  EXPECT_EQ(seen(View::axial), "");
  EXPECT_EQ(seen(View::sagittal), "N");
  crosshair = {0, 0, 0};
  settings.toleranceMm = 30.0;  // the ears lie before and behind the origin
  EXPECT_EQ(seen(View::coronal), "LR");
}

TEST_F(PaneFiducials, ReachAsFarAsDipolesDoButTwoMmAtLeast) {
  const auto seenFrom = [&](double mm) {
    crosshair = {0, mm, 0};
    return seen(View::axial);
  };
  settings.toleranceMm = 5.0;
  EXPECT_EQ(seenFrom(4.9), "NLR");
  EXPECT_EQ(seenFrom(5.1), "");
  settings.toleranceMm = 0.0;
  EXPECT_EQ(seenFrom(-1.9), "NLR");
  EXPECT_EQ(seenFrom(-2.1), "");
  settings.toleranceMm.reset();
  EXPECT_EQ(seenFrom(50.0), "NLR");
}

TEST_F(PaneFiducials, AreSwitchedWithTheSetsAndNeedARegisteredHead) {
  dipoles->setShowFiducialPt(0);
  EXPECT_EQ(seen(View::axial), "");
  dipoles->setShowFiducialPt(1);
  EXPECT_EQ(seen(View::axial), "NLR");
  head.isPhantom = true;
  EXPECT_EQ(seen(View::axial), "NLR");
  head.fiducials.reset();
  EXPECT_EQ(seen(View::axial), "");
}

TEST_F(PaneFiducials, DoNotCoverADipole) {
  put(place('N'));
  host::SlicePane pane = widePane(View::axial);
  EXPECT_EQ(count(pane.paint(contents()), orange), 81);
}

TEST_F(PaneFiducials, PlacedOnesAreOpenCrossesOnAnyHead) {
  head.fiducials.reset();
  crosshair = {20, 0, 30};
  host::SlicePane pane = paneOf(View::axial);
  const Image without = pane.paint(contents());
  marks[1] = crosshair;
  const Image with = pane.paint(contents());
  const PixelPoint at = pane.pixelOf(crosshair).value();
  EXPECT_EQ(inkOf(without, 'L'), 0);
  for (const auto& [columns, rows] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
    const host::Rgb arm = with.pixel(at.column + 6 * columns, at.row + 6 * rows);
    EXPECT_EQ(arm, host::fiducialColour('L')) << columns << " " << rows;
    EXPECT_NE(with.pixel(at.column + 4 * (columns + rows), at.row + 4 * (rows - columns)),
              host::fiducialColour('L'));
  }
  EXPECT_EQ(with.pixel(at.column, at.row), without.pixel(at.column, at.row));
  const Image letter = with.cropped({at.column + 6, at.row - 30, at.column + 26, at.row - 7});
  EXPECT_GT(drawnWhere(letter, [](const host::Rgb& pixel) { return pixel.blue > pixel.red + 80; }).pixels, 10)
      << "the letter";
  dipoles->setShowFiducialPt(0);
  EXPECT_EQ(seen(View::axial), "L");  // what the user is about to do is no part of the set
  crosshair.y = 5.1;
  EXPECT_EQ(seen(View::axial), "");
}

TEST_F(PaneFiducials, PlacesBeyondThePictureAreLeftOut) {
  head.fiducials.reset();
  settings.toleranceMm.reset();
  for (const double mm : {400.0, 1e9, notANumber, std::numeric_limits<double>::infinity()}) {
    marks = {Vector3{mm, 0, 0}, Vector3{0, mm, mm}, Vector3{0, 0, mm}};
    EXPECT_EQ(seen(View::axial), "") << mm;
    host::ScenePane pane = scenePane();
    const Image& image = pane.paint(contents());
    EXPECT_EQ(inkOf(image, 'N') + inkOf(image, 'L'), 0) << mm;
  }
}

TEST_F(PaneFiducials, In3DARegisteredHeadShowsItsOwnAndAnotherTheSets) {
  const Vector3 other{0, 60, 0};
  dipoles->m_fiducialCtf.setNasionf(0, 60, 0);
  crosshair = {0, 0, -60};  // no slice before them
  host::ScenePane pane = scenePane();
  const Image registered = pane.paint(contents());
  for (const char letter : letters) {
    EXPECT_GT(inkAt(registered, pixelIn(pane, place(letter)), letter), 10) << letter;
  }
  EXPECT_EQ(inkAt(registered, pixelIn(pane, other), 'N'), 0);
  dipoles->setShowFiducialPt(0);
  EXPECT_EQ(inkOf(pane.paint(contents()), 'N'), 0);
  dipoles->setShowFiducialPt(1);
  head.fiducials.reset();
  const Image unregistered = pane.paint(contents());
  EXPECT_GT(inkAt(unregistered, pixelIn(pane, other), 'N'), 10);
  EXPECT_EQ(inkAt(unregistered, pixelIn(pane, place('N')), 'N'), 0);
  EXPECT_EQ(inkOf(unregistered, 'L'), 0);
}

TEST_F(PaneFiducials, In3DPlacedOnesStandWhereTheHeadDoes) {
  dipoles->setShowFiducialPt(0);
  crosshair = {0, 0, -60};
  marks[2] = Vector3{-50, 20, 10};
  host::ScenePane pane = scenePane();
  const Image& shown = pane.paint(contents());
  EXPECT_GT(inkAt(shown, pixelIn(pane, *marks[2]), 'R'), 10);
  head.fiducials.reset();
  EXPECT_GT(inkOf(pane.paint(contents()), 'R'), 10) << "nothing could lie wrong";
  put({0, 0, 0});
  EXPECT_EQ(inkOf(pane.paint(contents()), 'R'), 0) << "dipoles of another frame";
}
