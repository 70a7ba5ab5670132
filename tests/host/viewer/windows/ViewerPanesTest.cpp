// The panes on the screen: crosshair, wheel, keys, dragging, picking, one pane alone.
#include <cmath>
#include <gtest/gtest.h>

#include "tests/host/viewer/windows/ViewerUser.h"
#include "tests/support/ScriptedOperator.h"

namespace {

constexpr int axial = 0;
constexpr int coronal = 1;
constexpr int sagittal = 2;
constexpr int scene = 3;

class ViewerPanes : public testing::Test {
 protected:
  const host::Vector3& crosshair() { return m_user.session().crosshair(); }
  void addDipole(double x, double y, double z) {
    m_user.dipoles().addDipoleF(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    m_user.session().noteChange();
    m_user.wait();
  }
  bool differs(const host::Image& before, int pane) {
    const host::Image& now = m_user.frame().pane(pane).picture();
    return now.width() != before.width() || now.pixels() != before.pixels();
  }

  ScriptedOperator m_operator;
  ViewerUser m_user;
};

TEST_F(ViewerPanes, StartsWithAPhantomAndNoDipoles) {
  EXPECT_EQ(m_user.title(), "Untitled - Phantom - Dipole Viewer");
  EXPECT_EQ(m_user.status(host::MainFrame::countPart), "Dipoles shown: 0 of 0");
  EXPECT_EQ(m_user.status(host::MainFrame::dipolePart), "No current dipole");
  EXPECT_TRUE(m_operator.messages.empty());
  for (int pane = 0; pane < host::MainFrame::paneCount; ++pane) {
    EXPECT_TRUE(m_user.frame().pane(pane).IsWindowVisible()) << pane;
  }
}

TEST_F(ViewerPanes, WheelGoesToTheNextSliceOfItsPane) {
  const host::Vector3 before = crosshair();
  m_user.wheel(axial, 3);
  EXPECT_DOUBLE_EQ(crosshair().y, before.y + 3.0);
  m_user.wheel(coronal, -2);
  EXPECT_DOUBLE_EQ(crosshair().z, before.z - 2.0);
  m_user.wheel(sagittal, 1);
  EXPECT_DOUBLE_EQ(crosshair().x, before.x + 1.0);
}

TEST_F(ViewerPanes, WheelWithControlZoomsAndLeavesTheSlice) {
  const host::Vector3 before = crosshair();
  const host::Image picture = m_user.frame().pane(axial).picture();
  m_user.wheel(axial, 2, true);
  EXPECT_DOUBLE_EQ(crosshair().y, before.y);
  EXPECT_TRUE(differs(picture, axial));
  m_user.key(axial, VK_HOME);
  EXPECT_FALSE(differs(picture, axial));
}

TEST_F(ViewerPanes, WheelOfAPaneWithoutThePointerTurnsThePaneUnderIt) {
  const host::Vector3 before = crosshair();
  CPoint at = m_user.middleOf(coronal);
  m_user.frame().pane(coronal).ClientToScreen(&at);
  m_user.frame().pane(axial).SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), MAKELPARAM(at.x, at.y));
  m_user.wait();
  EXPECT_DOUBLE_EQ(crosshair().y, before.y);
  EXPECT_DOUBLE_EQ(crosshair().z, before.z + 1.0);
}

TEST_F(ViewerPanes, KeysMoveCrosshairAndSlice) {
  const host::Vector3 before = crosshair();
  m_user.key(axial, VK_RIGHT);  // the patient's left
  EXPECT_DOUBLE_EQ(crosshair().x, before.x + 1.0);
  m_user.key(axial, VK_UP);  // the front
  EXPECT_DOUBLE_EQ(crosshair().z, before.z + 1.0);
  m_user.key(axial, VK_PRIOR);
  EXPECT_DOUBLE_EQ(crosshair().y, before.y + 1.0);
  m_user.key(sagittal, VK_LEFT);  // the back
  EXPECT_DOUBLE_EQ(crosshair().z, before.z);
  m_user.key(coronal, VK_DOWN);
  EXPECT_DOUBLE_EQ(crosshair().y, before.y);
}

TEST_F(ViewerPanes, PressAndDragCarryTheCrosshairIntoTheOtherPanes) {
  const CPoint middle = m_user.middleOf(axial);
  m_user.press(axial, middle);
  const host::Vector3 there = crosshair();
  m_user.drag(axial, middle, CPoint(static_cast<int>(middle.x) + 40, static_cast<int>(middle.y) + 30));
  EXPECT_GT(crosshair().x, there.x + 5.0);  // to the right of the picture: the patient's left
  EXPECT_LT(crosshair().z, there.z - 5.0);  // downwards: the back
  EXPECT_DOUBLE_EQ(crosshair().y, there.y);
}

TEST_F(ViewerPanes, RightButtonChangesTheGreyValuesAndTheMenuBringsThemBack) {
  const host::GreyWindow before = m_user.session().window();
  const CPoint middle = m_user.middleOf(axial);
  m_user.drag(axial, middle, CPoint(static_cast<int>(middle.x) + 60, static_cast<int>(middle.y)), true);
  EXPECT_GT(m_user.session().window().high - m_user.session().window().low, before.high - before.low);
  m_user.drag(axial, middle, CPoint(static_cast<int>(middle.x), static_cast<int>(middle.y) + 60), true);
  EXPECT_GT(m_user.session().window().low + m_user.session().window().high, before.low + before.high);
  m_user.choose(ID_VIEW_RESET_GREY);
  EXPECT_DOUBLE_EQ(m_user.session().window().low, before.low);
  EXPECT_DOUBLE_EQ(m_user.session().window().high, before.high);
}

TEST_F(ViewerPanes, ClickOnADipoleTakesIt) {
  addDipole(30.0, 40.0, 20.0);
  addDipole(-30.0, 40.0, 20.0);  // the current one
  m_user.session().setCrosshair({0.0, 40.0, 0.0});
  m_user.frame().pane(axial).picture();
  // Where the pane shows the first dipole: look for the pixel that leads there.
  const CPoint middle = m_user.middleOf(axial);
  for (int x = static_cast<int>(middle.x); m_user.dipoles().m_currentDipole != 0 && x < 2 * middle.x;
       x += 6) {
    for (int y = 0; m_user.dipoles().m_currentDipole != 0 && y < middle.y; y += 6) {
      m_user.press(axial, CPoint(x, y));
    }
  }
  EXPECT_EQ(m_user.dipoles().m_currentDipole, 0);
  EXPECT_DOUBLE_EQ(crosshair().x, 30.0);
  EXPECT_DOUBLE_EQ(crosshair().y, 40.0);
  EXPECT_DOUBLE_EQ(crosshair().z, 20.0);
}

TEST_F(ViewerPanes, CurrentDipoleChangedByTheModuleIsFollowedWhenIdle) {
  addDipole(30.0, 40.0, 20.0);
  addDipole(-30.0, 45.0, 25.0);
  EXPECT_DOUBLE_EQ(crosshair().x, -30.0);
  m_user.dipoles().setCurrentDipole(0);
  m_user.wait();
  EXPECT_DOUBLE_EQ(crosshair().x, 30.0);
  EXPECT_DOUBLE_EQ(crosshair().y, 40.0);
}

TEST_F(ViewerPanes, CrosshairStaysWhereTheUserPutsItWhileTheDipoleStays) {
  addDipole(30.0, 40.0, 20.0);
  m_user.wheel(axial, 5);
  m_user.wait();
  EXPECT_DOUBLE_EQ(crosshair().y, 45.0);
  m_user.choose(ID_DIPOLES_GO_TO);
  EXPECT_DOUBLE_EQ(crosshair().y, 40.0);
}

TEST_F(ViewerPanes, DoubleClickShowsOnePaneAloneAndFourAgain) {
  m_user.frame().pane(coronal).SendMessage(WM_LBUTTONDBLCLK, 0, 0);
  m_user.wait();
  EXPECT_FALSE(m_user.frame().pane(axial).IsWindowVisible());
  EXPECT_TRUE(m_user.frame().pane(coronal).IsWindowVisible());
  EXPECT_FALSE(m_user.frame().pane(scene).IsWindowVisible());
  m_user.key(coronal, VK_SPACE);
  for (int pane = 0; pane < host::MainFrame::paneCount; ++pane) {
    EXPECT_TRUE(m_user.frame().pane(pane).IsWindowVisible()) << pane;
  }
}

TEST_F(ViewerPanes, SceneTurnsByDragKeysAndMenu) {
  const host::Image before = m_user.frame().pane(scene).picture();
  const CPoint middle = m_user.middleOf(scene);
  m_user.drag(scene, middle, CPoint(static_cast<int>(middle.x) + 50, static_cast<int>(middle.y)));
  EXPECT_TRUE(differs(before, scene));
  const host::Image turned = m_user.frame().pane(scene).picture();
  m_user.key(scene, VK_LEFT);
  EXPECT_TRUE(differs(turned, scene));
  m_user.choose(ID_VIEW_FROM_TOP);
  const host::Image fromTop = m_user.frame().pane(scene).picture();
  m_user.choose(ID_VIEW_FROM_LEFT);
  EXPECT_TRUE(differs(fromTop, scene));
}

TEST_F(ViewerPanes, ClickInTheSceneTakesTheDipoleInFront) {
  addDipole(60.0, 50.0, 0.0);
  addDipole(-60.0, 50.0, 0.0);
  m_user.choose(ID_VIEW_FROM_LEFT);
  const CPoint middle = m_user.middleOf(scene);
  for (int y = 0; m_user.dipoles().m_currentDipole != 0 && y < 2 * middle.y; y += 6) {
    for (int x = static_cast<int>(middle.x) - 40; m_user.dipoles().m_currentDipole != 0 && x < middle.x + 40;
         x += 6) {
      m_user.press(scene, CPoint(x, y));
    }
  }
  EXPECT_EQ(m_user.dipoles().m_currentDipole, 0);
  EXPECT_DOUBLE_EQ(crosshair().x, 60.0);
}

TEST_F(ViewerPanes, PointerShowsMillimetresAndVoxel) {
  const CPoint middle = m_user.middleOf(axial);
  // Without waiting: the system soon finds that the real pointer is elsewhere.
  m_user.frame().pane(axial).SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(middle.x, middle.y));
  const std::string text = m_user.status(host::MainFrame::pointerPart);
  EXPECT_EQ(text.rfind("Pointer  ", 0), 0U) << text;
  EXPECT_NE(text.find(" mm   voxel "), std::string::npos) << text;
  m_user.frame().pane(axial).SendMessage(WM_MOUSELEAVE);
  EXPECT_EQ(m_user.status(host::MainFrame::pointerPart), "");
}

TEST_F(ViewerPanes, LostCaptureEndsADrag) {
  const CPoint middle = m_user.middleOf(axial);
  host::PaneWindow& pane = m_user.frame().pane(axial);
  pane.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(middle.x, middle.y));
  const host::Vector3 there = crosshair();
  ::ReleaseCapture();
  pane.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(middle.x + 40, middle.y));
  m_user.wait();
  EXPECT_DOUBLE_EQ(crosshair().x, there.x);
}

TEST_F(ViewerPanes, SmallestWindowStillDrawsEveryPane) {
  m_user.frame().SetWindowPos(nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
  m_user.wait();
  for (int pane = 0; pane < host::MainFrame::paneCount; ++pane) {
    const host::Image& picture = m_user.frame().pane(pane).picture();
    EXPECT_GE(picture.width(), 150) << pane;
    EXPECT_GE(picture.height(), 150) << pane;
  }
  m_user.frame().ShowWindow(SW_MINIMIZE);
  m_user.wait();
  m_user.frame().ShowWindow(SW_RESTORE);
  m_user.wait();
}

}  // namespace
