// Choosing rows by mouse and keys: selection, current dipole, what the host is told.
#include <gtest/gtest.h>
#include <numeric>

#include "tests/ui/windows/Host.h"
#include "tests/ui/windows/Spy.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;
using Positions = std::vector<Position>;

Rows from(int first, int last) {
  Rows rows(static_cast<std::size_t>(last - first + 1));
  std::iota(rows.begin(), rows.end(), first);
  return rows;
}

TEST(ManagerChoice, FlagsAreThoseOfTheRows) {
  Host host(6);
  host.openManager();
  host.click(4);
  host.click(1, true);
  EXPECT_EQ(host.selected(), (Rows{1, 4}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 4);  // the last one, wherever the click was
  host.click(4, true);
  EXPECT_EQ(host.selected(), Rows{1});
  host.click(5);
  EXPECT_EQ(host.selected(), Rows{5});
  EXPECT_EQ(host.selectedRows(), Rows{5});
}

TEST(ManagerChoice, RangeIsOneChoice) {
  Host host(8);
  host.openManager();
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.click(2);
  host.forget();
  host.click(6, false, true);
  EXPECT_EQ(host.selected(), from(2, 6));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 6);
  ASSERT_FALSE(host.positions().empty());
  EXPECT_EQ(host.positions().back(), (Position{0, 0, 0, 3.5}));
}

TEST(ManagerChoice, ControlASelectsAll) {
  Host host(7);
  host.openManager();
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.key(VK_HOME);
  host.forget();
  host.key('A', true);
  EXPECT_EQ(host.selected(), from(0, 6));
  EXPECT_EQ(host.selectedRows(), from(0, 6));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 6);
  EXPECT_EQ(host.positions(), (Positions{{0, 0, 0, 3.5}}));
}

TEST(ManagerChoice, LetterAAloneSelectsNothing) {
  Host host(7);
  host.openManager();
  host.key('A');
  EXPECT_EQ(host.selectedRows(), Rows{});
}

TEST(ManagerChoice, EndWithShiftTakesTheRestInAndHomeTheFirst) {
  Host host(9);
  host.openManager();
  host.click(3);
  host.key(VK_END, false, true);
  EXPECT_EQ(host.selected(), from(3, 8));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 8);
  host.key(VK_HOME);
  EXPECT_EQ(host.selected(), Rows{0});
  EXPECT_EQ(host.face->getCurrentDipoleID(), 0);
}

TEST(ManagerChoice, ArrowsMoveTheCurrentDipoleWithTheFocus) {
  Host host(4);
  host.openManager();
  host.click(1);
  host.forget();
  host.key(VK_DOWN);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 2);
  EXPECT_EQ(host.selected(), Rows{2});
  EXPECT_EQ(host.focusedRow(), 2);
  EXPECT_TRUE(host.wasRepainted());
  host.key(VK_UP);
  host.key(VK_UP);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 0);
  EXPECT_EQ(host.focusedRow(), 0);
}

TEST(ManagerChoice, ArrowsAtTheEndsWrapTheCurrentDipoleAlone) {
  Host host(4);
  host.openManager();
  host.click(3);
  host.forget();
  host.key(VK_DOWN);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 0);
  EXPECT_EQ(host.focusedRow(), 3);  // a list does not wrap
  EXPECT_TRUE(host.wasRepainted());
  host.click(0);
  host.key(VK_UP);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 3);
}

TEST(ManagerChoice, ArrowsOnAnEmptySetSayThatThereIsNoDipole) {
  Host host;
  host.openManager();
  Robot robot;
  robot.when(messageCaption, answer("No dipole available"));
  robot.when(messageCaption, answer("No dipole available"));
  host.key(VK_DOWN);
  host.key(VK_UP);
  EXPECT_FALSE(host.wasRepainted());
}

TEST(ManagerChoice, OtherKeysMoveThroughTheRowsAlone) {
  Host host(50);
  host.openManager();
  host.click(0);
  host.key(VK_NEXT);
  const int row = host.focusedRow();
  EXPECT_GT(row, 1);
  EXPECT_EQ(host.face->getCurrentDipoleID(), row);
  host.key(VK_LEFT);
  EXPECT_EQ(host.face->getCurrentDipoleID(), row);
}

TEST(ManagerChoice, EditorShowsTheChosenDipole) {
  Host host(5);
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  host.click(3);
  EXPECT_EQ(captionOf(host.editor()), "Current dipole (Total dipoles):3(5)");
  EXPECT_EQ(textOf(host.editor(), IDC_EDITOR_LABEL), "d4");
}

TEST(ManagerChoice, OneKeyIsOneChoiceForTheEditor) {
  Host host(5);
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  host.click(2);
  const SentMessages sent(host.editor());
  host.key(VK_DOWN);
  EXPECT_EQ(sent.count(WM_SETTEXT), 1);  // its caption
  EXPECT_EQ(captionOf(host.editor()), "Current dipole (Total dipoles):3(5)");
  EXPECT_EQ(textOf(host.editor(), IDC_EDITOR_LABEL), "d4");
  EXPECT_EQ(host.selected(), Rows{3});
}

TEST(ManagerChoice, KeysMarkWhatAHostHasMarkedMeanwhileAnew) {
  Host host(5);
  host.openManager();
  host.click(2);
  host.face->setDipoleSelection(0, true);
  host.key(VK_DOWN);
  EXPECT_EQ(host.selected(), Rows{3});
}

TEST(ManagerChoice, ArrowPastTheEndOfARangeShowsTheCurrentDipoleInTheEditor) {
  Host host(6);
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  host.click(2);
  host.key(VK_END, false, true);
  EXPECT_EQ(host.selected(), from(2, 5));
  EXPECT_EQ(host.focusedRow(), 5);  // the next range would start at row 2
  host.key(VK_DOWN, true);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 0);
  EXPECT_EQ(captionOf(host.editor()), "Current dipole (Total dipoles):0(6)");
}

TEST(ManagerDynamicUpdate, TellsAsOftenAsTheListReportsAKey) {
  Host host(5);
  host.openManager();
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.click(2);
  host.forget();
  host.key(VK_DOWN, false, true);
  EXPECT_EQ(host.positions(), (Positions{{0, 0, 0, 2.0}, {0, 0, 0, 2.0}}));
}

TEST(ManagerDynamicUpdate, TellsTheLatencyOfTheChosenDipoleAndShowsIt) {
  Host host(4);
  host.openManager();
  host.choose(ID_DIPOLE_HIDE_ALL);
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.forget();
  host.click(2);
  EXPECT_EQ(host.positions(), (Positions{{0, 0, 0, 1.5}}));
  EXPECT_EQ(host.shown(), (Rows{0, 0, 1, 0}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 2);
  EXPECT_TRUE(host.wasRepainted());
  host.click(0);  // the one that is left is no choice
  EXPECT_EQ(host.positions(), (Positions{{0, 0, 0, 1.5}, {0, 0, 0, 0.5}}));
  EXPECT_EQ(host.updates(), 0);
}

TEST(ManagerDynamicUpdate, ChoosesTheRowOfTheClickAmongSeveral) {
  Host host(5);
  host.openManager();
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.click(3);
  host.click(1, true);
  EXPECT_EQ(host.selected(), (Rows{1, 3}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 1);
  EXPECT_EQ(host.positions().back(), (Position{0, 0, 0, 1.0}));
}

TEST(ManagerDynamicUpdate, IsSilentWithoutTheCheck) {
  Host host(4);
  host.openManager();
  host.face->setShowAllDipole(0);
  host.click(2);
  host.key(VK_DOWN);
  EXPECT_TRUE(host.positions().empty());
  EXPECT_EQ(host.shown(), (Rows{0, 0, 0, 0}));
}

TEST(ManagerDynamicUpdate, CountsTheCheckBoxAsItStands) {
  Host host(4);
  host.openManager();
  ::CheckDlgButton(host.manager(), IDC_MANAGER_DYNAMIC_UPDATE, BST_CHECKED);  // without a click
  host.click(2);
  EXPECT_EQ(host.positions(), (Positions{{0, 0, 0, 1.5}}));
}

TEST(ManagerDynamicUpdate, NeedsACallback) {
  Host host(3);
  host.openManager();
  host.face->setCbfDipoleXYZ(nullptr);
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.face->setShowAllDipole(0);
  host.click(2);
  EXPECT_TRUE(host.positions().empty());
  EXPECT_EQ(host.shown(), (Rows{0, 0, 0}));
}

TEST(ManagerShowCurrentOnly, TogglesWithARefillAndChangesNoDipole) {
  Host host(4);
  host.openManager();
  host.click(2);
  for (int i = 0; i < 2; ++i) {
    const SentMessages sent(host.list());
    host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
    EXPECT_EQ(sent.count(LVM_DELETEALLITEMS), 1);
  }
  EXPECT_EQ(host.shown(), (Rows{1, 1, 1, 1}));
  EXPECT_EQ(host.updates(), 0);
}

TEST(ManagerShowCurrentOnly, ChoosingARowHidesTheOthers) {
  Host host(4);
  host.openManager();
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  host.forget();
  const SentMessages sent(host.list());
  host.click(2);
  EXPECT_EQ(host.shown(), (Rows{0, 0, 1, 0}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 2);
  EXPECT_EQ((Rows{host.image(0), host.image(1), host.image(2), host.image(3)}), (Rows{1, 1, 0, 1}));
  EXPECT_TRUE(host.wasRepainted());
  EXPECT_EQ(host.updates(), 0);
  EXPECT_EQ(sent.count(LVM_DELETEALLITEMS), 1);  // what the refill itself brings about is no choice
  host.click(0);
  EXPECT_EQ(host.shown(), (Rows{1, 0, 0, 0}));
  host.key(VK_DOWN);
  EXPECT_EQ(host.shown(), (Rows{0, 1, 0, 0}));
}

TEST(ManagerShowCurrentOnly, SetsTheOneClickStyleBeforeTheRefill) {
  Host host(4);
  host.openManager();
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  const SentMessages sent(host.list());
  host.click(2);
  const std::vector<LPARAM> styles = sent.parameters(LVM_SETEXTENDEDLISTVIEWSTYLE);
  ASSERT_GE(styles.size(), 2U);
  EXPECT_EQ(styles[0], LPARAM{LVS_EX_TRACKSELECT | LVS_EX_ONECLICKACTIVATE});
  EXPECT_EQ(styles[1], LPARAM{LVS_EX_TRACKSELECT | LVS_EX_FULLROWSELECT | LVS_EX_TWOCLICKACTIVATE});
}

TEST(ManagerShowCurrentOnly, LeavesTheHostsWindowToTheCallbackWhenUpdatingDynamically) {
  Host host(4);
  host.openManager();
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.forget();
  host.click(2);
  EXPECT_FALSE(host.wasRepainted());
  ASSERT_FALSE(host.positions().empty());
  for (const Position& told : host.positions()) {
    EXPECT_EQ(told, (Position{0, 0, 0, 1.5}));
  }
}

TEST(ManagerShowCurrentOnly, TurnedOffChoosesAgain) {
  Host host(4);
  host.openManager();
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  host.click(2);
  EXPECT_EQ(host.shown(), (Rows{1, 1, 1, 1}));
  EXPECT_EQ(host.selectedRows(), Rows{2});
}

}  // namespace
