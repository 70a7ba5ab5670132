// The commands that show, hide and delete, with nothing, one, several or all rows selected.
#include <gtest/gtest.h>

#include "tests/ui/windows/Host.h"
#include "tests/ui/windows/Spy.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;
using Texts = std::vector<std::string>;

void select(Host& host, const Rows& rows) {
  bool further = false;
  for (const int row : rows) {
    host.click(row, further);
    further = true;
  }
  host.forget();
}

Rows images(const Host& host) {
  Rows seen;
  for (int row = 0; row < host.rows(); ++row) {
    seen.push_back(host.image(row));
  }
  return seen;
}

void choose(Host& host, UINT command) {
  const SentMessages sent(host.list());
  host.choose(command);
  EXPECT_EQ(sent.count(LVM_DELETEALLITEMS), 1) << "one refill";
  EXPECT_EQ(host.updates(), 1) << "one call of the host";
  EXPECT_EQ(host.selectedRows(), Rows{});
}

struct Case {
  Rows selected;
  Rows result;
  int current;
};

TEST(ManagerShow, ShowsTheSelectedAndMakesTheLastCurrent) {
  for (const Case& each : {Case{{}, {0, 0, 0, 0}, 0}, Case{{2}, {0, 0, 1, 0}, 2},
                           Case{{3, 1}, {0, 1, 0, 1}, 3}, Case{{0, 1, 2, 3}, {1, 1, 1, 1}, 3}}) {
    Host host(4);
    host.face->setShowAllDipole(0);
    host.openManager();
    select(host, each.selected);
    choose(host, ID_DIPOLE_SHOW);
    EXPECT_EQ(host.shown(), each.result);
    EXPECT_EQ(host.face->getCurrentDipoleID(), each.current);
  }
}

TEST(ManagerShow, PicturesFollow) {
  Host host(4);
  host.openManager();
  select(host, {1, 2});
  choose(host, ID_DIPOLE_HIDE);
  EXPECT_EQ(images(host), (Rows{0, 1, 1, 0}));
  select(host, {2});
  choose(host, ID_DIPOLE_SHOW);
  EXPECT_EQ(images(host), (Rows{0, 1, 0, 0}));
}

// Hiding the current dipole makes the last one that is still shown the current one.
TEST(ManagerHide, LeavesTheLastShownDipoleCurrent) {
  for (const Case& each : {Case{{}, {1, 1, 1, 1}, 0}, Case{{0}, {0, 1, 1, 1}, 3},
                           Case{{1, 3}, {1, 0, 1, 0}, 2}, Case{{0, 1, 2, 3}, {0, 0, 0, 0}, 3}}) {
    Host host(4);
    host.openManager();
    select(host, each.selected);
    choose(host, ID_DIPOLE_HIDE);
    EXPECT_EQ(host.shown(), each.result);
    EXPECT_EQ(host.face->getCurrentDipoleID(), each.current);
  }
}

TEST(ManagerDelete, RemovesTheSelectedAndKeepsTheNumbersOfTheOthers) {
  for (const Case& each : {Case{{}, {1, 2, 3, 4}, 0}, Case{{0}, {2, 3, 4}, 0}, Case{{3}, {1, 2, 3}, 2},
                           Case{{1, 2}, {1, 4}, 1}, Case{{0, 1, 2, 3}, {}, 0}}) {
    Host host(4);
    host.openManager();
    select(host, each.selected);
    choose(host, ID_DIPOLE_DELETE);
    EXPECT_EQ(host.numbers(), each.result);
    EXPECT_EQ(host.rows(), static_cast<int>(each.result.size()));
    EXPECT_EQ(host.face->getCurrentDipoleID(), each.current);
  }
}

TEST(ManagerDelete, ClosesGapsThatWereThere) {
  Host host(5);
  host.openManager();
  host.face->deleteDipole(1, 0);
  select(host, {3});
  choose(host, ID_DIPOLE_DELETE);
  EXPECT_EQ(host.numbers(), (Rows{1, 3, 5}));
  EXPECT_EQ(host.column(0), (Texts{"1", "3", "5"}));
}

TEST(ManagerDelete, TakesWhatIsSelectedInASortedList) {
  Host host(4);
  host.dipole(0).m_latency = 100.0;
  host.openManager();
  host.clickHeading(1);  // 2, 3, 4, 1
  select(host, {0, 3});
  choose(host, ID_DIPOLE_DELETE);
  EXPECT_EQ(host.numbers(), (Rows{3, 4}));
}

TEST(ManagerDelete, TakesTheRowsAsTheyWereShownAfterTheHostHasSorted) {
  Host host(4);
  host.dipole(0).m_latency = 100.0;
  host.openManager();
  select(host, {0, 1});       // numbers 1 and 2
  host.face->sortDipoles(1);  // the list still shows the old order
  choose(host, ID_DIPOLE_DELETE);
  EXPECT_EQ(host.numbers(), (Rows{3, 4}));
}

TEST(ManagerDelete, AllAtOnceByKeyboard) {
  Host host(300);
  host.openManager();
  host.key('A', true);
  host.forget();
  choose(host, ID_DIPOLE_DELETE);
  EXPECT_EQ(host.face->getTotalDipoles(), 0U);
  EXPECT_EQ(host.rows(), 0);
}

TEST(ManagerShowAll, WorksFromMenuAndButtons) {
  for (const bool byButton : {false, true}) {
    Host host(3);
    host.openManager();
    select(host, {1});
    const auto run = [&](int id) {
      host.forget();
      if (byButton) {
        host.check(id);
      } else {
        host.choose(static_cast<UINT>(id));
      }
      EXPECT_EQ(host.updates(), 1);
    };
    run(ID_DIPOLE_HIDE_ALL);
    EXPECT_EQ(host.shown(), (Rows{0, 0, 0}));
    EXPECT_EQ(images(host), (Rows{1, 1, 1}));
    EXPECT_EQ(host.face->getCurrentDipoleID(), 1);
    run(ID_DIPOLE_SHOW_ALL);
    EXPECT_EQ(host.shown(), (Rows{1, 1, 1}));
    EXPECT_EQ(images(host), (Rows{0, 0, 0}));
    EXPECT_EQ(host.face->getCurrentDipoleID(), 1);
  }
}

TEST(ManagerButtons, HaveTheirTexts) {
  Host host;
  host.openManager();
  EXPECT_EQ(captionOf(host.manager()), "Dipole Manager");
  EXPECT_EQ(textOf(host.manager(), ID_DIPOLE_SHOW_ALL), "&Show All");
  EXPECT_EQ(textOf(host.manager(), ID_DIPOLE_HIDE_ALL), "&Hide  All");
  EXPECT_EQ(textOf(host.manager(), IDC_MANAGER_DYNAMIC_UPDATE), "&Dynamic update...");
  EXPECT_EQ(textOf(host.manager(), IDC_MANAGER_SHOW_ORIENTATION), "Show &Orientation");
  EXPECT_EQ(::IsDlgButtonChecked(host.manager(), IDC_MANAGER_DYNAMIC_UPDATE), UINT{BST_UNCHECKED});
  EXPECT_EQ(::IsDlgButtonChecked(host.manager(), IDC_MANAGER_SHOW_ORIENTATION), UINT{BST_CHECKED});
}

TEST(ManagerNothingSelected, ChangesNothingWithoutACurrentDipole) {
  for (const UINT command : {ID_DIPOLE_DELETE, ID_DIPOLE_SHOW, ID_DIPOLE_HIDE}) {
    Host host(3);
    host.openManager();
    host.face->m_currentDipole = -1;
    host.click(1);
    EXPECT_EQ(host.selectedRows(), Rows{1});
    EXPECT_EQ(host.selected(), Rows{});  // a row means nothing without a current dipole
    EXPECT_EQ(host.face->getCurrentDipoleID(), -1);
    host.forget();
    choose(host, command);
    EXPECT_EQ(host.numbers(), (Rows{1, 2, 3}));
    EXPECT_EQ(host.shown(), (Rows{1, 1, 1}));
    EXPECT_EQ(host.face->getCurrentDipoleID(), command == ID_DIPOLE_DELETE ? 0 : -1);
  }
}

TEST(ManagerEmptySet, CommandsOnlyTellTheHost) {
  for (const UINT command :
       {ID_DIPOLE_DELETE, ID_DIPOLE_SHOW, ID_DIPOLE_HIDE, ID_DIPOLE_SHOW_ALL, ID_DIPOLE_HIDE_ALL,
        ID_DIPOLE_AVERAGE_AS, ID_DIPOLE_AVERAGE_ZIP, ID_DIPOLE_NAME_SELECTED, ID_DIPOLE_COLOR_SELECTED}) {
    Host host;
    host.openManager();
    host.choose(command);  // a dialog would stop the test here
    EXPECT_EQ(host.updates(), 1) << command;
    EXPECT_EQ(host.face->getTotalDipoles(), 0U);
    EXPECT_EQ(host.rows(), 0);
  }
}

TEST(ManagerCommands, OfTheWindowDoNotTellTheHost) {
  for (const UINT command : {ID_DIPOLE_EDIT, ID_DIPOLE_SHOW_CURRENT_ONLY, ID_DIPOLE_EXIT}) {
    Host host(2);
    host.openManager();
    host.choose(command);
    EXPECT_EQ(host.updates(), 0) << command;
  }
}

// The manager that a copy of a destroyed collection still has.
TEST(ManagerWithoutACollection, DoesNothing) {
  Host host(2);
  host.openManager();
  const auto copy = std::make_unique<CDipoleFacezq>(*host.face);
  const HWND manager = host.manager();
  host.face.reset();
  EXPECT_FALSE(::IsWindowVisible(manager));
  for (const UINT command :
       {ID_DIPOLE_DELETE, ID_DIPOLE_SHOW, ID_DIPOLE_HIDE, ID_DIPOLE_SHOW_ALL, ID_DIPOLE_HIDE_ALL,
        ID_DIPOLE_AVERAGE_AS, ID_DIPOLE_AVERAGE_ZIP, ID_DIPOLE_NAME_SELECTED, ID_DIPOLE_COLOR_SELECTED,
        ID_DIPOLE_SHOW_CURRENT_ONLY, ID_DIPOLE_EDIT, ID_DIPOLE_IMPORT_CTF, ID_DIPOLE_EXPORT_EXCEL,
        IDC_MANAGER_DYNAMIC_UPDATE, IDC_MANAGER_SHOW_ORIENTATION}) {
    ::SendMessageW(manager, WM_COMMAND, command, 0);
    pump();
  }
  EXPECT_EQ(host.updates(), 0);
  EXPECT_EQ(host.editor(), nullptr);
  EXPECT_EQ(copy->getTotalDipoles(), 2U);
  // The list has its rows still, and they do nothing.
  const HWND list = ::GetDlgItem(manager, IDC_MANAGER_LIST);
  for (const UINT key : {VK_DOWN, VK_UP, VK_END}) {
    ::SendMessageW(list, WM_KEYDOWN, key, 1);
  }
  EXPECT_EQ(copy->getCurrentDipoleID(), 0);
  EXPECT_TRUE(host.positions().empty());
}

TEST(ManagerChecks, DynamicUpdateTellsTheHost) {
  Host host(2);
  host.openManager();
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  EXPECT_EQ(host.updates(), 1);
  host.check(IDC_MANAGER_DYNAMIC_UPDATE);
  EXPECT_EQ(host.updates(), 2);
}

TEST(ManagerChecks, ShowOrientationIsOfTheSetAlone) {
  Host host(2);
  host.dipole(1).m_showOrientation = 0;
  host.openManager();
  host.face->m_showDipoleOrientationAll = 5;
  host.check(IDC_MANAGER_SHOW_ORIENTATION);
  EXPECT_EQ(host.face->m_showDipoleOrientationAll, 0);
  EXPECT_EQ(host.updates(), 1);
  host.check(IDC_MANAGER_SHOW_ORIENTATION);
  EXPECT_EQ(host.face->m_showDipoleOrientationAll, 1);
  EXPECT_EQ(host.updates(), 2);
  EXPECT_EQ(host.dipole(0).m_showOrientation, 1);
  EXPECT_EQ(host.dipole(1).m_showOrientation, 0);
}

TEST(ManagerCommands, ThatRepaintTheHostAreTheHosts) {
  Host host(3);
  host.openManager();
  host.choose(ID_DIPOLE_HIDE_ALL);
  EXPECT_FALSE(host.wasRepainted());  // it is told, and draws what it thinks fit
}

}  // namespace
