// Where the focus is: of the keyboard when the manager opens, and the list's own mark after each refill.
#include <gtest/gtest.h>

#include "tests/ui/windows/Host.h"
#include "tests/ui/windows/Spy.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;

// The row of the current dipole, and none else, is marked, in view, and not selected.
void expectMarked(const Host& host, int row) {
  EXPECT_EQ(host.face->getCurrentDipoleID(), row);
  EXPECT_EQ(host.focusedRow(), row);
  EXPECT_EQ(::SendMessageW(host.list(), LVM_GETSELECTIONMARK, 0, 0), row);
  EXPECT_TRUE(host.isInSight(row)) << row << " from " << ::SendMessageW(host.list(), LVM_GETTOPINDEX, 0, 0);
  EXPECT_EQ(host.selectedRows(), Rows{});
}

void scrollTo(const Host& host, int row) {
  ::SendMessageW(host.list(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

TEST(ManagerFocus, IsInTheListWhenItOpens) {
  Host host(3);
  host.openManager();
  EXPECT_EQ(::GetFocus(), host.list());
}

TEST(ManagerFocus, IsInTheListOfAnEmptySetToo) {
  Host host;
  host.openManager();
  EXPECT_EQ(::GetFocus(), host.list());
}

TEST(ManagerFocus, IsInTheListAgainWhateverHadItBefore) {
  Host host(3);
  host.openManager();
  const HWND button = ::GetDlgItem(host.manager(), ID_DIPOLE_HIDE_ALL);
  ::SendMessageW(host.manager(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button), TRUE);
  ASSERT_EQ(::GetFocus(), button);
  host.choose(ID_DIPOLE_EXIT);
  host.openManager();
  EXPECT_EQ(::GetFocus(), host.list());
  host.window.SetFocus();
  host.openManager();  // it was open
  EXPECT_EQ(::GetFocus(), host.list());
}

TEST(ManagerFocus, KeysGoOnFromTheCurrentDipoleAtOnce) {
  Host host(40);
  host.face->setCurrentDipole(30);
  host.openManager();
  ::SendMessageW(::GetFocus(), WM_KEYDOWN, VK_DOWN, 1);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 31);
  EXPECT_EQ(host.selectedRows(), Rows{31});
}

TEST(ManagerFocus, MarksTheCurrentDipoleOnOpeningWithoutChoosingIt) {
  Host host(200);
  host.face->setCurrentDipole(150);
  host.face->setShowAllDipole(0);
  host.openManager();
  expectMarked(host, 150);
  EXPECT_EQ(host.selected(), Rows{});
  EXPECT_TRUE(host.positions().empty());
  EXPECT_EQ(host.shown(), Rows(200, 0));
  host.choose(ID_DIPOLE_EXIT);
  host.face->setCurrentDipole(3);
  host.openManager();
  expectMarked(host, 3);
}

TEST(ManagerFocus, MarksTheCurrentDipoleAfterARefill) {
  Host host(200);
  host.openManager();
  expectMarked(host, 0);
  scrollTo(host, 199);
  ASSERT_FALSE(host.isInSight(0));
  host.face->updateDipoleList();
  expectMarked(host, 0);
  host.face->setCurrentDipole(120);
  host.face->updateDipoleList();
  expectMarked(host, 120);
}

TEST(ManagerFocus, MarksTheCurrentDipoleAfterCommands) {
  Host host(200);
  host.openManager();
  host.click(100);
  host.choose(ID_DIPOLE_DELETE);
  expectMarked(host, 100);
  host.click(50);
  host.click(20, true);
  host.choose(ID_DIPOLE_AVERAGE_AS);  // the new one, at the end
  expectMarked(host, 200 - 1);
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  expectMarked(host, 199);
  host.clickHeading(0);
  expectMarked(host, host.face->getCurrentDipoleID());
}

TEST(ManagerFocus, MarksNothingNewWithoutACurrentDipole) {
  Host host(9);
  host.openManager();
  host.click(5);
  host.face->m_currentDipole = -1;
  host.face->updateDipoleList();
  EXPECT_EQ(host.focusedRow(), 5);
  EXPECT_EQ(host.selectedRows(), Rows{});
}

TEST(ManagerFocus, KeepsThePlaceWhenThereIsNoCurrentDipole) {
  Host host(200);
  host.openManager();
  host.click(5);
  scrollTo(host, 150);
  const LRESULT top = ::SendMessageW(host.list(), LVM_GETTOPINDEX, 0, 0);
  ASSERT_FALSE(host.isInSight(5));
  host.face->m_currentDipole = -1;
  host.face->updateDipoleList();
  EXPECT_EQ(::SendMessageW(host.list(), LVM_GETTOPINDEX, 0, 0), top);
  EXPECT_EQ(host.focusedRow(), 5);
}

TEST(ManagerFocus, StaysInViewOfWhoeverLooksAtTheCurrentDipole) {
  Host host(200);
  host.openManager();
  host.click(100);
  scrollTo(host, 103);  // nearly out of view at the top, but still there
  const LRESULT top = ::SendMessageW(host.list(), LVM_GETTOPINDEX, 0, 0);
  ASSERT_TRUE(host.isInSight(100));
  host.face->updateDipoleList();
  EXPECT_EQ(::SendMessageW(host.list(), LVM_GETTOPINDEX, 0, 0), top);
}

// A list may bring the row that it marks into view by itself, and begin ranges there; it is asked anyway.
TEST(ManagerFocus, IsNotLeftToWhatAListDoesByItself) {
  Host host(200);
  host.openManager();
  host.face->setCurrentDipole(120);
  const KeptMessages kept(host.list(),
                          [](UINT message, WPARAM, LPARAM) { return message == LVM_SETITEMSTATE; });
  host.face->updateDipoleList();
  EXPECT_TRUE(host.isInSight(120));
  EXPECT_EQ(::SendMessageW(host.list(), LVM_GETSELECTIONMARK, 0, 0), 120);
}

// As of a list that shows its top again when it was emptied.
TEST(ManagerFocus, KeepsThePlaceOfAListThatForgetsIt) {
  Host host(200);
  host.openManager();
  host.click(100);
  scrollTo(host, 103);
  const LRESULT top = ::SendMessageW(host.list(), LVM_GETTOPINDEX, 0, 0);
  const KeptMessages none(host.list(), [&](UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_SETREDRAW && wParam != FALSE) {
      scrollTo(host, 0);
    }
    return false;
  });
  host.face->updateDipoleList();
  EXPECT_EQ(::SendMessageW(host.list(), LVM_GETTOPINDEX, 0, 0), top);
}

}  // namespace
