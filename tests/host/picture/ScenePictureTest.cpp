// In the finished picture a dipole of the patient's left is on the side that carries the letter L.
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/paint/PictureText.h"
#include "host/picture/ScenePicture.h"
#include "tests/host/head/Phantom.h"
#include "tests/host/paint/SceneShapes.h"

namespace {

using host::Image;
using host::Rgb;
using host::ScenePicture;
using host::Standpoint;
using host::Vector3;

using Dipoles = CDipoleFace8Import01_CTF;

struct Head {
  host::HeadFrame frame = tiltedFrame();
  host::Volume volume = phantom(frame, {30, 20, 10});
  [[nodiscard]] host::SceneHead scene() const { return {volume, frame}; }
};
const Head& head() {
  static const Head made;
  return made;
}

// A red and a blue dipole without arrows.
std::unique_ptr<Dipoles> pair(const Vector3& red, const Vector3& blue) {
  auto dipoles = std::make_unique<Dipoles>();
  for (const Vector3& place : {red, blue})
    dipoles->addDipoleF(static_cast<float>(place.x), static_cast<float>(place.y),
                        static_cast<float>(place.z));
  dipoles->setDipoleColor(0, RGB(255, 0, 0));
  dipoles->setDipoleColor(1, RGB(0, 0, 255));
  dipoles->setShowDipoleOrientationAll(0);
  return dipoles;
}

ScenePicture draw(const Dipoles& dipoles, const host::ViewAngles& angles, bool withHead,
                  std::vector<host::SliceRequest> slices = {}) {
  host::ScenePictureOptions options;
  options.angles = angles;
  options.slices = std::move(slices);
  options.style.showCurrent = false;
  options.style.ballRadius = 5.0;
  return host::drawScene(dipoles, withHead ? std::optional(head().scene()) : std::nullopt, options);
}

// The middle of a side letter, found by its white strokes; the axes' letters are smaller and coloured.
struct Place {
  double column = -1.0;
  double row = -1.0;
};
Place letterPlace(const Image& image, char letter) {
  const std::string text(1, letter);
  Image pattern(host::letterFont().width(text), host::letterFont().lineHeight(), {});
  host::letterFont().draw(pattern, 0, 0, text, host::letterInk);
  for (int top = 0; top + pattern.height() <= image.height(); ++top)
    for (int left = 0; left + pattern.width() <= image.width(); ++left) {
      const auto same = [&] {
        for (int row = 0; row < pattern.height(); ++row)
          for (int column = 0; column < pattern.width(); ++column)
            if ((pattern.pixel(column, row) == host::letterInk) !=
                (image.pixel(left + column, top + row) == host::letterInk))
              return false;
        return true;
      };
      if (same())
        return {left + pattern.width() * 0.5, top + pattern.height() * 0.5};
    }
  return {};
}

double away(const Place& letter, const Drawn& drawn) {
  return std::hypot(letter.column - drawn.column, letter.row - drawn.row);
}

// Red towards the one letter, blue towards the other.
void expectBetween(const Image& image, char one, char other, const std::string& what) {
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

}  // namespace

TEST(ScenePicture, DipolesAreOnTheSidesOfTheirLettersInEveryView) {
  struct Axis {
    Vector3 positive;
    char letter;
    char opposite;
  };
  const Axis axes[] = {{{40, 0, 0}, 'L', 'R'}, {{0, 40, 0}, 'S', 'I'}, {{0, 0, 40}, 'A', 'P'}};
  int checked = 0;
  for (const bool withHead : {false, true})
    for (const Standpoint standpoint : host::allStandpoints) {
      host::SceneCamera camera(1, 1);
      camera.lookFrom(standpoint);
      for (const Axis& axis : axes) {
        if (std::abs(dot(axis.positive, camera.toViewer())) > 1.0)
          continue;                    // along the line of sight
        const Vector3 aside{7, 9, 5};  // so that nothing is symmetrical
        const auto dipoles = pair(axis.positive + aside, axis.positive * -1.0 + aside);
        const ScenePicture picture = draw(*dipoles, anglesOf(standpoint), withHead);
        expectBetween(picture.image, axis.letter, axis.opposite,
                      std::string(nameOf(standpoint)) + (withHead ? " with head" : ""));
        ++checked;
      }
    }
  EXPECT_EQ(checked, 24);
}

TEST(ScenePicture, AnglesBetweenTheStandardViewsKeepTheSides) {
  const auto dipoles = pair({40, 5, 3}, {-40, 5, 3});
  for (const double yaw : {-14.0, 0.0, 14.0}) {
    const ScenePicture picture = draw(*dipoles, {yaw, 10.0}, true);
    expectBetween(picture.image, 'L', 'R', std::to_string(yaw));
  }
}

TEST(ScenePicture, TheNearerDipoleIsOnTheViewersSide) {
  const auto dipoles = pair({40, 0, 0}, {-40, 0, 0});
  EXPECT_GT(drawnWhere(draw(*dipoles, anglesOf(Standpoint::left), false).image, isReddish).pixels, 200);
  EXPECT_EQ(drawnWhere(draw(*dipoles, anglesOf(Standpoint::left), false).image, isBluish).pixels, 0);
  EXPECT_EQ(drawnWhere(draw(*dipoles, anglesOf(Standpoint::right), false).image, isReddish).pixels, 0);
  EXPECT_GT(drawnWhere(draw(*dipoles, anglesOf(Standpoint::right), false).image, isBluish).pixels, 200);
}

TEST(ScenePicture, LengthsAreAsThePixelsSay) {
  const auto dipoles = pair({40, 5, 3}, {-40, 5, 3});
  const ScenePicture picture = draw(*dipoles, {}, false);
  const double apart =
      drawnWhere(picture.image, isReddish).column - drawnWhere(picture.image, isBluish).column;
  EXPECT_NEAR(apart, 160.0, 1.5) << "80 mm of 0.5 mm each";
}

TEST(ScenePicture, SlicesOfItsOwnChoiceHideNoDipole) {
  const auto dipoles = pair({40, 10, 20}, {-35, -12, -25});
  for (const host::ViewAngles& angles :
       {host::ViewAngles{90, 0}, {-90, 0}, {0, 0}, {180, 0}, {180, 90}, {0, -90}, {40, 25}, {-130, -20}}) {
    const ScenePicture picture = draw(*dipoles, angles, true);
    EXPECT_EQ(picture.report.behindSlice, 0);
    EXPECT_EQ(picture.report.drawn, 2);
    EXPECT_TRUE(warningTexts(picture.report).empty());
    EXPECT_GT(drawnWhere(picture.image, isReddish).pixels, 100) << angles.yaw;
    EXPECT_GT(drawnWhere(picture.image, isBluish).pixels, 100) << angles.yaw;
  }
}

TEST(ScenePicture, TellsWhatAGivenSliceHides) {
  const auto dipoles = pair({30, 5, 0}, {-30, 0, 0});
  const std::vector<host::SliceRequest> middle{{host::View::sagittal, 0.0}};
  const ScenePicture left = draw(*dipoles, anglesOf(Standpoint::left), true, middle);
  EXPECT_EQ(left.report.behindSlice, 1);
  EXPECT_GT(drawnWhere(left.image, isReddish).pixels, 200);
  EXPECT_EQ(drawnWhere(left.image, isBluish).pixels, 0);
  const ScenePicture right = draw(*dipoles, anglesOf(Standpoint::right), true, middle);
  EXPECT_EQ(drawnWhere(right.image, isReddish).pixels, 0);
  EXPECT_GT(drawnWhere(right.image, isBluish).pixels, 200);
  EXPECT_EQ(warningTexts(left.report), std::vector<std::string>{"1 dipole hidden behind a slice"});
}

TEST(ScenePicture, CountsWhatItLeavesOut) {
  const auto dipoles = pair({30, 0, 0}, {-30, 0, 0});
  for (int i = 0; i < 3; ++i)
    dipoles->addDipoleF(0, 0, 0);
  dipoles->getDipole(2)->m_show = 0;
  dipoles->getDipole(3)->m_location[1] = std::nan("");
  dipoles->getDipole(4)->m_location[0] = 5000.0;
  const ScenePicture picture = draw(*dipoles, {}, true);
  EXPECT_EQ(countText(picture.report), "dipoles: 3 of 5");
  EXPECT_EQ(warningTexts(picture.report),
            (std::vector<std::string>{"1 dipole outside of the picture", "1 dipole switched off",
                                      "1 dipole without a valid location"}));
  EXPECT_LT(picture.image.width(), 1000);
}

TEST(ScenePicture, AnEmptySetIsAPictureToo) {
  const ScenePicture picture = draw(*std::make_unique<Dipoles>(), {}, true);
  EXPECT_EQ(countText(picture.report), "dipoles: 0 of 0");
  EXPECT_GT(picture.image.width(), 200);
  EXPECT_GT(draw(*std::make_unique<Dipoles>(), {}, false).image.width(), 200);
}

TEST(ScenePicture, RefusesNumbersOutOfRange) {
  const auto dipoles = pair({30, 0, 0}, {-30, 0, 0});
  for (const double bad : {0.0, 0.09, 5.1, std::nan("")}) {
    host::ScenePictureOptions options;
    options.mmPerPixel = bad;
    EXPECT_THROW((void)host::drawScene(*dipoles, std::nullopt, options), std::invalid_argument);
  }
  for (const double bad : {0.0, -1.0, 51.0, std::nan("")}) {
    host::ScenePictureOptions options;
    options.style.ballRadius = bad;
    EXPECT_THROW((void)host::drawScene(*dipoles, std::nullopt, options), std::invalid_argument);
  }
}
