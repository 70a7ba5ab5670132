// The Dipole Edit dialog: the current dipole's colour, with the system's own colour dialog.
#include "tests/ui/windows/EditorTest.h"

namespace {

constexpr COLORREF firstColor = 65535;          // of a new dipole
constexpr COLORREF chosenColor = RGB(0, 0, 0);  // what the system's dialog offers first

class EditorColor : public EditorTest {
 protected:
  COLORREF swatch() const { return pixelOf(window, IDC_EDITOR_COLOR, 3, 3); }
  CRect buttonFace() const {
    CRect rect;
    ::GetClientRect(::GetDlgItem(window, IDC_EDITOR_COLOR), &rect);
    return rect;
  }
  // Opens the colour dialog; the robot has its step.
  void choose(int answer) {
    robot.when("Color", [answer](HWND dialog) { press(dialog, answer); });
    push(IDC_EDITOR_COLOR);
  }

  Robot robot;
};

TEST_F(EditorColor, TheWholeButtonShowsTheColor) {
  make(1);
  dipole(0).m_color = RGB(10, 200, 30);
  show();
  const CRect whole = buttonFace();
  for (const int x : {0, whole.Width() / 2, whole.Width() - 1}) {
    for (const int y : {0, whole.Height() / 2, whole.Height() - 1}) {
      EXPECT_EQ(pixelOf(window, IDC_EDITOR_COLOR, x, y), RGB(10, 200, 30)) << x << ' ' << y;
    }
  }
}

TEST_F(EditorColor, TheSwatchFollowsTheCurrentDipole) {
  make(2);
  dipole(1).m_color = RGB(1, 2, 250);
  show();
  EXPECT_EQ(swatch(), firstColor);
  push(IDC_EDITOR_NEXT);
  EXPECT_EQ(swatch(), RGB(1, 2, 250));
}

TEST_F(EditorColor, TheSwatchSurvivesWhatMakesAButtonDraw) {
  open(1);
  const HWND button = ::GetDlgItem(window, IDC_EDITOR_COLOR);
  ::RedrawWindow(button, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
  EXPECT_EQ(swatch(), firstColor) << "repaint";
  ::SetFocus(button);
  EXPECT_EQ(swatch(), firstColor) << "focus";
  ::SendMessageW(button, BM_SETSTATE, TRUE, 0);
  EXPECT_EQ(swatch(), firstColor) << "press";
  ::SendMessageW(button, BM_SETSTATE, FALSE, 0);
  EXPECT_EQ(swatch(), firstColor) << "release";
  ::SetFocus(::GetDlgItem(window, IDC_EDITOR_LABEL));
  EXPECT_EQ(swatch(), firstColor) << "no focus";
  ::EnableWindow(button, FALSE);
  pump();
  EXPECT_EQ(swatch(), firstColor) << "disabled";
  ::EnableWindow(button, TRUE);
  ::ShowWindow(window, SW_HIDE);
  ::ShowWindow(window, SW_SHOW);
  pump();
  EXPECT_EQ(swatch(), firstColor) << "shown again";
}

TEST_F(EditorColor, OkGivesTheDipoleTheColorAndTheSwatchFollowsAtTheNextRefresh) {
  open(2);
  choose(IDOK);
  EXPECT_EQ(dipole(0).m_color, chosenColor);
  EXPECT_EQ(dipole(0).m_colorF[0], 0.0F);
  EXPECT_EQ(dipole(0).m_colorF[1], 0.0F);
  EXPECT_EQ(dipole(1).m_color, firstColor);
  EXPECT_TRUE(host->wasRepainted());
  EXPECT_EQ(swatch(), firstColor);
  show();
  EXPECT_EQ(swatch(), chosenColor);
}

TEST_F(EditorColor, CancelKeepsTheColorAndStillRepaints) {
  open(1);
  choose(IDCANCEL);
  EXPECT_EQ(dipole(0).m_color, firstColor);
  EXPECT_EQ(dipole(0).m_colorF[0], 1.0F);
  EXPECT_TRUE(host->wasRepainted());
}

TEST_F(EditorColor, StoresNoField) {
  open(1);
  enter(IDC_EDITOR_SIZE, "8");
  choose(IDOK);
  EXPECT_EQ(dipole(0).m_size, 3.0);
  EXPECT_EQ(field(IDC_EDITOR_SIZE), "8");
}

TEST_F(EditorColor, NothingOpensWithoutADipole) {
  open(0);
  push(IDC_EDITOR_COLOR);
  EXPECT_TRUE(openWindows("Color").empty());
  EXPECT_FALSE(host->wasRepainted());
}

TEST_F(EditorColor, TheEditorIsDisabledMeanwhile) {
  open(1);
  ::SetActiveWindow(window);
  robot.when("Color", [this](HWND dialog) {
    EXPECT_FALSE(::IsWindowEnabled(window));
    press(dialog, IDCANCEL);
  });
  push(IDC_EDITOR_COLOR);
  EXPECT_TRUE(::IsWindowEnabled(window));
}

TEST_F(EditorColor, ADipoleThatIsDeletedMeanwhileIsNotTouched) {
  open(2);
  const auto copy = std::make_unique<CDipoleFacezq>(*host->face);  // lets the dipole live on
  robot.when("Color", [this](HWND dialog) {
    host->face->deleteDipole(0, 1);
    press(dialog, IDOK);
  });
  push(IDC_EDITOR_COLOR);
  EXPECT_EQ(host->labels(), Texts{"d2"});
  EXPECT_EQ(dipole(0).m_color, firstColor);
  EXPECT_EQ(copy->getDipole(0)->m_color, firstColor);
}

TEST_F(EditorColor, TheDipoleThatWasCurrentGetsTheColor) {
  open(2);
  robot.when("Color", [this](HWND dialog) {
    host->face->setCurrentDipole(1);
    press(dialog, IDOK);
  });
  push(IDC_EDITOR_COLOR);
  EXPECT_EQ(dipole(0).m_color, chosenColor);
  EXPECT_EQ(dipole(1).m_color, firstColor);
}

TEST_F(EditorColor, TheCollectionMayGoWhileTheColorIsChosen) {
  for (const int answer : {IDOK, IDCANCEL}) {
    open(1);
    robot.when("Color", [this, answer](HWND dialog) {
      host->face.reset();
      press(dialog, answer);
    });
    push(IDC_EDITOR_COLOR);
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_TRUE(openWindows("Color").empty());
    EXPECT_FALSE(host->wasRepainted());
  }
}

}  // namespace
