// What can be seen can be picked, and only that; nothing a set may hold makes the painter fail or stall.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <random>

#include "host/picture/ScenePainter.h"
#include "tests/host/head/Phantom.h"
#include "tests/host/paint/SceneShapes.h"

namespace {

using host::DepthPicture;
using host::DipoleScene;
using host::Rgb;
using host::SceneCamera;
using host::ScenePainter;
using host::SceneStyle;
using host::Vector3;

using Dipoles = CDipoleFace8Import01_CTF;

constexpr double endless = std::numeric_limits<double>::infinity();

DipoleScene sceneWith(const std::vector<Vector3>& places) {
  DipoleScene scene;
  for (const Vector3& place : places) {
    scene.dipoles.push_back({static_cast<int>(scene.dipoles.size()), place, {230, 0, 0}, {}});
  }
  return scene;
}

DepthPicture paint(const DipoleScene& scene, const SceneCamera& camera, const SceneStyle& style = {},
                   const std::vector<host::SlicePlane>& planes = {}) {
  DepthPicture picture(camera.width(), camera.height(), {});
  ScenePainter().paint(picture, scene, planes, camera, style);
  return picture;
}

bool isDrawn(const Rgb& pixel) {
  return pixel != SceneStyle().background;
}

// The nearest ball under a pixel, by lines of sight; its depth when asked for.
int slotUnder(const DipoleScene& scene, const SceneCamera& camera, double radius, int column, int row,
              double& depth) {
  depth = endless;
  int slot = -1;
  for (const host::SceneDipole& dipole : scene.dipoles) {
    const double at = depthOfBall(camera, dipole.place, radius, column, row);
    if (at < depth) {
      depth = at;
      slot = dipole.slot;
    }
  }
  return slot;
}

// Dipoles, standpoint and scale by chance; the same in every run.
struct Chance {
  explicit Chance(unsigned seed) : random(seed) {}
  double operator()(double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
  }

  std::mt19937 random;
};

DipoleScene randomScene(Chance& chance, int count) {
  std::vector<Vector3> places;
  places.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    places.push_back({chance(-60, 60), chance(-60, 60), chance(-60, 60)});
  }
  return sceneWith(places);
}

}  // namespace

TEST(PickDipole, AgreesWithLinesOfSightInAThousandScenes) {
  Chance chance(17);
  int hits = 0;
  for (int round = 0; round < 1000; ++round) {
    const DipoleScene scene = randomScene(chance, 60);
    SceneCamera camera(200, 200);
    camera.lookFrom({chance(-180, 180), chance(-90, 90)});
    camera.setScale(chance(0.3, 6.0));
    camera.pan(chance(-40, 40), chance(-40, 40));
    SceneStyle style;
    style.ballRadius = chance(0.5, 12.0);
    const double radius = (std::max)(style.ballRadius, 1.5 / camera.scale());
    for (int i = 0; i < 20; ++i) {
      const int column = static_cast<int>(chance(0, 200));
      const int row = static_cast<int>(chance(0, 200));
      double depth = endless;
      const int expected = slotUnder(scene, camera, radius, column, row, depth);
      ASSERT_EQ(pickDipole(scene, {}, camera, style, column, row), expected) << round;
      hits += expected >= 0 ? 1 : 0;
    }
  }
  EXPECT_GT(hits, 3000);
  EXPECT_LT(hits, 17000);
}

TEST(PickDipole, IsWhatThePainterDraws) {
  Chance chance(23);
  for (int round = 0; round < 6; ++round) {
    DipoleScene scene = randomScene(chance, 700);  // more than the painter's first summary
    for (host::SceneDipole& dipole : scene.dipoles) {
      dipole.colour = dipole.slot % 2 == 0 ? Rgb{230, 0, 0} : Rgb{0, 0, 230};
    }
    SceneCamera camera(120, 120);
    camera.lookFrom({chance(-180, 180), chance(-90, 90)});
    camera.setScale(chance(0.5, 4.0));
    SceneStyle style;
    style.ballRadius = chance(2.0, 20.0);
    style.fade = 0.0;
    const DepthPicture picture = paint(scene, camera, style);
    for (int row = 0; row < 120; ++row) {
      for (int column = 0; column < 120; ++column) {
        const int slot = pickDipole(scene, {}, camera, style, column, row);
        const Rgb pixel = picture.image().pixel(column, row);
        ASSERT_EQ(isDrawn(pixel), slot >= 0);
        if (slot >= 0) {
          ASSERT_EQ(pixel.red >= pixel.blue, slot % 2 == 0) << column << ' ' << row;
        }
      }
    }
  }
}

TEST(PickDipole, NothingWhereNothingIsAndTheLowestOfEquals) {
  const DipoleScene scene = sceneWith({{30, 0, 0}, {0, 0, 0}, {0, 0, 0}});
  const SceneCamera camera(100, 100);
  EXPECT_EQ(pickDipole(scene, {}, camera, {}, 50, 50), 1);
  EXPECT_EQ(pickDipole(scene, {}, camera, {}, 50, 70), -1);
  EXPECT_EQ(pickDipole(scene, {}, camera, {}, -20, 500), -1);
  EXPECT_EQ(pickDipole({}, {}, camera, {}, 50, 50), -1);
}

TEST(PickDipole, TheNearerOneFromEitherSide) {
  const DipoleScene scene = sceneWith({{0, 0, -30}, {0, 0, 30}});
  SceneCamera camera(100, 100);
  EXPECT_EQ(pickDipole(scene, {}, camera, {}, 50, 50), 1);
  camera.lookFrom(host::Standpoint::back);
  EXPECT_EQ(pickDipole(scene, {}, camera, {}, 50, 50), 0);
}

TEST(PickDipole, NotThroughASlice) {
  const host::HeadFrame frame = tiltedFrame();
  const host::Volume head = phantom(frame, {30, 0, 0});
  std::vector<host::SlicePlane> planes;
  planes.emplace_back(head, frame, findHead(head, frame), host::View::coronal, 0.0);
  const DipoleScene scene = sceneWith({{0, 0, -30}, {0, 0, 30}, {90, 0, -30}});
  SceneCamera camera(400, 400);
  EXPECT_EQ(pickDipole(scene, planes, camera, {}, 200, 200), 1);
  EXPECT_TRUE(isBehindSlice(scene.dipoles[0], planes, camera, {}));
  EXPECT_FALSE(isBehindSlice(scene.dipoles[1], planes, camera, {}));
  EXPECT_FALSE(isBehindSlice(scene.dipoles[2], planes, camera, {})) << "only air stands before it";
  EXPECT_EQ(pickDipole(scene, planes, camera, {}, 380, 200), 2);
  const DipoleScene behind = sceneWith({{0, 0, -30}});
  EXPECT_EQ(pickDipole(behind, planes, camera, {}, 200, 200), -1);
  camera.lookFrom(host::Standpoint::back);
  EXPECT_EQ(pickDipole(behind, planes, camera, {}, 200, 200), 0);
}

TEST(ScenePainter, TheOrderOfTheSlotsDoesNotMatter) {
  Chance chance(29);
  DipoleScene scene = randomScene(chance, 1500);
  for (host::SceneDipole& dipole : scene.dipoles) {
    dipole.colour = {static_cast<std::uint8_t>(chance(0, 255)), static_cast<std::uint8_t>(chance(0, 255)),
                     90};
    dipole.arrow = {chance(-20, 20), chance(-20, 20), chance(-20, 20)};
  }
  SceneCamera camera(200, 200);
  camera.lookFrom({25, 35});
  const DepthPicture one = paint(scene, camera);
  std::reverse(scene.dipoles.begin(), scene.dipoles.end());
  const DepthPicture other = paint(scene, camera);
  EXPECT_EQ(one.image().pixels(), other.image().pixels());
}

TEST(ScenePainter, FartherDipolesFadeButKeepTheirColour) {
  const DipoleScene scene = sceneWith({{-20, 0, 80}, {20, 0, -80}});
  const SceneCamera camera(100, 60);
  const DepthPicture picture = paint(scene, camera);
  const Rgb nearer = picture.image().pixel(10, 30);
  const Rgb farther = picture.image().pixel(90, 30);
  EXPECT_TRUE(isReddish(nearer));
  EXPECT_TRUE(isReddish(farther));
  EXPECT_GT(nearer.red, farther.red + 30);
}

TEST(ScenePainter, ArrowsCanBeSwitchedOff) {
  DipoleScene scene = sceneWith({{0, 0, 0}});
  scene.dipoles[0].arrow = {0, 30, 0};
  const SceneCamera camera(100, 100);
  SceneStyle style;
  const int with = drawnWhere(paint(scene, camera, style).image(), isDrawn).pixels;
  style.showArrows = false;
  const int without = drawnWhere(paint(scene, camera, style).image(), isDrawn).pixels;
  EXPECT_NEAR(without, 3.14159 * 25, 5);
  EXPECT_GT(with, without + 60);
}

TEST(ScenePainter, FiducialsAreCirclesOfTheirColours) {
  DipoleScene scene;
  scene.fiducials = {{'N', {0, 0, 0}}, {'L', {40, 0, 0}}, {'R', {-40, 0, 0}}};
  const SceneCamera camera(200, 200);
  const DepthPicture picture = paint(scene, camera);
  const auto beside = [&](int column) { return picture.image().pixel(column + 7, 99); };
  EXPECT_EQ(beside(100), host::fiducialColour('N'));
  EXPECT_EQ(beside(180), host::fiducialColour('L')) << "the left ear is on the right";
  EXPECT_EQ(beside(20), host::fiducialColour('R'));
}

TEST(ScenePainter, AFiducialHidesNoDipole) {
  DipoleScene scene = sceneWith({{0, 0, -30}});
  scene.fiducials = {{'N', {0, 0, 90}}};
  const SceneCamera camera(100, 100);
  EXPECT_GT(drawnWhere(paint(scene, camera).image(), isReddish).pixels, 60);
}

TEST(ScenePainter, TheNearerFiducialIsOverTheFarther) {
  DipoleScene scene;
  scene.fiducials = {{'L', {75, 0, 0}}, {'R', {-75, 0, 0}}};
  SceneCamera camera(100, 100);
  camera.lookFrom(host::Standpoint::left);
  EXPECT_EQ(paint(scene, camera).image().pixel(57, 49), host::fiducialColour('L'));
  camera.lookFrom(host::Standpoint::right);
  EXPECT_EQ(paint(scene, camera).image().pixel(57, 49), host::fiducialColour('R'));
}

TEST(ScenePainter, TheSphereIsDrawnAroundItsCentre) {
  DipoleScene scene;
  const SceneCamera camera(200, 200);
  scene.sphere = host::SceneSphere{{10, 5, 0}, 30};
  const Drawn drawn = drawnWhere(paint(scene, camera).image(), isDrawn);
  EXPECT_GT(drawn.pixels, 300);
  EXPECT_NEAR(drawn.column, 120.0, 1.0);
  EXPECT_NEAR(drawn.row, 90.0, 1.0);
  SceneStyle style;
  style.showSphere = false;
  EXPECT_EQ(drawnWhere(paint(scene, camera, style).image(), isDrawn).pixels, 0);
}

TEST(ScenePainter, NoDipoleFallsBetweenThePixels) {
  Chance chance(31);
  SceneCamera camera(50, 50);
  camera.setScale(0.05);
  for (int round = 0; round < 200; ++round) {
    const DipoleScene scene = sceneWith({{chance(-400, 400), chance(-400, 400), chance(-400, 400)}});
    ASSERT_GE(drawnWhere(paint(scene, camera).image(), isDrawn).pixels, 4);
  }
}

TEST(ScenePainter, AnEmptySceneIsBackground) {
  EXPECT_EQ(drawnWhere(paint({}, SceneCamera(60, 40)).image(), isDrawn).pixels, 0);
  EXPECT_EQ(paint({}, SceneCamera(0, 0)).image().width(), 0);
}

TEST(ScenePainter, AFullSetOfTheWorstValuesIsDrawnInEveryView) {
  const auto dipoles = std::make_unique<Dipoles>();
  const double values[] = {std::nan(""), endless, -endless, 1e308, -1e308, 1e5, -1e5, 0.0, 5.0, 4.9e-324};
  Chance chance(37);
  const auto value = [&] { return values[static_cast<int>(chance(0, 10)) % 10]; };
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    dipoles->addDipoleF(0, 0, 0);
    CDipoleszq& dipole = *dipoles->getDipole(i);
    for (int axis = 0; axis < 3; ++axis) {
      dipole.m_location[axis] = value();
      dipole.m_orientation[axis] = value();
    }
    dipole.m_orientationLength = value();
  }
  const DipoleScene scene = host::sceneOf(*dipoles);
  EXPECT_EQ(scene.nowhere + static_cast<int>(scene.dipoles.size()), int{DipoleTable::capacity});
  EXPECT_GT(scene.dipoles.size(), 1000U);
  for (const double scale : {0.05, 2.0, 20.0}) {
    for (const host::Standpoint standpoint : host::allStandpoints) {
      SceneCamera camera(160, 120);
      camera.lookFrom(standpoint);
      camera.setScale(scale);
      EXPECT_GT(drawnWhere(paint(scene, camera).image(), isDrawn).pixels, 0);
      EXPECT_GE(pickDipole(scene, {}, camera, {}, 80, 59), 0);
    }
  }
}

TEST(ScenePainter, AFullSetInOnePlaceIsOneBall) {
  const auto dipoles = std::make_unique<Dipoles>();
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    dipoles->addDipoleF(1, 2, 3);
  }
  dipoles->setShowDipoleOrientationAll(0);
  SceneCamera camera(300, 300);
  camera.setCentre({1, 2, 3});
  camera.setScale(20.0);
  const Drawn drawn = drawnWhere(paint(host::sceneOf(*dipoles), camera).image(), isDrawn);
  EXPECT_NEAR(drawn.pixels, 3.14159 * 50 * 50, 60);
  EXPECT_NEAR(drawn.column, 150.0, 0.1);
}
