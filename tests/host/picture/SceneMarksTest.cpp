// The letters at the edges name the patient's sides in every view, and names stand only at what is seen.
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "host/paint/PictureText.h"
#include "host/picture/PictureMarks.h"
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
bool standsAt(const Image& image, const std::string& text, int left, int top) {
  const host::StrokeFont& font = host::letterFont();
  Image pattern(font.width(text), font.lineHeight(), black);
  font.draw(pattern, 0, 0, text, host::letterInk);
  for (int row = 0; row < pattern.height(); ++row) {
    for (int column = 0; column < pattern.width(); ++column) {
      if (pattern.pixel(column, row) != image.pixel(left + column, top + row)) {
        return false;
      }
    }
  }
  return true;
}

}  // namespace

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
    const host::StrokeFont font = host::letterFont();
    const int middle = (300 - font.lineHeight()) / 2;
    const int right = 400 - host::markMargin - font.width(letters.right);
    const auto centred = [&](const char* text) { return (400 - font.width(text)) / 2; };
    EXPECT_TRUE(standsAt(image, letters.left, host::markMargin, middle)) << nameOf(standpoint);
    EXPECT_TRUE(standsAt(image, letters.right, right, middle)) << nameOf(standpoint);
    EXPECT_TRUE(standsAt(image, letters.top, centred(letters.top), host::markMargin)) << nameOf(standpoint);
    EXPECT_TRUE(
        standsAt(image, letters.bottom, centred(letters.bottom), 300 - host::markMargin - font.lineHeight()))
        << nameOf(standpoint);
    EXPECT_FALSE(standsAt(image, letters.left, right, middle)) << nameOf(standpoint);
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
    for (int row = 100; row < 160; ++row) {  // the axes' letters have the same colours, farther down
      for (int column = 150; column < 250; ++column) {
        count += image.pixel(column, row) == colour ? 1 : 0;
      }
    }
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
