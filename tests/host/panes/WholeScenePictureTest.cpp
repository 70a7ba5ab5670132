// In a finished 3D picture a dipole of the patient's left is on the side that carries the letter L, and
// nothing is hidden without a word.
#include <cmath>
#include <stdexcept>
#include <string>

#include "host/head/HeadFile.h"
#include "host/panes/ShownDipoles.h"
#include "tests/host/panes/PictureFixture.h"

namespace {

using host::Image;
using host::Rgb;
using host::Standpoint;
using host::Vector3;

struct WholeScenePicture : PictureFixture {
  WholeScenePicture() { settings.ballRadius = 5.0; }

  void pair(const Vector3& red, const Vector3& blue) {
    dipoles->cleanDipoles();
    put(red, RGB(255, 0, 0));
    put(blue, RGB(0, 0, 255));
  }

  host::DipolePicture draw(const host::ViewAngles& angles,
                           const std::vector<host::SliceRequest>& slices = {}) const {
    return host::scenePicture(contents(), angles, slices, 0.5, {});
  }

  static double away(const Place& letter, const Drawn& drawn) {
    return std::hypot(letter.column - drawn.column, letter.row - drawn.row);
  }

  // Red towards the one letter, blue towards the other.
  static void expectBetween(const Image& image, char one, char other, const std::string& what) {
    const Drawn red = drawnWhere(image, isReddish);
    const Drawn blue = drawnWhere(image, isBluish);
    const Place first = letterPlace(image, one);
    const Place second = letterPlace(image, other);
    ASSERT_GT(red.pixels, 100) << what;
    ASSERT_GT(blue.pixels, 100) << what;
    ASSERT_GE(first.column, 0.0) << what << ": no " << one;
    ASSERT_GE(second.column, 0.0) << what << ": no " << other;
    EXPECT_LT(away(first, red) + 40.0, away(first, blue)) << what;
    EXPECT_LT(away(second, blue) + 40.0, away(second, red)) << what;
  }
};

}  // namespace

TEST_F(WholeScenePicture, DipolesAreOnTheSidesOfTheirLettersInEveryView) {
  struct Axis {
    Vector3 positive;
    char letter;
    char opposite;
  };
  const Axis axes[] = {{{40, 0, 0}, 'L', 'R'}, {{0, 40, 0}, 'S', 'I'}, {{0, 0, 40}, 'A', 'P'}};
  const host::Head known = head;
  dipoles->setShowFiducialPt(0);  // their colours are red and blue
  int checked = 0;
  for (const bool withHead : {false, true}) {
    for (const Standpoint standpoint : host::allStandpoints) {
      head = withHead ? known : host::noHead();
      host::SceneCamera camera(1, 1);
      camera.lookFrom(standpoint);
      crosshair = camera.toViewer() * -50.0;  // behind all dipoles
      for (const Axis& axis : axes) {
        if (std::abs(dot(axis.positive, camera.toViewer())) > 1.0) {
          continue;  // along the line of sight
        }
        const Vector3 aside{7, 9, 5};  // so that nothing is symmetrical
        pair(axis.positive + aside, axis.positive * -1.0 + aside);
        expectBetween(draw(anglesOf(standpoint)).image, axis.letter, axis.opposite,
                      std::string(nameOf(standpoint)) + (withHead ? " with head" : ""));
        ++checked;
      }
    }
  }
  EXPECT_EQ(checked, 24);
}

TEST_F(WholeScenePicture, LengthsAreAsThePixelsSay) {
  head = host::noHead();
  pair({40, 5, 3}, {-40, 5, 3});
  const Image image = draw({}).image;
  EXPECT_NEAR(drawnWhere(image, isReddish).column - drawnWhere(image, isBluish).column, 160.0, 1.5)
      << "80 mm of 0.5 mm each";
}

TEST_F(WholeScenePicture, TheNearerDipoleIsOnTheViewersSide) {
  head = host::noHead();
  pair({40, 0, 0}, {-40, 0, 0});
  EXPECT_GT(drawnWhere(draw(anglesOf(Standpoint::left)).image, isReddish).pixels, 200);
  EXPECT_EQ(drawnWhere(draw(anglesOf(Standpoint::left)).image, isBluish).pixels, 0);
  EXPECT_EQ(drawnWhere(draw(anglesOf(Standpoint::right)).image, isReddish).pixels, 0);
}

TEST_F(WholeScenePicture, WhatIsBehindASliceShinesThroughAndIsCounted) {
  dipoles->setShowFiducialPt(0);
  pair({30, 5, 0}, {-30, 25, 20});
  const std::vector<host::SliceRequest> middle{{host::View::sagittal, 0.0}};
  const host::DipolePicture left = draw(anglesOf(Standpoint::left), middle);
  EXPECT_EQ(left.panes.at(0).lines.at(0).text, "dipoles: 2 of 2");
  EXPECT_EQ(left.panes.at(0).lines.at(1).text, "1 dipole behind a slice, seen through it");
  EXPECT_GT(drawnWhere(left.image, isReddish).pixels, 200);
  const auto tinged = [](const Image& image) {
    return drawnWhere(image, [](const Rgb& pixel) { return pixel.blue > pixel.red + 40; }).pixels;
  };
  EXPECT_GT(tinged(left.image), 200);
  dipoles->getDipole(1)->m_show = 0;
  EXPECT_LT(tinged(draw(anglesOf(Standpoint::left), middle).image), 100) << "but for marks";
}

TEST_F(WholeScenePicture, CountsWhatItLeavesOut) {
  pair({30, 0, 0}, {-30, 0, 0});
  for (int i = 0; i < 4; ++i) {
    put({0, 0, 0});
  }
  dipoles->getDipole(2)->m_show = 0;
  dipoles->getDipole(3)->m_location[1] = std::nan("");
  dipoles->getDipole(4)->m_location[0] = 5000.0;
  dipoles->getDipole(5)->m_display = 2;
  const host::DipolePicture picture = draw({});
  const host::PaneTexts& texts = picture.panes.at(0);
  EXPECT_EQ(texts.lines.at(0).text, "dipoles: 3 of 6");
  EXPECT_EQ(texts.lines.at(1).text, "2 switched off");
  ASSERT_EQ(texts.warnings.size(), 2U);
  EXPECT_EQ(texts.warnings[0].text, "1 dipole beyond the borders of this view");
  EXPECT_EQ(texts.warnings[1].text, "1 dipole without a valid location");
  EXPECT_LT(picture.image.width(), 1000);
}

TEST_F(WholeScenePicture, AnEmptySetIsAPictureToo) {
  EXPECT_EQ(draw({}).panes.at(0).lines.at(0).text, "dipoles: 0 of 0");
  EXPECT_GT(draw({}).image.width(), 200);
  head = host::noHead();
  EXPECT_GT(draw({}).image.width(), 200);
  EXPECT_TRUE(draw({}).panes.at(0).warnings.empty()) << "there is no MRI that could be registered";
}

TEST_F(WholeScenePicture, WhatIsWrongStandsInThePicture) {
  host::PageTexts texts;
  texts.wrong = {"the unit is not known"};
  EXPECT_EQ(host::scenePicture(contents(), {}, {}, 0.5, texts).image.pixel(0, 0), (Rgb{168, 24, 32}));
}

TEST_F(WholeScenePicture, RefusesPixelsOutOfRange) {
  for (const double bad : {0.0, 0.09, 5.1, std::nan("")}) {
    EXPECT_THROW((void)host::scenePicture(contents(), {}, {}, bad, {}), std::invalid_argument);
  }
}

TEST_F(WholeScenePicture, IsSeenFromTheSideWhereTheDipolesLie) {
  const auto sideOf = [&](const Vector3& place) {
    dipoles->cleanDipoles();
    put(place);
    return host::sideOfDipoles(contents());
  };
  const auto isFrom = [](const host::ViewAngles& angles, Standpoint standpoint) {
    return angles.yaw == anglesOf(standpoint).yaw && angles.pitch == anglesOf(standpoint).pitch;
  };
  EXPECT_TRUE(isFrom(sideOf({45, 10, 20}), Standpoint::left));
  EXPECT_TRUE(isFrom(sideOf({-45, 10, 20}), Standpoint::right));
  EXPECT_TRUE(isFrom(sideOf({10, 10, 45}), Standpoint::front));
  EXPECT_TRUE(isFrom(sideOf({10, 10, -45}), Standpoint::back));
  EXPECT_EQ(sideOf({3, 40, 3}).yaw, 35.0);
  put({-3, 40, -3}).m_show = 0;
  EXPECT_EQ(host::sideOfDipoles(contents()).yaw, 35.0);
}
