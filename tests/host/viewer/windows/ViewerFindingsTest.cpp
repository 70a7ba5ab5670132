// What is found about imported files reaches the eye, by whatever way they come, and is repaired by buttons.
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/host/viewer/windows/ViewerUser.h"
#include "tests/platform/windows/Robot.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"
#include "ui/resource.h"

namespace {

static_assert(ID_MANAGER_IMPORT_CTF == ID_DIPOLE_IMPORT_CTF);

// 5.2 cm to the left, without a word of the unit, and a third dipole without a label.
const std::string noUnit =
    "Dipoles\n{\n// xp yp zp xo yo zo Mom(nAm) Label\n"
    "1: 1.0 5.2 5.8 0 0 1 20 left\n2: 1.3 -5.1 5.6 0 0 1 30 right\n3: 1.4 -5.0 5.5 0 0 1 30\n}\n"
    "Dipole_FitInfo\n{\n// Trial Start Latency (s)\n"
    "1: 1 1 0.1 5 5 0 0 0 1 a\n2: 1 1 0.1 5 5 0 0 0 1 a\n3: 1 1 0.1 5 5 0 0 0 1 a\n}\n";
const std::string otherColumns =
    "Latency  x  y  z  Qx  Qy  Qz  Rad  |Q|  RMS  Vol  Corr  Iter  GOF  A  B  C  Label\n"
    "20.0 1.5 5.0 6.0 9.0 2.0 -1.0 4.5 22.0 0.3 0.5 0.97 7 0.75 b c 1 first\n";

class ViewerFindings : public testing::Test {
 protected:
  std::string file(const std::string& name, const std::string& text) {
    m_folder.write(name, text);
    return m_folder.pathUtf8(name);
  }
  void importByMenu(const std::string& path) {
    m_operator.answerFilesUtf8({path});
    m_user.choose(ID_FILE_IMPORT);
  }
  HWND window() { return m_user.frame().findingsWindow().m_hWnd; }
  bool isOpen() { return ::IsWindowVisible(window()) != FALSE; }
  HWND bar() { return m_user.frame().warningBar().m_hWnd; }
  std::string barText() { return ::IsWindowVisible(bar()) != FALSE ? captionOf(bar()) : ""; }
  HWND list() { return ::GetDlgItem(window(), IDC_FINDING_LIST); }
  int rows() { return static_cast<int>(::SendMessageW(list(), LVM_GETITEMCOUNT, 0, 0)); }
  std::string cell(int row, int column) {
    TCHAR text[512] = {};
    ListView_GetItemText(list(), row, column, text, 512);
    return toUtf8(text);
  }
  void chooseRow(int row) {
    ListView_SetItemState(list(), -1, 0, LVIS_SELECTED);
    ListView_SetItemState(list(), row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    m_user.wait();
  }
  void pressButton(int button) {
    ASSERT_TRUE(::IsWindowEnabled(::GetDlgItem(window(), button)) != FALSE);
    ::press(window(), button);
    m_user.wait();
  }
  bool isEnabled(int button) { return ::IsWindowEnabled(::GetDlgItem(window(), button)) != FALSE; }
  std::string lastMessage() { return m_operator.messages.empty() ? "" : m_operator.messages.back().text; }
  double left(int slot) { return m_user.dipoles().getDipole(slot)->m_location[0]; }
  int top(int pane) {
    CRect place;
    m_user.frame().pane(pane).GetWindowRect(&place);
    return place.top;
  }

  TempFolder m_folder;
  ScriptedOperator m_operator;
  ViewerUser m_user;
};

TEST_F(ViewerFindings, ACleanImportShowsNeitherWindowNorBar) {
  importByMenu(examplesFolder() + "auditory.dip");
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(barText(), "");
}

TEST_F(ViewerFindings, AnImportOpensTheWindowAndTheBarStandsAboveThePanes) {
  const int before = top(0);
  importByMenu(file("a.dip", noUnit));
  EXPECT_TRUE(isOpen());
  ASSERT_EQ(rows(), 2);
  EXPECT_EQ(cell(0, 0), "a.dip");
  EXPECT_EQ(cell(0, 1), "wrong");
  EXPECT_EQ(cell(0, 2), "unit");
  EXPECT_EQ(cell(0, 3), "4");
  EXPECT_EQ(cell(1, 2), "labels");
  const std::string text = textOf(window(), IDC_FINDING_TEXT);
  EXPECT_NE(text.find("a.dip:4: wrong (unit): The file does not say"), std::string::npos) << text;
  EXPECT_NE(text.find("Dipoles concerned: 3: 1 left, 2 right, 3 right."), std::string::npos) << text;
  EXPECT_NE(text.find("Remedy: "), std::string::npos) << text;
  EXPECT_EQ(barText().rfind("WRONG (1 of 2): a.dip: The file does not say", 0), 0U) << barText();
  EXPECT_GT(top(0), before);
  EXPECT_EQ(m_operator.messages.size(), 1U);  // the sum; the findings are in the window alone
}

TEST_F(ViewerFindings, AClickOnTheBarOpensTheWindowAgain) {
  importByMenu(file("a.dip", noUnit));
  pressButton(IDCANCEL);
  EXPECT_FALSE(isOpen());
  ::SendMessageW(bar(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 8));
  ::SendMessageW(bar(), WM_LBUTTONUP, 0, MAKELPARAM(20, 8));
  m_user.wait();
  EXPECT_TRUE(isOpen());
}

TEST_F(ViewerFindings, ButtonsRepairWhatIsChosenAndTellItAndUndoBringsItBack) {
  importByMenu(file("a.dip", noUnit));
  chooseRow(0);
  EXPECT_FALSE(isEnabled(IDC_FINDING_REPAIR));  // first it must be known in which unit
  pressButton(IDC_FINDING_CM);
  EXPECT_EQ(lastMessage(), "a.dip: 3 dipoles: the position was taken as cm.\n");
  EXPECT_EQ(left(0), 52);
  ASSERT_EQ(rows(), 1);
  EXPECT_EQ(barText().rfind("WRONG: a.dip: Dipoles without a label", 0), 0U) << barText();
  chooseRow(0);
  EXPECT_FALSE(isEnabled(IDC_FINDING_CM));
  pressButton(IDC_FINDING_REPAIR);
  EXPECT_EQ(rows(), 0);
  EXPECT_EQ(barText(), "");
  EXPECT_EQ(m_user.session().history().undoSteps(), 3U);
  m_user.choose(ID_DIPOLES_UNDO);
  m_user.choose(ID_DIPOLES_UNDO);
  EXPECT_EQ(rows(), 2);
  EXPECT_NE(barText(), "");
  m_user.choose(ID_DIPOLES_UNDO);
  EXPECT_EQ(rows(), 0);
  EXPECT_EQ(barText(), "");
  m_user.choose(ID_DIPOLES_REDO);
  EXPECT_EQ(rows(), 2);
  EXPECT_NE(barText(), "");
}

TEST_F(ViewerFindings, WhatIsWrongIsWrittenIntoThePicture) {
  static constexpr host::Rgb band{168, 24, 32};
  const auto isMarked = [this] { return m_user.frame().currentPicture().pixels().front() == band; };
  EXPECT_FALSE(isMarked());
  importByMenu(file("a.dip", noUnit));
  EXPECT_TRUE(isMarked());
  m_user.choose(ID_DIPOLES_UNDO);
  EXPECT_FALSE(isMarked());
}

TEST_F(ViewerFindings, TheManagersOwnImportIsAuditedToo) {
  m_user.choose(ID_DIPOLES_MANAGER);
  m_operator.answerFilesUtf8({file("a.dip", noUnit)});
  ::SendMessageW(m_user.manager(), WM_COMMAND, ID_DIPOLE_IMPORT_CTF, 0);
  m_user.wait();
  EXPECT_EQ(m_user.dipoles().m_totalDipoles, 3);
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(rows(), 2);
  EXPECT_EQ(ListView_GetItemCount(m_user.list()), 3);
  EXPECT_EQ(lastMessage().find("Total imported"), std::string::npos) << lastMessage();
}

TEST_F(ViewerFindings, DroppedTablesAreAuditedToo) {
  m_user.drop({file("a.txt", otherColumns)});
  EXPECT_TRUE(isOpen());
  ASSERT_EQ(rows(), 1);
  EXPECT_EQ(cell(0, 2), "msi-columns");
  pressButton(IDC_FINDING_REPAIR);
  EXPECT_EQ(m_user.dipoles().getDipole(0)->m_moment, 22);
  EXPECT_EQ(rows(), 0);
}

TEST_F(ViewerFindings, DipolesThatWereChangedSinceAreNotRepairedAndThisIsTold) {
  importByMenu(file("a.dip", noUnit));
  m_user.dipoles().getDipole(1)->m_location[0] = 7;
  chooseRow(0);
  pressButton(IDC_FINDING_CM);
  EXPECT_NE(lastMessage().find("were changed or averaged since the import"), std::string::npos)
      << lastMessage();
  EXPECT_EQ(left(1), 7);
  EXPECT_EQ(rows(), 2);
}

}  // namespace
