// A dipole that the host makes the current one, and what the module's windows then show.
#include <gtest/gtest.h>

#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;

class ChosenDipole : public testing::Test {
 protected:
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
  EXPECT_FALSE(host.isInSight(50));
  EXPECT_EQ(host.face->chooseDipole(50), 1);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 50);
  EXPECT_EQ(host.selectedRows(), Rows{50});
  EXPECT_EQ(host.selected(), Rows{50});
  EXPECT_EQ(host.focusedRow(), 50);
  EXPECT_TRUE(host.isInSight(50));
  expectNobodyWasTold();
  EXPECT_EQ(host.face->chooseDipole(0), 1);
  EXPECT_TRUE(host.isInSight(0));
}

// The list shows the order in which it was filled until it is filled again.
TEST_F(ChosenDipole, IsFoundByItsRowWhereverItStandsInTheSet) {
  host.dipole(7).m_latency = 0.1;  // to the front
  host.openManager();
  host.face->sortDipoles(1);
  ASSERT_EQ(host.dipole(0).m_number, 8);
  host.face->chooseDipole(0);
  EXPECT_EQ(host.selectedRows(), Rows{7});
  EXPECT_EQ(host.selected(), Rows{0});
  host.face->updateDipoleList();
  host.face->chooseDipole(0);
  EXPECT_EQ(host.selectedRows(), Rows{0});
  EXPECT_EQ(host.cell(0, 0), "8");
}

TEST_F(ChosenDipole, IsNotMistakenForTheSelectedOnesWhenTheListDoesNotHaveItYet) {
  host.openManager();
  host.click(5);
  host.addDipoles(1);
  host.face->chooseDipole(60);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 60);
  EXPECT_EQ(host.selectedRows(), Rows{});
  EXPECT_EQ(host.selected(), Rows{});
  host.choose(ID_DIPOLE_DELETE);  // of none
  EXPECT_EQ(host.face->getTotalDipoles(), 61U);
  host.face->chooseDipole(60);
  EXPECT_EQ(host.selectedRows(), Rows{60});
}

// A copy has its model's row until the list is filled again.
TEST_F(ChosenDipole, IsNotMistakenForTheDipoleOfWhichItIsACopy) {
  host.openManager();
  host.click(5);
  host.face->addDipolex(host.face->getDipole(0));
  for (const int either : {60, 0}) {
    EXPECT_EQ(host.face->chooseDipole(either), 1);
    EXPECT_EQ(host.face->getCurrentDipoleID(), either);
    EXPECT_EQ(host.selectedRows(), Rows{});
    EXPECT_EQ(host.selected(), Rows{});
    host.choose(ID_DIPOLE_DELETE);  // of none
    EXPECT_EQ(host.face->getTotalDipoles(), 61U);
    host.face->deleteDipole(60, 1);
    host.face->addDipolex(host.face->getDipole(0));
  }
  host.face->updateDipoleList();
  host.face->chooseDipole(60);
  EXPECT_EQ(host.selectedRows(), Rows{60});
  EXPECT_EQ(host.selected(), Rows{60});
}

TEST_F(ChosenDipole, HasNotTheRowOfADeletedOneOfWhichItIsACopy) {
  host.openManager();
  host.face->addDipolex(host.face->getDipole(3));
  host.face->deleteDipole(3, 1);
  host.face->chooseDipole(59);
  EXPECT_EQ(host.selectedRows(), Rows{});
  EXPECT_EQ(host.selected(), Rows{});
}

TEST_F(ChosenDipole, BehindAnEmptySlotHasNoRow) {
  host.openManager();
  host.face->deleteDipole(4, 0);
  host.face->updateDipoleList();
  ASSERT_EQ(host.rows(), 4);
  host.addDipoles(1);
  host.dipole(60).m_listItemId = 2;  // as of a dipole that was copied
  host.face->updateDipoleList();
  host.face->chooseDipole(60);
  EXPECT_EQ(host.selectedRows(), Rows{});
  host.click(2);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 2);
}

TEST_F(ChosenDipole, OfASetLeavesAManagerAloneThatACopyHasTakenOver) {
  host.openManager();
  const auto copy = std::make_unique<CDipoleFacezq>(*host.face);
  copy->showDipoleList(&host.window, nullptr);
  host.click(2);
  host.click(5, true);
  EXPECT_EQ(host.face->chooseDipole(40), 1);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 40);
  EXPECT_EQ(copy->getCurrentDipoleID(), 5);
  EXPECT_EQ(host.selectedRows(), (Rows{2, 5}));
  EXPECT_EQ(host.selected(), (Rows{2, 5}));
  EXPECT_EQ(copy->chooseDipole(40), 1);
  EXPECT_EQ(host.selectedRows(), Rows{40});
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
