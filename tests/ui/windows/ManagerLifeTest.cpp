// Opening, closing, sizes, the editor, Enter; and hosts that end a collection at any moment.
#include <functional>
#include <gtest/gtest.h>

#include "tests/platform/windows/HandleCount.h"
#include "tests/ui/windows/Host.h"
#include "tests/ui/windows/Spy.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;

std::function<void()> whenTold;  // what the callbacks below do

int tellPosition(double, double, double, double) {
  whenTold();
  return 0;
}

int tellUpdate(bool) {
  whenTold();
  return 0;
}

RECT placeInManager(const Host& host, HWND window) {
  RECT place = {};
  ::GetWindowRect(window, &place);
  ::MapWindowPoints(nullptr, host.manager(), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

SIZE clientOf(HWND window) {
  RECT client = {};
  ::GetClientRect(window, &client);
  return {client.right, client.bottom};
}

void expectListFits(const Host& host, const RECT& before) {
  const RECT list = placeInManager(host, host.list());
  const SIZE client = clientOf(host.manager());
  EXPECT_EQ(list.right, client.cx - 10);
  EXPECT_EQ(list.bottom, client.cy - 10);
  EXPECT_EQ(list.left, before.left);
  EXPECT_EQ(list.top, before.top);
}

// As the host's loop handles a key.
void keyThroughTheLoop(HWND window, UINT key) {
  ::PostMessageW(window, WM_KEYDOWN, key, 1);
  ::PostMessageW(window, WM_KEYUP, key, 0xC0000001);
  pump();
}

TEST(ManagerSize, ListFollowsTheWindow) {
  Host host(3);
  host.openManager();
  const RECT before = placeInManager(host, host.list());
  for (const SIZE size : {SIZE{900, 600}, SIZE{420, 260}, SIZE{1200, 800}}) {
    ::SetWindowPos(host.manager(), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
    pump();
    expectListFits(host, before);
  }
}

TEST(ManagerSize, ListIsThereAgainAfterMinimising) {
  Host host(3);
  CDialog& manager = host.openManager();
  const RECT before = placeInManager(host, host.list());
  manager.ShowWindow(SW_MINIMIZE);
  pump();
  manager.ShowWindow(SW_RESTORE);
  pump();
  expectListFits(host, before);
  EXPECT_EQ(host.rows(), 3);
}

TEST(ManagerSize, ListIsThereAgainAfterAWindowTooSmallForIt) {
  Host host(3);
  host.openManager();
  const RECT before = placeInManager(host, host.list());
  for (const int size : {0, 600}) {
    ::SetWindowPos(host.manager(), nullptr, 0, 0, size, size, SWP_NOMOVE | SWP_NOZORDER);
    pump();
  }
  expectListFits(host, before);
}

TEST(ManagerClosing, OnlyHidesAndShowingAgainRefreshes) {
  const auto ways = {
      std::function<void(Host&)>([](Host& host) { host.choose(ID_DIPOLE_EXIT); }),
      std::function<void(Host&)>(
          [](Host& host) { ::SendMessageW(host.manager(), WM_SYSCOMMAND, SC_CLOSE, 0); }),
      std::function<void(Host&)>([](Host& host) { keyThroughTheLoop(host.list(), VK_ESCAPE); })};
  for (const auto& close : ways) {
    Host host(3);
    CDialog& manager = host.openManager();
    const HWND window = host.manager();
    close(host);
    pump();
    EXPECT_TRUE(::IsWindow(window));
    EXPECT_FALSE(::IsWindowVisible(window));
    host.addDipoles(1);
    host.face->m_managerTitle = _T("Dipoles of a patient");
    EXPECT_EQ(&host.openManager(), &manager);
    EXPECT_EQ(host.manager(), window);
    EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_EQ(host.rows(), 4);
    EXPECT_EQ(captionOf(window), "Dipoles of a patient");
  }
}

TEST(ManagerEnter, InTheListEdits) {
  Host host(3);
  host.openManager();
  host.click(1);
  keyThroughTheLoop(host.list(), VK_RETURN);
  EXPECT_TRUE(::IsWindowVisible(host.manager()));
  ASSERT_NE(host.editor(), nullptr);
  EXPECT_EQ(captionOf(host.editor()), "Current dipole (Total dipoles):1(3)");
}

TEST(ManagerEnter, OnAButtonPressesIt) {
  Host host(3);
  host.openManager();
  const HWND button = ::GetDlgItem(host.manager(), ID_DIPOLE_HIDE_ALL);
  ::SendMessageW(host.manager(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button), TRUE);
  keyThroughTheLoop(button, VK_RETURN);
  EXPECT_EQ(host.shown(), (Rows{0, 0, 0}));
  EXPECT_TRUE(::IsWindowVisible(host.manager()));
  EXPECT_EQ(host.editor(), nullptr);
}

TEST(ManagerEnter, ExitClosesWithTheListInFocus) {
  Host host(3);
  host.openManager();
  ::SetFocus(host.list());
  host.choose(ID_DIPOLE_EXIT);
  EXPECT_FALSE(::IsWindowVisible(host.manager()));
  EXPECT_EQ(host.editor(), nullptr);
}

TEST(ManagerEdit, OpensOneEditorFromEverywhere) {
  Host host(4);
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  const HWND editor = host.editor();
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(captionOf(editor), "Current dipole (Total dipoles):0(4)");
  ::ShowWindow(editor, SW_HIDE);
  host.doubleClick(2);
  EXPECT_EQ(host.editor(), editor);
  EXPECT_EQ(captionOf(editor), "Current dipole (Total dipoles):2(4)");
  ::ShowWindow(editor, SW_HIDE);
  ::SendMessageW(host.manager(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(3, 3));  // beside the controls
  EXPECT_EQ(host.editor(), editor);
  host.choose(ID_DIPOLE_EDIT);
  EXPECT_EQ(host.editor(), editor);
  EXPECT_EQ(host.updates(), 0);
}

TEST(ManagerEdit, OpensForAnEmptySetToo) {
  Host host;
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  ASSERT_NE(host.editor(), nullptr);
  EXPECT_EQ(captionOf(host.editor()), "Current dipole (Total dipoles):0(0)");
}

TEST(ManagerEdit, DoubleClickOnAListOfAHiddenManagerDoesNothing) {
  Host host(3);
  CDialog& manager = host.openManager();
  manager.ShowWindow(SW_HIDE);
  ::SendMessageW(host.list(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(20, 40));
  EXPECT_EQ(host.editor(), nullptr);
}

TEST(ManagerEdit, EditorFollowsTheCommands) {
  Host host(4);
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  host.click(3);
  host.choose(ID_DIPOLE_DELETE);
  EXPECT_EQ(captionOf(host.editor()), "Current dipole (Total dipoles):2(3)");
  host.key('A', true);
  host.choose(ID_DIPOLE_DELETE);
  EXPECT_EQ(captionOf(host.editor()), "Current dipole (Total dipoles):0(0)");
}

TEST(ManagerEdit, EditorGoesWithTheCollection) {
  Host host(2);
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  const HWND editor = host.editor();
  host.face.reset();
  EXPECT_FALSE(::IsWindow(editor));
}

class ManagerEnds : public testing::Test {
 protected:
  ManagerEnds() : host(5) {
    whenTold = [this] { host.face.reset(); };
  }
  void expectGone() {
    pump();
    EXPECT_EQ(host.face, nullptr);
    EXPECT_FALSE(::IsWindow(manager));
  }
  void open() {
    host.face->setCbfUpdateViewers(&tellUpdate);
    host.face->showDipoleList(&host.window, &tellPosition);
    pump();
    manager = host.manager();
    host.choose(ID_DIPOLE_EDIT);
  }

  Host host;
  HWND manager = nullptr;
};

TEST_F(ManagerEnds, InTheUpdateCallback) {
  open();
  host.key('A', true);
  const HWND window = manager;
  ::SendMessageW(window, WM_COMMAND, ID_DIPOLE_DELETE, 0);
  expectGone();
}

TEST_F(ManagerEnds, InTheUpdateCallbackOfAButton) {
  open();
  press(manager, ID_DIPOLE_HIDE_ALL);
  expectGone();
}

TEST_F(ManagerEnds, InTheUpdateCallbackOfACheckBox) {
  open();
  press(manager, IDC_MANAGER_DYNAMIC_UPDATE);
  expectGone();
}

TEST_F(ManagerEnds, InThePositionCallbackOfAClick) {
  open();
  ::CheckDlgButton(manager, IDC_MANAGER_DYNAMIC_UPDATE, BST_CHECKED);
  host.click(2);
  expectGone();
}

TEST_F(ManagerEnds, InThePositionCallbackOfAKey) {
  open();
  ::CheckDlgButton(manager, IDC_MANAGER_DYNAMIC_UPDATE, BST_CHECKED);
  const HWND list = host.list();
  ::SendMessageW(list, WM_KEYDOWN, VK_DOWN, 1);
  expectGone();
}

TEST_F(ManagerEnds, InThePositionCallbackOfControlA) {
  open();
  ::CheckDlgButton(manager, IDC_MANAGER_DYNAMIC_UPDATE, BST_CHECKED);
  LVITEMW item = {};
  item.state = LVIS_SELECTED;
  item.stateMask = LVIS_SELECTED;
  ::SendMessageW(host.list(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
  expectGone();
}

TEST_F(ManagerEnds, InThePositionCallbackWithTheCurrentShownAlone) {
  open();
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  ::CheckDlgButton(manager, IDC_MANAGER_DYNAMIC_UPDATE, BST_CHECKED);
  host.click(2);
  expectGone();
}

TEST_F(ManagerEnds, WhileItSaysThatThereIsNoDipole) {
  open();
  host.face->cleanDipoles();
  const HWND list = host.list();
  Robot robot;
  robot.when(messageCaption, [&](HWND box) {
    host.face.reset();
    press(box, IDOK);
  });
  ::SendMessageW(list, WM_KEYDOWN, VK_DOWN, 1);
  expectGone();
}

TEST(TwoManagers, KeepToTheirCollections) {
  Host first(3);
  Host second(5);
  first.openManager();
  second.openManager();
  EXPECT_NE(first.manager(), second.manager());
  first.click(1);
  second.click(4);
  first.choose(ID_DIPOLE_DELETE);
  EXPECT_EQ(first.numbers(), (Rows{1, 3}));
  EXPECT_EQ(second.numbers(), (Rows{1, 2, 3, 4, 5}));
  EXPECT_EQ(second.selectedRows(), Rows{4});
  second.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  second.click(0);
  EXPECT_EQ(first.shown(), (Rows{1, 1}));
  EXPECT_EQ(second.shown(), (Rows{1, 0, 0, 0, 0}));
  first.face.reset();
  EXPECT_EQ(second.rows(), 5);
  second.choose(ID_DIPOLE_SHOW_ALL);
  EXPECT_EQ(second.shown(), (Rows{1, 1, 1, 1, 1}));
}

TEST(ManagerHandles, AreGivenBack) {
  const auto once = [] {
    Host host(20);
    host.openManager();
    host.choose(ID_DIPOLE_EDIT);
    host.click(3);
    ::UpdateWindow(host.list());
    host.choose(ID_DIPOLE_HIDE);
  };
  once();
  const int windows = windowHandles();
  const int drawing = gdiHandles();
  for (int i = 0; i < 10; ++i) {
    once();
  }
  EXPECT_LE(windowHandles(), windows);
  EXPECT_LE(gdiHandles(), drawing);
}

}  // namespace
