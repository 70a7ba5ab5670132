// The Dipole Edit dialog: adding, deleting and stepping, alone and beside the manager's list.
#include "collection/DipoleTable.h"
#include "tests/ui/windows/EditorTest.h"

namespace {

using Rows = std::vector<int>;

const std::string none = "No dipole available";

class EditorSteps : public EditorTest {};

TEST_F(EditorSteps, NextGoesRoundAndShowsEachDipole) {
  open(3);
  for (const char* const label : {"d2", "d3", "d1"}) {
    push(IDC_EDITOR_NEXT);
    EXPECT_EQ(field(IDC_EDITOR_LABEL), label);
  }
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):0(3)");
  EXPECT_EQ(field(IDC_EDITOR_LOCATION_Y), "10");
}

TEST_F(EditorSteps, PreviousGoesRoundTheOtherWay) {
  open(3);
  push(IDC_EDITOR_PREVIOUS);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):2(3)");
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d3");
  push(IDC_EDITOR_PREVIOUS);
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d2");
}

TEST_F(EditorSteps, StepsOfOneDipoleStay) {
  open(1);
  push(IDC_EDITOR_NEXT);
  push(IDC_EDITOR_PREVIOUS);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):0(1)");
}

TEST_F(EditorSteps, StepsOfAnEmptySetSayThatThereIsNone) {
  open(0);
  push(IDC_EDITOR_NEXT);
  EXPECT_EQ(messages.take(), Texts{none});
  push(IDC_EDITOR_PREVIOUS);
  EXPECT_EQ(messages.take(), Texts{none});
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):0(0)");
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "Dipole Label");
}

TEST_F(EditorSteps, StepsApplyNothing) {
  open(2);
  enter(IDC_EDITOR_SIZE, "8");
  push(IDC_EDITOR_NEXT);
  EXPECT_EQ(dipole(0).m_size, 3.0);
  EXPECT_EQ(dipole(1).m_size, 3.0);
  EXPECT_FALSE(host->wasRepainted());
}

TEST_F(EditorSteps, AddMakesADipoleAndShowsIt) {
  open(2);
  push(IDC_EDITOR_ADD);
  EXPECT_EQ(face().getTotalDipoles(), 3U);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):2(3)");
  EXPECT_EQ(field(IDC_EDITOR_LOCATION_X), "100");
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "Non");
  EXPECT_FALSE(host->wasRepainted());
}

TEST_F(EditorSteps, AddToAnEmptySetFillsTheFields) {
  open(0);
  push(IDC_EDITOR_ADD);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):0(1)");
  EXPECT_EQ(field(IDC_EDITOR_SIZE), "3");
  EXPECT_TRUE(isChecked(window, IDC_EDITOR_SHOW_ORIENTATION));
}

TEST_F(EditorSteps, AddToAFullTableSaysSoAndAddsNothing) {
  make(1);
  while (face().m_totalDipoles < DipoleTable::capacity) {
    face().addDipole();
  }
  face().setCurrentDipole(7);
  show();
  push(IDC_EDITOR_ADD);
  EXPECT_EQ(messages.take(), Texts{"No more dipole space"});
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):7(30000)");
}

TEST_F(EditorSteps, DeleteAsksNothingAndShowsTheDipoleBehind) {
  make(3);
  face().setCurrentDipole(1);
  show();
  push(IDC_EDITOR_DELETE);
  EXPECT_EQ(host->labels(), (Texts{"d1", "d3"}));
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):1(2)");
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d3");
  push(IDC_EDITOR_DELETE);
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d1");
}

TEST_F(EditorSteps, DeletingTheLastDipoleLeavesAnEditorThatWorksOn) {
  open(1);
  push(IDC_EDITOR_DELETE);
  EXPECT_EQ(face().getTotalDipoles(), 0U);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):-1(0)");
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d1");  // the fields keep their values
  enter(IDC_EDITOR_LABEL, "nobody's");
  push(IDC_EDITOR_APPLY);
  push(IDC_EDITOR_DELETE);
  push(IDC_EDITOR_COLOR);
  push(IDC_EDITOR_SHOW_ORIENTATION);
  EXPECT_EQ(messages.take(), Texts{});
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):-1(0)");
  push(IDC_EDITOR_ADD);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):0(1)");
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "Non");
}

TEST_F(EditorSteps, ShowSetsEveryDipoleAndRepaints) {
  open(3);
  push(IDC_EDITOR_SHOW_ORIENTATION);
  EXPECT_EQ(face().m_showDipoleOrientationAll, 0);
  for (int slot = 0; slot < 3; ++slot) {
    EXPECT_EQ(dipole(slot).m_showOrientation, 0) << slot;
  }
  EXPECT_TRUE(host->wasRepainted());
  push(IDC_EDITOR_SHOW_ORIENTATION);
  EXPECT_EQ(face().m_showDipoleOrientationAll, 1);
  for (int slot = 0; slot < 3; ++slot) {
    EXPECT_EQ(dipole(slot).m_showOrientation, 1) << slot;
  }
}

TEST_F(EditorSteps, ShowStoresNoOtherField) {
  open(1);
  enter(IDC_EDITOR_SIZE, "8");
  enter(IDC_EDITOR_MERGE_RADIUS, "20");
  push(IDC_EDITOR_SHOW_ORIENTATION);
  EXPECT_EQ(dipole(0).m_size, 3.0);
  EXPECT_EQ(face().m_mergeRadius, 15.0F);
  EXPECT_EQ(field(IDC_EDITOR_SIZE), "8");  // still to be applied
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(dipole(0).m_size, 8.0);
}

TEST_F(EditorSteps, NextChoosesTheRowInTheManagersListAndTellsNobody) {
  openFromManager(4);
  ::CheckDlgButton(host->manager(), IDC_MANAGER_DYNAMIC_UPDATE, BST_CHECKED);
  host->choose(IDC_MANAGER_DYNAMIC_UPDATE);
  host->forget();
  push(IDC_EDITOR_NEXT);
  EXPECT_EQ(host->selectedRows(), Rows{1});
  EXPECT_EQ(host->focusedRow(), 1);
  EXPECT_EQ(host->selected(), Rows{1});
  EXPECT_EQ(face().getCurrentDipoleID(), 1);
  push(IDC_EDITOR_PREVIOUS);
  push(IDC_EDITOR_PREVIOUS);
  EXPECT_EQ(host->selectedRows(), Rows{3});
  EXPECT_TRUE(host->positions().empty());
  EXPECT_EQ(host->updates(), 0);
}

TEST_F(EditorSteps, NextScrollsTheManagersListToTheRow) {
  openFromManager(200);
  EXPECT_FALSE(host->isInSight(199));
  push(IDC_EDITOR_PREVIOUS);
  EXPECT_TRUE(host->isInSight(199));
  push(IDC_EDITOR_NEXT);
  EXPECT_TRUE(host->isInSight(0));
}

TEST_F(EditorSteps, NextOfTheHostsEditorLeavesTheListAlone) {
  make(3);
  host->openManager();
  host->click(2);
  show();
  push(IDC_EDITOR_NEXT);
  EXPECT_EQ(face().getCurrentDipoleID(), 0);
  EXPECT_EQ(host->selectedRows(), Rows{2});
}

TEST_F(EditorSteps, ApplyFillsTheManagersListAnew) {
  openFromManager(2);
  enter(IDC_EDITOR_LOCATION_X, "55");
  enter(IDC_EDITOR_LABEL, "new");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(host->cell(0, 2), "55.0000");
  EXPECT_EQ(host->cell(0, 10), "new");
  EXPECT_EQ(host->updates(), 0);
}

TEST_F(EditorSteps, ApplyLeavesAHiddenList) {
  openFromManager(2);
  ::ShowWindow(host->manager(), SW_HIDE);
  enter(IDC_EDITOR_LABEL, "new");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(toUtf8(dipole(0).m_label), "new");
  EXPECT_EQ(host->cell(0, 10), "d1");
}

TEST_F(EditorSteps, ApplyOfTheHostsEditorChangesTheRowToo) {
  make(2);
  host->openManager();
  show();
  enter(IDC_EDITOR_LABEL, "new");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(host->cell(0, 10), "new");
}

// The memory of a dipole that goes would be the next one's.
TEST_F(EditorSteps, WhatIsTypedIsNeverLeftToADipoleThatIsNew) {
  openFromManager(4);
  for (int round = 0; round < 20; ++round) {
    host->click(face().m_totalDipoles - 1);
    enter(IDC_EDITOR_SIZE, "8");
    host->choose(ID_DIPOLE_AVERAGE_ZIP);  // removes that one and adds another
    EXPECT_EQ(field(IDC_EDITOR_LABEL), "AverageDipole1");
    EXPECT_NE(field(IDC_EDITOR_SIZE), "8");
  }
  face().cleanDipoles();
  host->addDipoles(4);
  face().updateDipoleEditor();
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d4");
}

TEST_F(EditorSteps, CommandsOfTheManagerLeaveWhatIsTypedForTheSameDipole) {
  openFromManager(3);
  enter(IDC_EDITOR_LOCATION_X, "55");
  host->choose(ID_DIPOLE_HIDE_ALL);
  EXPECT_EQ(field(IDC_EDITOR_LOCATION_X), "55");
  face().deleteDipole(2, 1);
  host->choose(ID_DIPOLE_SHOW_ALL);
  EXPECT_EQ(field(IDC_EDITOR_LOCATION_X), "55");
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):0(2)");
  face().setCurrentDipole(1);
  host->choose(ID_DIPOLE_SHOW_ALL);
  EXPECT_EQ(field(IDC_EDITOR_LOCATION_X), "2") << "another dipole's number";
}

TEST_F(EditorSteps, ADipoleThatTheHostMadeCurrentIsShownWhenTheUserComesBack) {
  openFromManager(3);
  face().setCurrentDipole(2);
  ::SendMessageW(window, WM_ACTIVATE, WA_INACTIVE, 0);
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d1");
  ::SendMessageW(window, WM_ACTIVATE, WA_ACTIVE, 0);
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d3");
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):2(3)");
}

TEST_F(EditorSteps, AddAndDeleteChangeTheManagersRows) {
  openFromManager(2);
  push(IDC_EDITOR_ADD);
  EXPECT_EQ(host->column(10), (Texts{"d1", "d2", "Non"}));
  push(IDC_EDITOR_DELETE);
  push(IDC_EDITOR_DELETE);
  EXPECT_EQ(host->column(10), Texts{"d1"});
  push(IDC_EDITOR_DELETE);
  EXPECT_EQ(host->rows(), 0);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):-1(0)");
}

TEST_F(EditorSteps, AddAndDeleteOfTheHostsEditorChangeTheRowsToo) {
  make(2);
  host->openManager();
  show();
  push(IDC_EDITOR_ADD);
  EXPECT_EQ(host->rows(), 3);
  push(IDC_EDITOR_DELETE);
  EXPECT_EQ(host->rows(), 2);
}

TEST_F(EditorSteps, TheHostsEditorAndTheManagersAreTwo) {
  openFromManager(2);
  face().dipoleEdit(&host->window);
  const std::vector<HWND> editors = openWindows("Current dipole");
  ASSERT_EQ(editors.size(), 2U);
  EXPECT_NE(editors[0], editors[1]);
  push(IDC_EDITOR_DELETE);
  for (const HWND editor : editors) {
    EXPECT_EQ(captionOf(editor), "Current dipole (Total dipoles):0(1)");
    EXPECT_EQ(longTextOf(editor, IDC_EDITOR_LABEL), "d2");
  }
}

TEST_F(EditorSteps, AnEditorShowsTheDipoleThatTheOtherWentTo) {
  openFromManager(3);
  face().dipoleEdit(&host->window);
  const std::vector<HWND> editors = openWindows("Current dipole");
  ASSERT_EQ(editors.size(), 2U);
  for (const HWND editor : editors) {
    press(editor, IDC_EDITOR_NEXT);
    EXPECT_EQ(longTextOf(editors[0], IDC_EDITOR_LABEL), longTextOf(editors[1], IDC_EDITOR_LABEL));
    EXPECT_EQ(captionOf(editors[0]), captionOf(editors[1]));
  }
}

TEST_F(EditorSteps, TheManagersEditorIsMadeOnceAndGoesWithTheManager) {
  openFromManager(2);
  push(IDOK);
  EXPECT_EQ(host->editor(), nullptr);
  host->choose(ID_DIPOLE_EDIT);
  EXPECT_EQ(host->editor(), window);
  ::DestroyWindow(host->manager());
  pump();
  EXPECT_FALSE(::IsWindow(window));
}

TEST_F(EditorSteps, ChoosingARowShowsItsDipole) {
  openFromManager(4);
  host->click(2);
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d3");
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):2(4)");
}

TEST_F(EditorSteps, AnArrowThatGoesRoundTheListShowsTheDipoleItCameTo) {
  openFromManager(3);
  host->click(0);
  host->key(VK_UP);  // the focus stays in the first row, the current dipole is the last one
  EXPECT_EQ(face().getCurrentDipoleID(), 2);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):2(3)");
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d3");
}

TEST_F(EditorSteps, SortingShowsTheDipoleThatIsCurrentAfterwards) {
  make(3);
  dipole(0).m_latency = 9.0;
  host->openManager();
  host->choose(ID_DIPOLE_EDIT);
  window = host->editor();
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d1");
  host->clickHeading(1);
  EXPECT_EQ(host->labels(), (Texts{"d2", "d3", "d1"}));
  EXPECT_EQ(face().getCurrentDipoleID(), 0);
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "d2");
}

TEST_F(EditorSteps, TheCollectionMayGoWhileTheSetIsSaidToBeEmpty) {
  open(0);
  messages.meanwhile([&] { host->face.reset(); });
  push(IDC_EDITOR_NEXT);
  EXPECT_EQ(messages.take(), Texts{none});
  EXPECT_FALSE(::IsWindow(window));
}

}  // namespace
