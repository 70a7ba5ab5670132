// A scene shows exactly what the module counts as shown, where it is stored, and nothing that has no place.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <random>

#include "host/dipoles/DipoleScene.h"

namespace {

using host::DipoleScene;
using host::Rgb;

using Dipoles = CDipoleFace8Import01_CTF;

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

std::unique_ptr<Dipoles> threeDipoles() {
  auto dipoles = std::make_unique<Dipoles>();
  dipoles->addDipoleF(10, 20, 30);
  dipoles->addDipoleF(-10, 20, 30);
  dipoles->addDipoleF(0, 5, 60);
  return dipoles;
}

std::vector<int> slotsOf(const DipoleScene& scene) {
  std::vector<int> slots;
  for (const host::SceneDipole& dipole : scene.dipoles) {
    slots.push_back(dipole.slot);
  }
  return slots;
}

using Slots = std::vector<int>;

}  // namespace

TEST(DipoleScene, TakesStoredPlacesAndColours) {
  const auto dipoles = threeDipoles();
  dipoles->setDipoleColor(1, RGB(255, 128, 0));
  dipoles->setAllDipoleLocational(100, 100, 100);
  dipoles->setAllDipoleRotation(45, 45, 45);
  const DipoleScene scene = host::sceneOf(*dipoles);
  ASSERT_EQ(slotsOf(scene), (Slots{0, 1, 2}));
  EXPECT_EQ(scene.dipoles[1].place.x, -10.0);
  EXPECT_EQ(scene.dipoles[1].place.y, 20.0);
  EXPECT_EQ(scene.dipoles[1].place.z, 30.0);
  EXPECT_EQ(scene.dipoles[1].colour, (Rgb{255, 128, 0}));
  EXPECT_EQ(scene.total, 3);
  EXPECT_EQ(scene.shown, 3);
  EXPECT_EQ(scene.currentSlot, 2);
}

TEST(DipoleScene, ColoursThatAreNoneAreCut) {
  const auto dipoles = threeDipoles();
  float(&colour)[3] = dipoles->getDipole(0)->m_colorF;
  colour[0] = std::numeric_limits<float>::quiet_NaN();
  colour[1] = -3.0F;
  colour[2] = std::numeric_limits<float>::infinity();
  EXPECT_EQ(host::sceneOf(*dipoles).dipoles[0].colour, (Rgb{0, 0, 255}));
}

TEST(DipoleScene, HiddenDipolesStayAway) {
  const auto dipoles = threeDipoles();
  dipoles->getDipole(1)->m_show = 0;
  const DipoleScene scene = host::sceneOf(*dipoles);
  EXPECT_EQ(slotsOf(scene), (Slots{0, 2}));
  EXPECT_EQ(scene.switchedOff, 1);
}

TEST(DipoleScene, TheFlagForSlicesDoesNotCount) {
  const auto dipoles = threeDipoles();
  dipoles->getDipole(1)->m_display = 0;
  EXPECT_EQ(slotsOf(host::sceneOf(*dipoles)), (Slots{0, 1, 2}));
}

TEST(DipoleScene, NothingWhileTheSetIsSwitchedOff) {
  const auto dipoles = threeDipoles();
  dipoles->setShowDipoleArray(0);
  dipoles->setShowCurrentDipoleOnly(1);
  const DipoleScene scene = host::sceneOf(*dipoles);
  EXPECT_TRUE(scene.dipoles.empty());
  EXPECT_EQ(scene.switchedOff, 3);
  EXPECT_EQ(scene.currentSlot, -1);
}

TEST(DipoleScene, TheCurrentOneAloneEvenWhenItIsHidden) {
  const auto dipoles = threeDipoles();
  dipoles->setCurrentDipole(1);
  dipoles->getDipole(1)->m_show = 0;
  dipoles->setShowCurrentDipoleOnly(1);
  const DipoleScene scene = host::sceneOf(*dipoles);
  EXPECT_EQ(slotsOf(scene), Slots{1});
  EXPECT_EQ(scene.shown, dipoles->getTotalDipolesShowed());
  EXPECT_EQ(scene.switchedOff, 2);
}

TEST(DipoleScene, ShowsAsManyAsTheModuleCounts) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    const auto dipoles = std::make_unique<Dipoles>();
    const int count = static_cast<int>(random() % 20) + 1;
    for (int i = 0; i < count; ++i) {
      dipoles->addDipoleF(static_cast<float>(i), 0, 0);
      dipoles->getDipole(i)->m_show = static_cast<int>(random() % 3);
    }
    dipoles->setCurrentDipole(static_cast<int>(random() % 20));
    dipoles->setShowCurrentDipoleOnly(random() % 4 == 0);
    dipoles->setShowDipoleArray(random() % 4 != 0);
    const DipoleScene scene = host::sceneOf(*dipoles);
    EXPECT_EQ(scene.shown, dipoles->getTotalDipolesShowed());
    EXPECT_EQ(static_cast<int>(scene.dipoles.size()), scene.shown);
    EXPECT_EQ(scene.shown + scene.switchedOff, scene.total);
  }
}

TEST(DipoleScene, DipolesWithoutAPlaceAreCountedNotDrawn) {
  for (const double bad : {noNumber, infinite, -infinite, 1e300, -100'001.0}) {
    for (int axis = 0; axis < 3; ++axis) {
      const auto dipoles = threeDipoles();
      dipoles->getDipole(1)->m_location[axis] = bad;
      const DipoleScene scene = host::sceneOf(*dipoles);
      EXPECT_EQ(slotsOf(scene), (Slots{0, 2})) << bad;
      EXPECT_EQ(scene.nowhere, 1);
      EXPECT_EQ(scene.shown, 3);
    }
  }
}

TEST(DipoleScene, EmptySlotsAreNoDipoles) {
  const auto dipoles = threeDipoles();
  dipoles->deleteDipole(1, 0);
  const DipoleScene scene = host::sceneOf(*dipoles);
  EXPECT_EQ(slotsOf(scene), (Slots{0, 2}));
  EXPECT_EQ(scene.total, 2);
  EXPECT_EQ(host::findDipole(scene, 1), nullptr);
  ASSERT_NE(host::findDipole(scene, 2), nullptr);
  EXPECT_EQ(host::findDipole(scene, 2)->place.z, 60.0);
}

TEST(DipoleScene, AnEmptySetIsAnEmptyScene) {
  const DipoleScene scene = host::sceneOf(*std::make_unique<Dipoles>());
  EXPECT_TRUE(scene.dipoles.empty());
  EXPECT_TRUE(scene.fiducials.empty());
  EXPECT_FALSE(scene.sphere);
  EXPECT_EQ(scene.currentSlot, -1);
  EXPECT_EQ(scene.total, 0);
}

TEST(DipoleScene, ArrowsHaveTheirLengthAlongTheOrientation) {
  const auto dipoles = threeDipoles();
  dipoles->getDipole(0)->setDipoleOrientation(0, 3, -4);
  dipoles->getDipole(0)->m_orientationLength = 20.0;
  dipoles->getDipole(1)->setDipoleOrientation(1e-200, 0, 0);
  dipoles->getDipole(1)->m_orientationLength = 5000.0;
  const DipoleScene scene = host::sceneOf(*dipoles);
  EXPECT_NEAR(scene.dipoles[0].arrow.x, 0.0, 1e-12);
  EXPECT_NEAR(scene.dipoles[0].arrow.y, 12.0, 1e-12);
  EXPECT_NEAR(scene.dipoles[0].arrow.z, -16.0, 1e-12);
  EXPECT_NEAR(scene.dipoles[1].arrow.x, 1000.0, 1e-9);
}

TEST(DipoleScene, NoArrowWithoutADirectionALengthOrTheSwitch) {
  const auto arrowLength = [](const auto& change) {
    const auto dipoles = threeDipoles();
    change(*dipoles->getDipole(1));
    return length(host::sceneOf(*dipoles).dipoles.at(1).arrow);
  };
  EXPECT_NEAR(arrowLength([](CDipoleszq&) {}), 30.0, 1e-12);
  EXPECT_EQ(arrowLength([](CDipoleszq& d) { d.m_showOrientation = 0; }), 0.0);
  EXPECT_EQ(arrowLength([](CDipoleszq& d) { d.setDipoleOrientation(0, 0, 0); }), 0.0);
  for (const double bad : {noNumber, infinite, -infinite}) {
    EXPECT_EQ(arrowLength([bad](CDipoleszq& d) { d.setDipoleOrientation(1, bad, 0); }), 0.0);
  }
  for (const double bad : {noNumber, -infinite}) {
    EXPECT_EQ(arrowLength([bad](CDipoleszq& d) { d.m_orientationLength = bad; }), 0.0);
  }
  EXPECT_EQ(arrowLength([](CDipoleszq& d) { d.m_orientationLength = -30.0; }), 0.0);
}

TEST(DipoleScene, FiducialsThatAreSetAndSwitchedOn) {
  const auto dipoles = threeDipoles();
  dipoles->m_fiducialCtf.setNasionf(0, 1, 90);
  dipoles->m_fiducialCtf.setRightEarf(-75, 0, 2);
  DipoleScene scene = host::sceneOf(*dipoles);
  ASSERT_EQ(scene.fiducials.size(), 2U);
  EXPECT_EQ(scene.fiducials[0].letter, 'N');
  EXPECT_EQ(scene.fiducials[0].place.z, 90.0);
  EXPECT_EQ(scene.fiducials[1].letter, 'R');
  EXPECT_EQ(scene.fiducials[1].place.x, -75.0);
  dipoles->m_fiducialCtf.setLeftEarf(75, noNumber, 2);
  EXPECT_EQ(host::sceneOf(*dipoles).fiducials.size(), 2U);
  dipoles->m_fiducialCtf.setLeftEarf(75, 0, 2);
  scene = host::sceneOf(*dipoles);
  ASSERT_EQ(scene.fiducials.size(), 3U);
  EXPECT_EQ(scene.fiducials[1].letter, 'L');
  dipoles->setShowFiducialPt(0);
  EXPECT_TRUE(host::sceneOf(*dipoles).fiducials.empty());
}

TEST(DipoleScene, TheSphereOfTheFitElseOneAroundTheOrigin) {
  const auto dipoles = threeDipoles();
  dipoles->m_sphereLocational.m_radius = 70.0;
  dipoles->setAllDipoleLocational(9, 9, 9);  // a translation, no place of a sphere
  ASSERT_TRUE(host::sceneOf(*dipoles).sphere);
  EXPECT_EQ(host::sceneOf(*dipoles).sphere->radius, 70.0);
  EXPECT_EQ(length(host::sceneOf(*dipoles).sphere->centre), 0.0);
  dipoles->m_sphereCtf.m_radius = 85.0;
  dipoles->m_sphereCtf.m_center[1] = 50.0;
  EXPECT_EQ(host::sceneOf(*dipoles).sphere->radius, 85.0);
  EXPECT_EQ(host::sceneOf(*dipoles).sphere->centre.y, 50.0);
  dipoles->m_sphereCtf.m_center[1] = noNumber;
  EXPECT_EQ(host::sceneOf(*dipoles).sphere->radius, 70.0);
  for (const double bad : {noNumber, infinite, 0.0, -5.0}) {
    dipoles->m_sphereLocational.m_radius = bad;
    EXPECT_FALSE(host::sceneOf(*dipoles).sphere);
  }
}
