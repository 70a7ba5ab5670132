// The Dipole Edit dialog: what a user is told about a mistake, and that nothing is taken over then.
#include "tests/ui/windows/EditorTest.h"

namespace {

const std::string badNumber = "Please enter a number.";
const std::string badRadius = "Please enter a number between 1 and 9000.";

// In the order in which they are read.
const std::vector<int> numberFields = {IDC_EDITOR_SIZE,          IDC_EDITOR_LOCATION_X,
                                       IDC_EDITOR_LOCATION_Y,    IDC_EDITOR_LOCATION_Z,
                                       IDC_EDITOR_ORIENTATION_X, IDC_EDITOR_ORIENTATION_Y,
                                       IDC_EDITOR_ORIENTATION_Z, IDC_EDITOR_ORIENTATION_LENGTH};

class EditorMistakes : public EditorTest {
 protected:
  // Without the check while typing.
  void setQuietly(int id, const std::string& text) {
    const HWND edit = ::GetDlgItem(window, id);
    ::SetWindowLongPtrW(edit, GWLP_ID, 1);
    ::SetWindowTextW(edit, fromUtf8(text));
    ::SetWindowLongPtrW(edit, GWLP_ID, id);
  }

  // What is to stay as it is.
  void expectNothingChanged() {
    EXPECT_EQ(face().m_mergeRadius, 15.0F);
    EXPECT_EQ(face().m_showDipoleOrientationAll, 0);
    EXPECT_EQ(dipole(0).m_size, 3.0);
    EXPECT_EQ(dipole(0).m_location[0], 1.0);
    EXPECT_EQ(toUtf8(dipole(0).m_label), "d1");
    EXPECT_EQ(dipole(0).m_showOrientation, 1);
    EXPECT_FALSE(host->wasRepainted());
  }
};

TEST_F(EditorMistakes, RadiusIsCheckedWhileItIsTyped) {
  open(1);
  enter(IDC_EDITOR_MERGE_RADIUS, "0.5");
  EXPECT_EQ(messages.take(), Texts{badRadius});
  EXPECT_EQ(focusIn(window), IDC_EDITOR_MERGE_RADIUS);
  enter(IDC_EDITOR_MERGE_RADIUS, "9000.5");
  EXPECT_EQ(messages.take(), Texts{badRadius});
  enter(IDC_EDITOR_MERGE_RADIUS, "abc");
  EXPECT_EQ(messages.take(), Texts{badNumber});
  enter(IDC_EDITOR_MERGE_RADIUS, "");
  EXPECT_EQ(messages.take(), Texts{badNumber});
  enter(IDC_EDITOR_MERGE_RADIUS, "250");
  EXPECT_EQ(messages.take(), Texts{});
  EXPECT_EQ(face().m_mergeRadius, 15.0F);  // typing alone stores nothing
}

TEST_F(EditorMistakes, RadiusIsCheckedKeyByKey) {
  open(1);
  strikeKeys(window, IDC_EDITOR_MERGE_RADIUS, "250");
  EXPECT_EQ(messages.take(), Texts{});
  strikeKeys(window, IDC_EDITOR_MERGE_RADIUS, "90001");
  EXPECT_EQ(messages.take(), Texts{badRadius});  // at the last key
  strikeKeys(window, IDC_EDITOR_MERGE_RADIUS, "-");
  EXPECT_EQ(messages.take(), Texts{badNumber});
}

TEST_F(EditorMistakes, ApplyRefusesARadiusOf0Point5AndChangesNothing) {
  open(1);
  setQuietly(IDC_EDITOR_MERGE_RADIUS, "0.5");
  enter(IDC_EDITOR_SIZE, "8");
  enter(IDC_EDITOR_LABEL, "new");
  ::CheckDlgButton(window, IDC_EDITOR_SHOW_ORIENTATION, BST_UNCHECKED);
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(messages.take(), Texts{badRadius});
  EXPECT_EQ(focusIn(window), IDC_EDITOR_MERGE_RADIUS);
  expectNothingChanged();
}

TEST_F(EditorMistakes, ApplyRefusesRadiiAboveAndLetters) {
  open(1);
  enter(IDC_EDITOR_SIZE, "8");
  for (const char* const text : {"9000.5", "1e9", "-15", "0"}) {
    setQuietly(IDC_EDITOR_MERGE_RADIUS, text);
    push(IDC_EDITOR_APPLY);
    EXPECT_EQ(messages.take(), Texts{badRadius}) << text;
  }
  for (const char* const text : {"abc", "", "15 mm", "1e99", "nan", "0x10"}) {
    setQuietly(IDC_EDITOR_MERGE_RADIUS, text);
    push(IDC_EDITOR_APPLY);
    EXPECT_EQ(messages.take(), Texts{badNumber}) << text;
  }
  expectNothingChanged();
}

TEST_F(EditorMistakes, TheEndsOfTheRangeAreAccepted) {
  open(1);
  for (const auto& [text, value] : {std::pair{"1.0", 1.0F}, std::pair{"9000.0", 9000.0F}}) {
    enter(IDC_EDITOR_MERGE_RADIUS, text);
    push(IDC_EDITOR_APPLY);
    EXPECT_EQ(messages.take(), Texts{});
    EXPECT_EQ(face().m_mergeRadius, value);
  }
}

TEST_F(EditorMistakes, ARadiusOutsideThatTheSetCameWithIsToldToo) {
  make(1);
  face().m_mergeRadius = 0.25F;
  show();
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(messages.take(), Texts{badRadius});
  EXPECT_EQ(face().m_mergeRadius, 0.25F);
  enter(IDC_EDITOR_MERGE_RADIUS, "2");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(face().m_mergeRadius, 2.0F);
}

TEST_F(EditorMistakes, AreOverWhenTheFormerTextIsBack) {
  open(1);
  enter(IDC_EDITOR_SIZE, "8");
  enter(IDC_EDITOR_MERGE_RADIUS, "0.5");
  EXPECT_EQ(messages.take(), Texts{badRadius});
  enter(IDC_EDITOR_SIZE, "3");
  enter(IDC_EDITOR_MERGE_RADIUS, "15");
  EXPECT_EQ(messages.take(), Texts{});
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(messages.take(), Texts{});
  EXPECT_EQ(face().m_mergeRadius, 15.0F);
  face().cleanDipoles();
  face().updateDipoleEditor();
  EXPECT_EQ(field(IDC_EDITOR_SIZE), "3");
}

TEST_F(EditorMistakes, AreToldOneByOneInTheOrderOfReading) {
  open(1);
  for (const int id : numberFields) {
    enter(id, "x");
  }
  setQuietly(IDC_EDITOR_MERGE_RADIUS, "0.5");
  for (const int id : numberFields) {
    push(IDC_EDITOR_APPLY);
    EXPECT_EQ(messages.take(), Texts{badNumber});
    EXPECT_EQ(focusIn(window), id);
    enter(id, "1");
  }
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(messages.take(), Texts{badRadius});
  EXPECT_EQ(focusIn(window), IDC_EDITOR_MERGE_RADIUS);
  expectNothingChanged();
}

TEST_F(EditorMistakes, TheWrongTextIsSelectedSoThatTypingReplacesIt) {
  open(1);
  enter(IDC_EDITOR_SIZE, "wrong");
  ::SetFocus(::GetDlgItem(window, IDC_EDITOR_LABEL));
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(messages.take(), Texts{badNumber});
  DWORD first = 9;
  DWORD end = 9;
  ::SendMessageW(::GetDlgItem(window, IDC_EDITOR_SIZE), EM_GETSEL, reinterpret_cast<WPARAM>(&first),
                 reinterpret_cast<LPARAM>(&end));
  EXPECT_EQ(first, 0U);
  EXPECT_EQ(end, 5U);
}

TEST_F(EditorMistakes, ExitTellsOnceAndStays) {
  open(1);
  enter(IDC_EDITOR_LOCATION_X, "1,5");
  push(IDOK);
  EXPECT_EQ(messages.take(), Texts{badNumber});
  EXPECT_TRUE(::IsWindowVisible(window));
  expectNothingChanged();
  enter(IDC_EDITOR_LOCATION_X, "1.5");
  push(IDOK);
  EXPECT_FALSE(::IsWindowVisible(window));
  EXPECT_EQ(dipole(0).m_location[0], 1.5);
}

TEST_F(EditorMistakes, EscapeLeavesWithoutAWord) {
  open(1);
  enter(IDC_EDITOR_LOCATION_X, "wrong");
  strike(window, IDC_EDITOR_LOCATION_X, VK_ESCAPE);
  EXPECT_FALSE(::IsWindowVisible(window));
  EXPECT_EQ(messages.take(), Texts{});
}

TEST_F(EditorMistakes, ShowIsRefusedToo) {
  open(2);
  enter(IDC_EDITOR_SIZE, "wrong");
  push(IDC_EDITOR_SHOW_ORIENTATION);
  EXPECT_EQ(messages.take(), Texts{badNumber});
  EXPECT_EQ(dipole(1).m_showOrientation, 1);
  expectNothingChanged();
}

TEST_F(EditorMistakes, TypingTheRadiusTellsOfAnEarlierMistake) {
  open(1);
  enter(IDC_EDITOR_SIZE, "wrong");
  EXPECT_EQ(messages.take(), Texts{});
  enter(IDC_EDITOR_MERGE_RADIUS, "20");
  EXPECT_EQ(messages.take(), Texts{badNumber});
  EXPECT_EQ(focusIn(window), IDC_EDITOR_SIZE);
}

TEST_F(EditorMistakes, NextForgetsThem) {
  open(2);
  enter(IDC_EDITOR_SIZE, "wrong");
  push(IDC_EDITOR_NEXT);
  EXPECT_EQ(messages.take(), Texts{});
  EXPECT_EQ(field(IDC_EDITOR_SIZE), "3");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(messages.take(), Texts{});
}

TEST_F(EditorMistakes, TheCollectionMayGoWhileTheMessageIsOnTheScreen) {
  open(1);
  messages.meanwhile([&] { host->face.reset(); });
  enter(IDC_EDITOR_MERGE_RADIUS, "0.5");
  EXPECT_EQ(messages.take(), Texts{badRadius});
  EXPECT_EQ(host->editor(), nullptr);
  EXPECT_FALSE(::IsWindow(window));
}

TEST_F(EditorMistakes, TheCollectionMayGoWhileApplyOrExitTellsOfOne) {
  for (const int button : {IDC_EDITOR_APPLY, IDOK, IDC_EDITOR_SHOW_ORIENTATION}) {
    open(1);
    enter(IDC_EDITOR_SIZE, "wrong");
    messages.meanwhile([&] { host->face.reset(); });
    push(button);
    EXPECT_EQ(messages.take(), Texts{badNumber}) << button;
    EXPECT_FALSE(::IsWindow(window)) << button;
  }
}

}  // namespace
