// The commands of the menu File: what is opened, saved, exported, asked, and what happens to bad files.
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

class ViewerFiles : public testing::Test {
 protected:
  void importExample(const char* name) {
    m_operator.answerFilesUtf8({example(name)});
    m_user.choose(ID_FILE_IMPORT);
  }
  int total() { return m_user.dipoles().m_totalDipoles; }
  std::string lastMessage() { return m_operator.messages.empty() ? "" : m_operator.messages.back().text; }

  TempFolder m_folder;
  ScriptedOperator m_operator;
  ViewerUser m_user;
};

TEST_F(ViewerFiles, ImportTellsOnceForManyFiles) {
  m_operator.answerFilesUtf8({example("spikes.dip"), example("auditory.dip"), example("median.txt")});
  m_user.choose(ID_FILE_IMPORT);
  ASSERT_EQ(m_operator.messages.size(), 1U);
  const std::string sum = std::to_string(total()) + " dipoles from 3 files.";
  EXPECT_NE(lastMessage().find(sum), std::string::npos) << lastMessage();
  EXPECT_EQ(lastMessage().find("Total imported dipoles"), std::string::npos) << lastMessage();
  EXPECT_GT(total(), 122);
  EXPECT_EQ(m_user.title().rfind("Untitled * - Patient ", 0), 0U) << m_user.title();
  EXPECT_EQ(lastMessage().rfind("The set holds dipoles of different patients: EXAMPLE_SPIKES ", 0), 0U)
      << lastMessage();
  EXPECT_EQ(m_user.session().history().undoSteps(), 1U);
}

TEST_F(ViewerFiles, CancelledDialogsDoNothing) {
  for (const UINT command : {ID_FILE_IMPORT, ID_FILE_OPEN_MRI, ID_FILE_OPEN_SET, ID_FILE_SAVE_SET,
                             ID_FILE_SAVE_SET_AS, ID_FILE_SAVE_PICTURE}) {
    m_operator.cancelFiles();
    m_user.choose(command);
  }
  EXPECT_EQ(total(), 0);
  EXPECT_TRUE(m_operator.messages.empty());
  EXPECT_EQ(m_operator.answersLeft(), 0U);
  EXPECT_EQ(m_user.title(), "Untitled - Phantom - Dipole Viewer");
}

TEST_F(ViewerFiles, SetComesBackFromItsFile) {
  importExample("spikes.dip");
  const std::string file = m_folder.pathUtf8("set.dipset");
  m_operator.answerFilesUtf8({file});
  m_user.choose(ID_FILE_SAVE_SET);
  EXPECT_EQ(m_user.title(), "set.dipset - Patient EXAMPLE_SPIKES - Phantom - Dipole Viewer");
  m_user.choose(ID_FILE_NEW_SET);
  EXPECT_EQ(total(), 0);
  m_operator.answerFilesUtf8({file});
  m_user.choose(ID_FILE_OPEN_SET);
  EXPECT_EQ(total(), 120);
  EXPECT_EQ(m_user.title(), "set.dipset - Patient EXAMPLE_SPIKES - Phantom - Dipole Viewer");
  EXPECT_EQ(m_operator.messages.size(), 1U);  // that of the import
  EXPECT_EQ(m_folder.names(), std::vector<std::string>{"set.dipset"});
}

TEST_F(ViewerFiles, SecondSaveAsksForNoName) {
  importExample("auditory.dip");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("set.dipset")});
  m_user.choose(ID_FILE_SAVE_SET);
  const std::string before = m_folder.read("set.dipset");
  m_user.dipoles().getDipole(0)->m_moment = 99.0;
  m_user.session().noteChange();
  m_user.choose(ID_FILE_SAVE_SET);
  EXPECT_EQ(m_operator.fileQuestions.size(), 2U);
  EXPECT_NE(m_folder.read("set.dipset"), before);
}

TEST_F(ViewerFiles, ClosingWithChangesAsksAndCancelStays) {
  importExample("auditory.dip");
  m_operator.answer(IDCANCEL);
  m_user.close();
  ASSERT_TRUE(m_user.isOpen());
  EXPECT_EQ(lastMessage(), "Save the changes to the new dipole set?");
  EXPECT_EQ(total(), 2);
  m_operator.answer(IDNO);
  m_user.close();
  EXPECT_FALSE(m_user.isOpen());
}

TEST_F(ViewerFiles, ClosingWithChangesSavesWhenAskedTo) {
  importExample("auditory.dip");
  m_operator.answer(IDYES);
  m_operator.answerFilesUtf8({m_folder.pathUtf8("kept.dipset")});
  m_user.close();
  EXPECT_FALSE(m_user.isOpen());
  EXPECT_TRUE(m_folder.has("kept.dipset"));
}

TEST_F(ViewerFiles, ClosingStaysOpenWhenSavingIsCancelledOrFails) {
  importExample("auditory.dip");
  m_operator.answer(IDYES);
  m_operator.cancelFiles();
  m_user.close();
  ASSERT_TRUE(m_user.isOpen());
  m_operator.answer(IDYES);
  m_operator.answerFilesUtf8({m_folder.pathUtf8("no such folder/set.dipset")});
  m_user.close();
  ASSERT_TRUE(m_user.isOpen());
  EXPECT_NE(lastMessage().find("set.dipset"), std::string::npos) << lastMessage();
}

TEST_F(ViewerFiles, ClosingWithoutChangesAsksNothing) {
  m_user.close();
  EXPECT_FALSE(m_user.isOpen());
  EXPECT_TRUE(m_operator.messages.empty());
}

TEST_F(ViewerFiles, OpeningAnotherSetAsksForTheChanges) {
  importExample("auditory.dip");
  m_operator.answer(IDCANCEL);
  m_user.choose(ID_FILE_OPEN_SET);
  EXPECT_EQ(lastMessage(), "Save the changes to the new dipole set?");
  EXPECT_EQ(total(), 2);
  EXPECT_EQ(m_operator.fileQuestions.size(), 1U);  // that of the import
}

TEST_F(ViewerFiles, UndoneChangesAreNoChanges) {
  importExample("auditory.dip");
  m_user.choose(ID_DIPOLES_UNDO);
  EXPECT_EQ(total(), 0);
  m_user.close();
  EXPECT_FALSE(m_user.isOpen());
  EXPECT_EQ(m_operator.messages.size(), 1U);
}

TEST_F(ViewerFiles, BadSetIsToldAndTheOldOneStays) {
  importExample("auditory.dip");
  m_operator.answer(IDNO);
  m_folder.write("bad.dipset", "this is no set of dipoles");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("bad.dipset")});
  m_user.choose(ID_FILE_OPEN_SET);
  EXPECT_NE(lastMessage().find("bad.dipset"), std::string::npos) << lastMessage();
  EXPECT_EQ(total(), 2);
  EXPECT_TRUE(m_user.session().isUnsaved());
}

TEST_F(ViewerFiles, BadMriIsToldAndTheOldOneStays) {
  m_folder.write("bad.nii", "this is no head");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("bad.nii")});
  m_user.choose(ID_FILE_OPEN_MRI);
  EXPECT_NE(lastMessage().find("bad.nii"), std::string::npos) << lastMessage();
  EXPECT_EQ(m_user.session().head().name, "Phantom");
  EXPECT_TRUE(m_user.session().head().isRegistered());
}

TEST_F(ViewerFiles, FileWithoutDipolesIsNamed) {
  m_folder.write("empty.dip", "nothing here\n");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("empty.dip"), example("auditory.dip")});
  m_user.choose(ID_FILE_IMPORT);
  EXPECT_NE(lastMessage().find("These files brought no dipoles:\nempty.dip: it holds no dipoles\n"),
            std::string::npos)
      << lastMessage();
  EXPECT_EQ(total(), 2);
}

TEST_F(ViewerFiles, ImportOfManyFilesCanBeCancelledBetweenTwo) {
  std::vector<std::string> files;
  for (int i = 0; i < 200; ++i) {
    files.push_back(example("auditory.dip"));
  }
  Robot robot;
  std::string shown;
  robot.when("Importing Dipole Files", [&](HWND window) {
    shown = textOf(window, IDC_PROGRESS_TEXT);
    EXPECT_FALSE(m_user.frame().IsWindowEnabled());
    press(window, IDCANCEL);
  });
  m_user.drop(files);
  EXPECT_EQ(shown.rfind("File ", 0), 0U) << shown;
  EXPECT_NE(lastMessage().find("The import was cancelled; the other files were not read."),
            std::string::npos);
  EXPECT_LT(total(), 400);
  EXPECT_EQ(total() % 2, 0);
  EXPECT_TRUE(m_user.frame().IsWindowEnabled());
  m_user.choose(ID_DIPOLES_UNDO);
  EXPECT_EQ(total(), 0);
}

TEST_F(ViewerFiles, NothingIsOpenedOrClosedWhileAWindowOfTheModuleWaitsForAnAnswer) {
  importExample("auditory.dip");
  m_user.choose(ID_DIPOLES_MANAGER);
  m_user.chooseRow(0);
  Robot robot;
  robot.when("Set Name", [&](HWND dialog) {
    m_user.drop({example("spikes.dip")});
    m_user.choose(ID_FILE_NEW_SET);
    m_user.close();
    EXPECT_TRUE(m_user.isOpen());
    EXPECT_EQ(total(), 2);
    press(dialog, IDCANCEL);
  });
  ::SendMessageW(m_user.manager(), WM_COMMAND, ID_DIPOLE_NAME_SELECTED, 0);
  EXPECT_EQ(total(), 2);
  EXPECT_EQ(m_operator.messages.size(), 1U);  // that of the import
}

TEST_F(ViewerFiles, DroppedFilesAreOpened) {
  m_user.drop({example("spikes.dip"), example("auditory.dip")});
  EXPECT_EQ(total(), 122);
}

TEST_F(ViewerFiles, DroppedSetReplacesTheSet) {
  importExample("auditory.dip");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("set.dipset")});
  m_user.choose(ID_FILE_SAVE_SET);
  m_user.drop({example("spikes.dip")});
  EXPECT_EQ(total(), 122);
  m_operator.answer(IDNO);
  m_user.drop({m_folder.pathUtf8("set.dipset")});
  EXPECT_EQ(total(), 2);
}

TEST_F(ViewerFiles, TextCsvAndPictureAreWritten) {
  importExample("auditory.dip");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("out.txt")});
  m_user.choose(ID_FILE_EXPORT);
  m_operator.answerFilesUtf8({m_folder.pathUtf8("out.csv")});
  m_user.choose(ID_FILE_EXPORT);
  m_operator.answerFilesUtf8({m_folder.pathUtf8("out.png")});
  m_user.choose(ID_FILE_SAVE_PICTURE);
  EXPECT_EQ(m_folder.names(), (std::vector<std::string>{"out.csv", "out.png", "out.txt"}));
  const std::string png = m_folder.read("out.png");
  EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(png.substr(12, 4), "IHDR");
  EXPECT_EQ(png.substr(png.size() - 8, 4), "IEND");
  EXPECT_EQ(m_folder.read("out.csv").rfind("number", 0), 0U);
}

TEST_F(ViewerFiles, PictureTellsByWhichChoiceDipolesAreOnIt) {
  importExample("spikes.dip");
  m_user.session().view().filter.fitError.most = 10.0;
  m_user.session().view().toleranceMm = 4.0;
  const auto settings = [&] { return m_user.frame().pictureTexts().settings; };
  const std::vector<std::string> told = settings();
  ASSERT_EQ(told.size(), 4U);
  EXPECT_EQ(told[0], "fit error at most 10 %");
  EXPECT_EQ(told[1], "dipoles within 4.0 mm of the slices");
  m_user.session().view().filter = {};
  m_user.session().view().toleranceMm.reset();
  EXPECT_EQ(settings().front(), "dipoles at any distance from the slices");
}

TEST_F(ViewerFiles, PictureIntoAMissingFolderIsTold) {
  m_operator.answerFilesUtf8({m_folder.pathUtf8("missing/out.png")});
  m_user.choose(ID_FILE_SAVE_PICTURE);
  EXPECT_NE(lastMessage().find("out.png"), std::string::npos) << lastMessage();
}

TEST_F(ViewerFiles, RecentSetsStandInTheMenuAndOpen) {
  importExample("auditory.dip");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("recent one.dipset")});
  m_user.choose(ID_FILE_SAVE_SET);
  m_user.choose(ID_FILE_NEW_SET);
  EXPECT_NE(m_user.menuText(ID_FILE_RECENT_FIRST).find("recent one.dipset"), std::string::npos);
  m_user.choose(ID_FILE_RECENT_FIRST);
  EXPECT_EQ(total(), 2);
}

TEST_F(ViewerFiles, RecentSetIsTheOneThatWasChosenAlsoWhenTheOldOneIsSavedFirst) {
  importExample("auditory.dip");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("two.dipset")});
  m_user.choose(ID_FILE_SAVE_SET);
  m_user.choose(ID_FILE_NEW_SET);
  importExample("spikes.dip");
  m_operator.answer(IDYES);
  m_operator.answerFilesUtf8({m_folder.pathUtf8("spikes.dipset")});
  m_user.choose(ID_FILE_RECENT_FIRST);
  EXPECT_EQ(total(), 2);
  EXPECT_TRUE(m_folder.has("spikes.dipset"));
}

TEST_F(ViewerFiles, RecentSetThatIsGoneIsToldAndLeavesTheMenu) {
  importExample("auditory.dip");
  m_operator.answerFilesUtf8({m_folder.pathUtf8("gone.dipset")});
  m_user.choose(ID_FILE_SAVE_SET);
  m_user.choose(ID_FILE_NEW_SET);
  ::DeleteFileW(m_folder.path("gone.dipset"));
  m_user.choose(ID_FILE_RECENT_FIRST);
  EXPECT_NE(lastMessage().find("gone.dipset"), std::string::npos) << lastMessage();
  EXPECT_EQ(m_user.menuText(ID_FILE_RECENT_FIRST).find("gone.dipset"), std::string::npos);
}

TEST_F(ViewerFiles, RecentHeadsStandInTheMenuOpenAndLeaveItWhenTheyAreGone) {
  const CString head = fromUtf8(exampleHead().c_str());
  ASSERT_TRUE(m_user.frame().openMri(head));
  const std::string fileName = toUtf8(head.Mid(head.ReverseFind(_T('/')) + 1));
  const std::string name = m_user.session().head().name;
  m_user.choose(ID_FILE_PHANTOM);
  ASSERT_NE(m_user.session().head().name, name);
  EXPECT_NE(m_user.menuText(ID_FILE_RECENT_MRI_FIRST).find(fileName), std::string::npos);
  m_user.choose(ID_FILE_RECENT_MRI_FIRST);
  EXPECT_EQ(m_user.session().head().name, name);

  m_user.session().recentHeads().add(m_folder.path("gone.nii"));
  m_user.choose(ID_FILE_RECENT_MRI_FIRST);
  EXPECT_NE(lastMessage().find("gone.nii"), std::string::npos) << lastMessage();
  EXPECT_NE(m_user.menuText(ID_FILE_RECENT_MRI_FIRST).find(fileName), std::string::npos);
  EXPECT_EQ(m_user.session().head().name, name);
}

}  // namespace
