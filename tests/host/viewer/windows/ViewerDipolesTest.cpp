// The commands of the menu Dipoles, and the module's windows beside the viewer.
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/host/viewer/windows/ViewerUser.h"
#include "tests/platform/windows/Robot.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"
#include "ui/resource.h"

namespace {

std::string example(const char* name) {
  return examplesFolder() + name;
}

class ViewerDipoles : public testing::Test {
 protected:
  void importExample(const char* name) {
    m_operator.answerFilesUtf8({example(name)});
    m_user.choose(ID_FILE_IMPORT);
  }
  CDipoleFacezq& set() { return m_user.dipoles(); }
  std::string lastMessage() { return m_operator.messages.empty() ? "" : m_operator.messages.back().text; }
  void expectCrosshairAtCurrent() {
    const CDipoleszq* current = set().getCurrentDipole();
    ASSERT_NE(current, nullptr);
    EXPECT_DOUBLE_EQ(m_user.session().crosshair().x, current->m_location[0]);
    EXPECT_DOUBLE_EQ(m_user.session().crosshair().y, current->m_location[1]);
    EXPECT_DOUBLE_EQ(m_user.session().crosshair().z, current->m_location[2]);
  }

  static HWND editorWindow() {
    HWND found = nullptr;
    const auto look = [](HWND window, LPARAM parameter) -> BOOL {
      if (::IsWindowVisible(window) != FALSE && captionOf(window).rfind("Current dipole", 0) == 0) {
        *reinterpret_cast<HWND*>(parameter) = window;
      }
      return TRUE;
    };
    ::EnumThreadWindows(::GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&found));
    return found;
  }

  TempFolder m_folder;
  ScriptedOperator m_operator;
  ViewerUser m_user;
};

TEST_F(ViewerDipoles, ChoosingARowMovesTheCrosshairToItsDipole) {
  importExample("spikes.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  m_user.chooseRow(7);
  EXPECT_EQ(set().m_currentDipole, 7);
  expectCrosshairAtCurrent();
  EXPECT_NE(m_user.status(host::MainFrame::dipolePart).find("Dipole 8 of 120"), std::string::npos);
}

TEST_F(ViewerDipoles, RowThatShowsItsDipoleIsCountedAtOnce) {
  importExample("auditory.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  m_user.chooseRow(0);
  ::SendMessageW(m_user.manager(), WM_COMMAND, ID_DIPOLE_SHOW_CURRENT_ONLY, 0);
  ::SendMessageW(m_user.manager(), WM_COMMAND, ID_DIPOLE_HIDE_ALL, 0);
  m_user.waitQuiet();
  ASSERT_EQ(m_user.status(host::MainFrame::countPart).rfind("Dipoles shown: 0 of 2", 0), 0U);
  m_user.chooseRow(0);  // it is the current one already
  EXPECT_EQ(m_user.status(host::MainFrame::countPart).rfind("Dipoles shown: 1 of 2", 0), 0U);
}

TEST_F(ViewerDipoles, ArrowKeysOfTheListMoveTheCrosshair) {
  importExample("spikes.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  m_user.chooseRow(3);
  for (int row = 4; row < 10; ++row) {
    ::SendMessageW(m_user.list(), WM_KEYDOWN, VK_DOWN, 1);
    m_user.wait();
    ASSERT_EQ(set().m_currentDipole, row);
    expectCrosshairAtCurrent();
  }
}

TEST_F(ViewerDipoles, NextAndPreviousSelectTheRowInTheManager) {
  importExample("spikes.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  m_user.chooseRow(10);
  m_user.choose(ID_DIPOLES_NEXT);
  EXPECT_EQ(m_user.selectedRows(), std::vector<int>{11});
  EXPECT_EQ(set().m_currentDipole, 11);
  m_user.choose(ID_DIPOLES_PREVIOUS);
  m_user.choose(ID_DIPOLES_PREVIOUS);
  EXPECT_EQ(m_user.selectedRows(), std::vector<int>{9});
  expectCrosshairAtCurrent();
}

// The row that the user chose there hides the others, not the one that the viewer chooses.
TEST_F(ViewerDipoles, DipoleTakenInTheViewerHidesNoneWhileTheManagerShowsTheCurrentOneOnly) {
  importExample("spikes.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  ::SendMessageW(m_user.manager(), WM_COMMAND, ID_DIPOLE_SHOW_CURRENT_ONLY, 0);
  m_user.waitQuiet();
  const std::size_t steps = m_user.session().history().undoSteps();
  m_user.choose(ID_DIPOLES_NEXT);
  m_user.waitQuiet();
  // The file itself switches nine off.
  EXPECT_EQ(m_user.status(host::MainFrame::countPart).rfind("Dipoles shown: 111 of 120", 0), 0U)
      << m_user.status(host::MainFrame::countPart);
  EXPECT_EQ(m_user.session().history().undoSteps(), steps);
  EXPECT_EQ(m_user.selectedRows(), std::vector<int>{set().m_currentDipole});
  m_user.chooseRow(7);
  EXPECT_EQ(m_user.status(host::MainFrame::countPart).rfind("Dipoles shown: 1 of 120", 0), 0U)
      << m_user.status(host::MainFrame::countPart);
}

// Labels have no bound: a file or the editor may give any.
TEST_F(ViewerDipoles, LongLabelIsShortenedInTheStatusBarAndInAPicture) {
  importExample("auditory.dip");
  set().getDipole(0)->m_label = fromUtf8(std::string(70000, 'x'));
  set().getDipole(0)->m_moment = 1e308;  // 309 digits
  set().getDipole(0)->m_latency = -1e308;
  set().getDipole(0)->m_fitError = 1e308;
  set().setCurrentDipole(0);
  m_user.choose(ID_DIPOLES_GO_TO);
  const std::string told = m_user.status(host::MainFrame::dipolePart);
  EXPECT_EQ(told.rfind("Dipole 1 of 2  " + std::string(200, 'x') + "...   -", 0), 0U) << told;
  EXPECT_EQ(told.substr(told.size() - 4), " nAm");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("long.png")});
  m_user.choose(ID_FILE_SAVE_PICTURE);
  EXPECT_TRUE(m_folder.has("long.png")) << lastMessage();
}

TEST_F(ViewerDipoles, AnUnknownLabelIsToldAsUnknown) {
  m_operator.answerFilesUtf8({m_folder.pathUtf8("a.csv")});
  m_folder.write("a.csv", "x_left_mm,y_up_mm,z_front_mm\n1,2,3\n");
  m_user.choose(ID_FILE_IMPORT);
  set().setCurrentDipole(0);
  m_user.choose(ID_DIPOLES_GO_TO);
  const std::string told = m_user.status(host::MainFrame::dipolePart);
  EXPECT_EQ(told.rfind("Dipole 1 of 1  label unknown   ", 0), 0U) << told;
}

TEST_F(ViewerDipoles, CommandsThatNeedDipolesAreGreyWithoutThem) {
  for (const UINT command : {ID_DIPOLES_NEXT, ID_DIPOLES_PREVIOUS, ID_DIPOLES_GO_TO, ID_FILE_EXPORT,
                             ID_DIPOLES_UNDO, ID_DIPOLES_REDO}) {
    EXPECT_FALSE(m_user.isEnabled(command)) << command;
  }
  importExample("auditory.dip");
  for (const UINT command :
       {ID_DIPOLES_NEXT, ID_DIPOLES_PREVIOUS, ID_DIPOLES_GO_TO, ID_FILE_EXPORT, ID_DIPOLES_UNDO}) {
    EXPECT_TRUE(m_user.isEnabled(command)) << command;
  }
}

TEST_F(ViewerDipoles, UndoNamesTheCommandAndRefreshesTheManager) {
  importExample("auditory.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  EXPECT_EQ(m_user.menuText(ID_DIPOLES_UNDO), "Undo Import\tCtrl+Z");
  m_user.choose(ID_DIPOLES_UNDO);
  EXPECT_EQ(set().m_totalDipoles, 0);
  EXPECT_EQ(ListView_GetItemCount(m_user.list()), 0);
  EXPECT_EQ(m_user.menuText(ID_DIPOLES_REDO), "Redo Import\tCtrl+Y");
  m_user.choose(ID_DIPOLES_REDO);
  EXPECT_EQ(set().m_totalDipoles, 2);
  EXPECT_EQ(ListView_GetItemCount(m_user.list()), 2);
}

TEST_F(ViewerDipoles, WhatTheEditorDoesWithoutAWordIsNotedWhenItIsQuiet) {
  importExample("auditory.dip");
  m_user.choose(ID_DIPOLES_EDITOR);
  const HWND editor = editorWindow();
  ASSERT_NE(editor, nullptr);
  m_user.run();  // what opening it brings along is over
  ::SendMessageW(::GetDlgItem(editor, IDC_EDITOR_ADD), BM_CLICK, 0, 0);
  ::PostMessageW(editor, WM_LBUTTONUP, 0, 0);  // what a real click leaves behind it
  m_user.run();
  EXPECT_EQ(set().m_totalDipoles, 3);
  EXPECT_EQ(m_user.session().history().undoSteps(), 2U);
  EXPECT_EQ(m_user.title().rfind("Untitled *", 0), 0U);
}

TEST_F(ViewerDipoles, MenuKnowsTheLastChangeBeforeItIsQuiet) {
  importExample("auditory.dip");
  set().setDipoleLocation(0, 1.0F, 2.0F, 3.0F);
  EXPECT_EQ(m_user.menuText(ID_DIPOLES_UNDO), "Undo Edit\tCtrl+Z");
}

TEST_F(ViewerDipoles, KeysOfTheMainWindowWorkInPanelAndManager) {
  importExample("auditory.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  ::SetFocus(m_user.list());
  m_user.postKey(m_user.list(), 'Z', true);
  EXPECT_EQ(set().m_totalDipoles, 0);
  const HWND box = ::GetDlgItem(m_user.panel(), ID_VIEW_CURRENT_ONLY);
  ::SetFocus(box);
  m_user.postKey(box, 'Y', true);
  EXPECT_EQ(set().m_totalDipoles, 2);
}

TEST_F(ViewerDipoles, KeysWorkAgainAfterAWindowOfTheModuleIsClosed) {
  importExample("spikes.dip");
  m_user.frame().pane(2).SetFocus();
  for (const UINT open : {ID_DIPOLES_MANAGER, ID_DIPOLES_EDITOR, ID_DIPOLES_COORDINATES}) {
    for (const bool byKey : {true, false}) {
      m_user.choose(open);
      const HWND window = ::GetActiveWindow();
      ASSERT_NE(window, m_user.frame().m_hWnd) << open;
      if (byKey) {
        m_user.postKey(::GetFocus(), VK_ESCAPE, false);
      } else {
        ::PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
        m_user.run();
      }
      ASSERT_FALSE(::IsWindowVisible(window)) << open;
      EXPECT_EQ(::GetActiveWindow(), m_user.frame().m_hWnd) << open;
      EXPECT_EQ(::GetFocus(), m_user.frame().pane(2).m_hWnd) << open << " by key " << byKey;
    }
  }
}

TEST_F(ViewerDipoles, UndoInAFieldIsTheFields) {
  importExample("auditory.dip");
  const HWND field = ::GetDlgItem(m_user.panel(), IDC_FILTER_ERROR_MOST);
  ::SetFocus(field);
  m_user.postKey(field, 'Z', true);
  EXPECT_EQ(set().m_totalDipoles, 2);
}

TEST_F(ViewerDipoles, OtherDistancesBetweenThePointsAreToldAtRegistration) {
  importExample("auditory.dip");
  m_operator.answerFilesUtf8({exampleHead()});
  m_user.choose(ID_FILE_OPEN_MRI);
  const std::size_t before = m_operator.messages.size();
  m_operator.answerFilesUtf8({example("ch2.fiducials")});
  m_user.choose(ID_REGISTER_FROM_FILE);
  EXPECT_EQ(m_operator.messages.size(), before) << lastMessage();
  m_folder.write("other.fiducials", "nasion 0 110 -40\nleft -60 -20 -48\nright 60 -20 -48\n");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("other.fiducials")});
  m_user.choose(ID_REGISTER_FROM_FILE);
  ASSERT_EQ(m_operator.messages.size(), before + 1);
  EXPECT_NE(lastMessage().find("is this the same head?"), std::string::npos) << lastMessage();
}

TEST_F(ViewerDipoles, ManagersCommandsAreStepsToUndo) {
  importExample("spikes.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  m_user.chooseRow(5);
  const CString label = set().getDipole(6)->m_label;
  ::SendMessageW(m_user.manager(), WM_COMMAND, ID_DIPOLE_DELETE, 0);
  m_user.wait();
  EXPECT_EQ(set().m_totalDipoles, 119);
  EXPECT_EQ(set().getDipole(5)->m_label, label);
  m_user.choose(ID_DIPOLES_UNDO);
  EXPECT_EQ(set().m_totalDipoles, 120);
}

TEST_F(ViewerDipoles, FiducialsPlacedAtTheCrosshairRegister) {
  const host::Fiducials points = *m_user.session().head().fiducials;
  EXPECT_FALSE(m_user.isEnabled(ID_REGISTER_PLACED));
  const host::HeadFrame frame = m_user.session().head().frame;
  const UINT commands[] = {ID_REGISTER_NASION, ID_REGISTER_LEFT_EAR, ID_REGISTER_RIGHT_EAR};
  const host::Vector3 places[] = {points.nasion, points.leftEar, points.rightEar};
  for (int i = 0; i < 3; ++i) {
    m_user.session().setCrosshair(frame.fromScanner(places[i]));
    m_user.choose(commands[i]);
    EXPECT_TRUE(m_user.isChecked(commands[i]));
  }
  m_user.choose(ID_REGISTER_NONE);
  EXPECT_FALSE(m_user.session().head().isRegistered());
  EXPECT_NE(m_user.status(host::MainFrame::countPart).find("MRI NOT REGISTERED"), std::string::npos);
  m_user.choose(ID_REGISTER_PLACED);
  ASSERT_TRUE(m_user.session().head().isRegistered());
  EXPECT_NEAR(m_user.session().head().fiducials->nasion.y, points.nasion.y, 1e-9);
  EXPECT_TRUE(m_operator.messages.empty()) << lastMessage();
}

TEST_F(ViewerDipoles, BadFiducialFileIsToldAndTheRegistrationStays) {
  m_folder.write("bad.fiducials", "nasion 1 2\n");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("bad.fiducials")});
  m_user.choose(ID_REGISTER_FROM_FILE);
  EXPECT_NE(lastMessage().find("bad.fiducials"), std::string::npos) << lastMessage();
  EXPECT_TRUE(m_user.session().head().isRegistered());
}

TEST_F(ViewerDipoles, SetWithoutMriPointsCannotRegister) {
  m_user.choose(ID_REGISTER_FROM_SET);
  EXPECT_EQ(m_operator.messages.size(), 1U);
  EXPECT_TRUE(m_user.session().head().isRegistered());
}

TEST_F(ViewerDipoles, ClosingTheViewerClosesTheModulesWindows) {
  importExample("auditory.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  m_user.choose(ID_DIPOLES_EDITOR);
  m_user.choose(ID_DIPOLES_COORDINATES);
  const HWND manager = m_user.manager();
  m_operator.answer(IDNO);
  m_user.close();
  EXPECT_FALSE(m_user.isOpen());
  EXPECT_FALSE(::IsWindow(manager));
}

}  // namespace
