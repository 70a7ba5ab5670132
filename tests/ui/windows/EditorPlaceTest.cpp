// Where the editors open: in sight, and not over the manager.
#include "tests/ui/windows/EditorTest.h"

namespace {

CRect placeOf(HWND window) {
  CRect place;
  ::GetWindowRect(window, &place);
  return place;
}

bool covers(HWND window, HWND other) {
  RECT common = {};
  const CRect place = placeOf(window);
  const CRect below = placeOf(other);
  return ::IntersectRect(&common, &place, &below) != FALSE;
}

bool isWholeOnTheScreen(HWND window) {
  MONITORINFO screen = {};
  screen.cbSize = sizeof screen;
  ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
  RECT whole = {};
  const CRect place = placeOf(window);
  ::UnionRect(&whole, &screen.rcWork, &place);
  return ::EqualRect(&whole, &screen.rcWork) != FALSE;
}

void moveTo(HWND window, int left, int top) {
  ::SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

class EditorPlace : public EditorTest {
 protected:
  HWND manager() const { return host->manager(); }
  void openManagerAt(int left, int top) {
    make(2);
    host->openManager();
    moveTo(manager(), left, top);
  }
  void edit() {
    host->choose(ID_DIPOLE_EDIT);
    window = host->editor();
  }
};

TEST_F(EditorPlace, OfTheManagerIsBesideIt) {
  for (const CPoint corner : {CPoint(0, 0), CPoint(400, 300), CPoint(1000, 800), CPoint(300, 5000)}) {
    openManagerAt(corner.x, corner.y);
    edit();
    EXPECT_FALSE(covers(window, manager())) << corner.x;
    EXPECT_TRUE(isWholeOnTheScreen(window)) << corner.x;
  }
}

TEST_F(EditorPlace, IsRightNextToTheManager) {
  openManagerAt(20, 30);
  edit();
  EXPECT_EQ(placeOf(window).left, placeOf(manager()).right);
  EXPECT_EQ(placeOf(window).top, placeOf(manager()).top);
}

TEST_F(EditorPlace, OfTheHostIsBesideTheHost) {
  open(2);
  EXPECT_FALSE(covers(window, host->window.m_hWnd));
  EXPECT_EQ(placeOf(window).left, placeOf(host->window.m_hWnd).right);
  EXPECT_TRUE(isWholeOnTheScreen(window));
}

TEST_F(EditorPlace, OfTheHostIsNotOverTheManagerEither) {
  openManagerAt(1150, 40);
  show();
  EXPECT_FALSE(covers(window, manager()));
  EXPECT_FALSE(covers(window, host->window.m_hWnd));
}

TEST_F(EditorPlace, IsNotOverTheManagerWhenTheHostFillsTheScreen) {
  openManagerAt(20, 30);
  ::ShowWindow(host->window.m_hWnd, SW_MAXIMIZE);
  pump();
  edit();
  EXPECT_FALSE(covers(window, manager()));
  EXPECT_TRUE(isWholeOnTheScreen(window));
}

TEST_F(EditorPlace, IsOnTheScreenWhenTheManagerFillsIt) {
  openManagerAt(20, 30);
  ::ShowWindow(manager(), SW_MAXIMIZE);
  pump();
  edit();
  EXPECT_TRUE(isWholeOnTheScreen(window));
}

TEST_F(EditorPlace, IsBesideTheHostWhenTheManagerIsMinimised) {
  openManagerAt(20, 30);
  ::ShowWindow(manager(), SW_MINIMIZE);
  pump();
  show();
  EXPECT_EQ(placeOf(window).left, placeOf(host->window.m_hWnd).right);
  EXPECT_EQ(placeOf(window).top, placeOf(host->window.m_hWnd).top);
}

TEST_F(EditorPlace, StaysWhereTheUserHasPutIt) {
  openManagerAt(20, 30);
  edit();
  const CRect place = placeOf(window);
  moveTo(window, place.left + 40, place.top + 300);
  push(IDOK);
  edit();
  EXPECT_EQ(placeOf(window).left, place.left + 40);
  EXPECT_EQ(placeOf(window).top, place.top + 300);
}

TEST_F(EditorPlace, IsMovedFromTheManagerWhenItOpensAgain) {
  openManagerAt(20, 30);
  edit();
  moveTo(window, 60, 60);
  edit();  // it is open: nothing opens
  EXPECT_EQ(placeOf(window).left, 60);
  push(IDOK);
  edit();
  EXPECT_FALSE(covers(window, manager()));
  push(IDOK);
  moveTo(window, 5000, 60);  // a screen that is no longer there
  edit();
  EXPECT_TRUE(isWholeOnTheScreen(window));
}

TEST_F(EditorPlace, NeedsNeitherManagerNorHost) {
  make(1);
  EXPECT_EQ(face().dipoleEdit(nullptr), 1);
  EXPECT_NE(host->editor(), nullptr);
}

}  // namespace
