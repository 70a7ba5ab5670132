// A pointer that rests on the manager's rows, longer than it takes the list to notice: nothing happens.
// Clicks and keys choose all the same.
#include <gtest/gtest.h>

#include "tests/ui/windows/Pointer.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;

constexpr DWORD shortTime = 30;      // ms that the pointer rests, when the test says so
constexpr DWORD beyondShort = 400;   // ms, well beyond that
constexpr DWORD beyondUsual = 2000;  // ms, well beyond what the system takes for resting: 400
constexpr LPARAM hotStyle = LVS_EX_TRACKSELECT;

class RestingPointer : public testing::Test {
 protected:
  void open() {
    host.openManager();
    ::SendMessageW(host.list(), LVM_SETHOVERTIME, 0, shortTime);
  }
  // The list has been told that the pointer rests, under the style that would make it choose.
  void restOnRow(int row) {
    movePointer(placeOfRow(host, row));
    const int told = rest(host.list(), beyondShort);
    ASSERT_GT(told, 0) << "the pointer does not rest on row " << row;
    ASSERT_EQ(::SendMessageW(host.list(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & hotStyle, hotStyle);
  }
  void clickRow(int row, bool control = false, bool shift = false) {
    movePointer(placeOfRow(host, row));
    clickThere(control, shift);
  }

  Host host{6};
};

// With the time that the system takes for resting.
TEST_F(RestingPointer, OpeningTheManagerUnderItChangesNothing) {
  host.face->setCurrentDipole(4);
  host.openManager();
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  const POINT place = placeOfRow(host, 1);
  host.choose(ID_DIPOLE_EXIT);
  movePointer(place);
  host.openManager();
  ASSERT_GT(rest(host.list(), beyondUsual), 0);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 4);
  EXPECT_EQ(host.selectedRows(), Rows{});
  EXPECT_EQ(host.focusedRow(), 4);
  EXPECT_EQ(host.selected(), Rows{});
  EXPECT_EQ(host.shown(), (Rows{1, 1, 1, 1, 1, 1}));
  EXPECT_TRUE(host.positions().empty());
  EXPECT_EQ(host.updates(), 0);
}

TEST_F(RestingPointer, LeavesAChoiceMadeWithControl) {
  host.openManager();
  clickRow(0);
  clickRow(2, true);
  clickRow(3, true);
  ASSERT_EQ(host.selectedRows(), (Rows{0, 2, 3}));
  ASSERT_GT(rest(host.list(), beyondUsual), 0);  // on the last one
  EXPECT_EQ(host.selectedRows(), (Rows{0, 2, 3}));
  EXPECT_EQ(host.selected(), (Rows{0, 2, 3}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 3);
  host.choose(ID_DIPOLE_DELETE);
  EXPECT_EQ(host.numbers(), (Rows{2, 5, 6}));
}

TEST_F(RestingPointer, LeavesAChoiceMadeWithShift) {
  open();
  clickRow(1);
  clickRow(4, false, true);
  ASSERT_EQ(host.selectedRows(), (Rows{1, 2, 3, 4}));
  for (const int row : {4, 2, 5}) {
    restOnRow(row);
    EXPECT_EQ(host.selectedRows(), (Rows{1, 2, 3, 4})) << row;
    EXPECT_EQ(host.face->getCurrentDipoleID(), 4) << row;
    EXPECT_EQ(host.focusedRow(), 4) << row;
  }
}

TEST_F(RestingPointer, LeavesTheFocusInAHalfTypedEditor) {
  host.face->setCurrentDipole(2);
  open();
  ::SetWindowPos(host.manager(), nullptr, 20, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  host.choose(ID_DIPOLE_EDIT);
  const HWND editor = host.editor();
  ::SetWindowPos(editor, HWND_TOP, 20, 400, 0, 0, SWP_NOSIZE);
  type(editor, IDC_EDITOR_LABEL, "half ty");
  const HWND field = ::GetDlgItem(editor, IDC_EDITOR_LABEL);
  ASSERT_EQ(::GetFocus(), field);
  restOnRow(0);
  EXPECT_EQ(::GetFocus(), field);
  EXPECT_EQ(::GetActiveWindow(), editor);
  EXPECT_EQ(textOf(editor, IDC_EDITOR_LABEL), "half ty");
  EXPECT_EQ(captionOf(editor), "Current dipole (Total dipoles):2(6)");
}

TEST_F(RestingPointer, HidesNoDipoleWithTheCurrentShownAlone) {
  open();
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.forget();
  restOnRow(3);
  EXPECT_EQ(host.shown(), (Rows{1, 1, 1, 1, 1, 1}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 0);
  EXPECT_TRUE(host.positions().empty());
  clickRow(2);
  restOnRow(5);
  EXPECT_EQ(host.shown(), (Rows{0, 0, 1, 0, 0, 0}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 2);
}

TEST_F(RestingPointer, TellsTheHostOfNoPosition) {
  open();
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.forget();
  restOnRow(1);
  restOnRow(4);
  EXPECT_TRUE(host.positions().empty());
  EXPECT_FALSE(host.wasRepainted());
}

TEST_F(RestingPointer, StopsNoClicks) {
  open();
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.forget();
  restOnRow(3);
  clickThere();
  EXPECT_EQ(host.selectedRows(), Rows{3});
  EXPECT_EQ(host.face->getCurrentDipoleID(), 3);
  EXPECT_EQ(::GetFocus(), host.list());
  EXPECT_EQ(host.positions(), (std::vector<Position>{{0, 0, 0, 2.0}}));
  restOnRow(1);
  clickThere(true);
  EXPECT_EQ(host.selectedRows(), (Rows{1, 3}));
}

TEST_F(RestingPointer, StopsNoKeys) {
  open();
  restOnRow(4);
  host.key(VK_DOWN);
  EXPECT_EQ(host.selectedRows(), Rows{1});
  EXPECT_EQ(host.face->getCurrentDipoleID(), 1);
  host.key(VK_DOWN, false, true);
  restOnRow(4);
  EXPECT_EQ(host.selectedRows(), (Rows{1, 2}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 2);
}

}  // namespace
