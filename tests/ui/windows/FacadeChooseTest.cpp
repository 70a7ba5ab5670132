// A dipole that the host makes the current one, and what the module's windows then show.
#include <gtest/gtest.h>

#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;

class ChosenDipole : public testing::Test {
 protected:
  bool isInSight(int row) const {
    RECT list = {};
    RECT place = {};
    place.left = LVIR_BOUNDS;
    ::GetClientRect(host.list(), &list);
    ::SendMessageW(host.list(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    return place.top > 0 && place.bottom <= list.bottom;
  }
  void expectNobodyWasTold() {
    EXPECT_EQ(host.updates(), 0);
    EXPECT_TRUE(host.positions().empty());
    EXPECT_FALSE(host.wasRepainted());
  }

  Messages messages;
  Host host{60};
};

TEST_F(ChosenDipole, IsTheCurrentOneAloneSelectedAndInSight) {
  host.openManager();
  host.click(2);
  host.click(5, true);
  host.forget();
  EXPECT_FALSE(isInSight(50));
  EXPECT_EQ(host.face->chooseDipole(50), 1);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 50);
  EXPECT_EQ(host.selectedRows(), Rows{50});
  EXPECT_EQ(host.selected(), Rows{50});
  EXPECT_EQ(host.focusedRow(), 50);
  EXPECT_TRUE(isInSight(50));
  expectNobodyWasTold();
  EXPECT_EQ(host.face->chooseDipole(0), 1);
  EXPECT_TRUE(isInSight(0));
}

TEST_F(ChosenDipole, IsFoundInASortedList) {
  host.openManager();
  host.clickHeading(2);
  host.clickHeading(2);  // the other way round
  host.face->deleteDipole(3, 1);
  host.face->updateDipoleList();
  host.face->chooseDipole(7);
  ASSERT_EQ(host.selectedRows().size(), 1U);
  EXPECT_EQ(host.cell(host.selectedRows().front(), 0), std::to_string(host.dipole(7).m_number));
}

TEST_F(ChosenDipole, HidesNoneWhileTheManagerShowsTheCurrentOneOnly) {
  host.openManager();
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  host.dipole(9).m_show = 0;
  const Rows shown = host.shown();
  host.forget();
  EXPECT_EQ(host.face->chooseDipole(9), 1);
  EXPECT_EQ(host.shown(), shown);
  EXPECT_EQ(host.selectedRows(), Rows{9});
  expectNobodyWasTold();
}

TEST_F(ChosenDipole, IsShownByTheEditors) {
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  const HWND editor = host.editor();
  host.face->dipoleEdit(&host.window);
  host.face->chooseDipole(33);
  for (const HWND window : openWindows("Current dipole")) {
    EXPECT_EQ(captionOf(window), "Current dipole (Total dipoles):33(60)");
    EXPECT_EQ(longTextOf(window, IDC_EDITOR_LABEL), "d34");
  }
  EXPECT_EQ(openWindows("Current dipole").size(), 2U);
  type(editor, IDC_EDITOR_LABEL, "typed");
  host.face->chooseDipole(-1);  // the same dipole
  EXPECT_EQ(longTextOf(editor, IDC_EDITOR_LABEL), "typed");
}

TEST_F(ChosenDipole, MayBeTheCurrentOneAsItIs) {
  host.openManager();
  host.face->setCurrentDipole(12);
  EXPECT_EQ(host.face->chooseDipole(-1), 1);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 12);
  EXPECT_EQ(host.selectedRows(), Rows{12});
}

TEST_F(ChosenDipole, ThatIsNotThereChangesNothing) {
  host.openManager();
  host.click(4);
  host.forget();
  host.face->deleteDipole(6, 0);  // leaves an empty slot
  for (const int none : {-2, 6, 60, 100000}) {
    EXPECT_EQ(host.face->chooseDipole(none), 0) << none;
    EXPECT_EQ(host.face->getCurrentDipoleID(), 4) << none;
    EXPECT_EQ(host.selectedRows(), Rows{4}) << none;
  }
  host.face->cleanDipoles();
  EXPECT_EQ(host.face->chooseDipole(-1), 0);
  EXPECT_EQ(host.face->chooseDipole(0), 0);
  EXPECT_EQ(messages.take(), Texts{});
}

TEST_F(ChosenDipole, NeedsNoWindow) {
  EXPECT_EQ(host.face->chooseDipole(20), 1);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 20);
  host.openManager().ShowWindow(SW_HIDE);
  EXPECT_EQ(host.face->chooseDipole(21), 1);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 21);
}

}  // namespace
