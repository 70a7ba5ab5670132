// The letters at the edges name the patient's sides in every view, and names stand only at what is seen.
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "host/paint/PictureText.h"
#include "host/picture/SceneMarks.h"
#include "tests/host/paint/SceneShapes.h"

namespace {

using host::Image;
using host::Rgb;
using host::SceneCamera;
using host::Standpoint;
using host::Vector3;

constexpr Rgb black{0, 0, 0};

Image marks(const host::DipoleScene& scene, const SceneCamera& camera, const host::SceneStyle& style = {}) {
  Image image(camera.width(), camera.height(), black);
  drawMarks(image, scene, {}, camera, style);
  return image;
}

// Whether the letters of the edges' font stand there, their white strokes pixel by pixel.
bool standsAt(const Image& image, const std::string& text, int centreX, int centreY) {
  const host::StrokeFont& font = host::letterFont();
  Image pattern(font.width(text), font.lineHeight(), black);
  font.draw(pattern, 0, 0, text, host::letterInk);
  const int left = centreX - font.width(text) / 2;
  const int top = centreY - font.lineHeight() / 2;
  for (int row = 0; row < pattern.height(); ++row)
    for (int column = 0; column < pattern.width(); ++column)
      if (pattern.pixel(column, row) != image.pixel(left + column, top + row))
        return false;
  return true;
}

}  // namespace

TEST(SidesOf, NamesTheClosestSideFirst) {
  EXPECT_EQ(host::sidesOf({1, 0, 0}), "L");
  EXPECT_EQ(host::sidesOf({-1, 0, 0}), "R");
  EXPECT_EQ(host::sidesOf({0, 1, 0}), "S");
  EXPECT_EQ(host::sidesOf({0, -1, 0}), "I");
  EXPECT_EQ(host::sidesOf({0, 0, 1}), "A");
  EXPECT_EQ(host::sidesOf({0, 0, -1}), "P");
  EXPECT_EQ(host::sidesOf({0.5, 0, -0.8}), "PL");
  EXPECT_EQ(host::sidesOf({0.6, -0.5, 0.4}), "LIA");
  EXPECT_EQ(host::sidesOf({10, 0, 2}), "L") << "11 degrees aside";
  EXPECT_EQ(host::sidesOf({0.70710678118, 0, -0.70710678119}), "LP") << "halfway: the same in every run";
}

TEST(DrawMarks, EveryStandpointHasItsSideLetters) {
  struct Letters {
    const char* left;
    const char* right;
    const char* top;
    const char* bottom;
  };
  const std::map<Standpoint, Letters> expected{
      {Standpoint::front, {"R", "L", "S", "I"}}, {Standpoint::back, {"L", "R", "S", "I"}},
      {Standpoint::left, {"A", "P", "S", "I"}},  {Standpoint::right, {"P", "A", "S", "I"}},
      {Standpoint::top, {"L", "R", "A", "P"}},   {Standpoint::bottom, {"R", "L", "A", "P"}}};
  for (const auto& [standpoint, letters] : expected) {
    SceneCamera camera(400, 300);
    camera.lookFrom(standpoint);
    const Image image = marks({}, camera);
    const auto beside = [](const char* text) { return 10 + host::letterFont().width(text) / 2.0; };
    const int leftX = static_cast<int>(std::lround(beside(letters.left)));
    const int rightX = static_cast<int>(std::lround(400 - beside(letters.right)));
    EXPECT_TRUE(standsAt(image, letters.left, leftX, 150)) << nameOf(standpoint);
    EXPECT_TRUE(standsAt(image, letters.right, rightX, 150)) << nameOf(standpoint);
    EXPECT_TRUE(standsAt(image, letters.top, 200, 23)) << nameOf(standpoint);
    EXPECT_TRUE(standsAt(image, letters.bottom, 200, 277)) << nameOf(standpoint);
    EXPECT_FALSE(standsAt(image, letters.left, rightX, 150)) << nameOf(standpoint);
  }
}

TEST(DrawMarks, TheCurrentDipoleHasARing) {
  host::DipoleScene scene;
  scene.dipoles = {{0, {-30, 0, 0}, {230, 0, 0}, {}}, {1, {30, 0, 0}, {230, 0, 0}, {}}};
  scene.currentSlot = 1;
  const SceneCamera camera(400, 300);
  // The ball's radius of 5 pixels, and 4 more; strokes meet there, so the colour is not exact.
  const auto greyAt = [&](int column, const host::SceneStyle& style = {}) {
    return static_cast<int>(marks(scene, camera, style).pixel(column, 150).green);
  };
  EXPECT_GT(greyAt(269), 240);
  EXPECT_EQ(greyAt(149), 0);
  host::SceneStyle style;
  style.showCurrent = false;
  EXPECT_EQ(greyAt(269, style), 0);
  scene.dipoles.push_back({2, {30, 0, 40}, {230, 0, 0}, {}});
  EXPECT_NEAR(greyAt(269), host::quietInk.green, 5) << "behind another dipole";
  scene.currentSlot = -1;
  EXPECT_EQ(greyAt(269), 0);
}

TEST(DrawMarks, NamesStandOnlyAtFiducialsThatAreSeen) {
  host::DipoleScene scene;
  scene.fiducials = {{'L', {75, 0, 0}}, {'R', {-75, 0, 0}}};
  SceneCamera camera(400, 300);
  camera.lookFrom(Standpoint::left);
  const auto coloured = [&](char letter) {
    const Rgb colour = host::fiducialColour(letter);
    const Image image = marks(scene, camera);
    int count = 0;
    for (int row = 100; row < 160; ++row)  // the axes' letters have the same colours, farther down
      for (int column = 150; column < 250; ++column)
        count += image.pixel(column, row) == colour ? 1 : 0;
    return count;
  };
  EXPECT_GT(coloured('L'), 5);
  EXPECT_EQ(coloured('R'), 0);
  camera.lookFrom(Standpoint::right);
  EXPECT_EQ(coloured('L'), 0);
  EXPECT_GT(coloured('R'), 5);
}

TEST(DrawMarks, FarAwayAndHugeIsNoTrouble) {
  host::DipoleScene scene;
  scene.dipoles = {{0, {99'000, -99'000, 5}, {230, 0, 0}, {}}};
  scene.currentSlot = 0;
  scene.fiducials = {{'N', {-99'000, 0, 0}}};
  SceneCamera camera(200, 200);
  camera.setScale(20.0);
  EXPECT_EQ(marks(scene, camera).width(), 200);
}

TEST(ViewText, NamesTheStandardViewsElseTheAngles) {
  EXPECT_EQ(host::viewText({90, 0}), "from the patient's left");
  EXPECT_EQ(host::viewText({270, 0}), "from the patient's right");
  EXPECT_EQ(host::viewText({0, 0}), "from the front");
  EXPECT_EQ(host::viewText({-180, 0}), "from the back");
  EXPECT_EQ(host::viewText({180, 90}), "from above");
  EXPECT_EQ(host::viewText({0, -90}), "from below");
  EXPECT_EQ(host::viewText({30, -12.5}), "yaw 30.0, pitch -12.5 degrees");
}

TEST(ScaleBarMm, IsTheLongestThatFits) {
  EXPECT_EQ(host::scaleBarMm(2.0, 100.0), 50.0);
  EXPECT_EQ(host::scaleBarMm(2.0, 99.0), 20.0);
  EXPECT_EQ(host::scaleBarMm(20.0, 39.0), 1.0);
  EXPECT_EQ(host::scaleBarMm(0.05, 100.0), 1000.0);
}
