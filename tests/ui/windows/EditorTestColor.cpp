// The Dipole Edit dialog: the current dipole's colour, with the system's own colour dialog.
#include "tests/ui/windows/EditorTest.h"

namespace {

constexpr COLORREF firstColor = 65535;          // of a new dipole
constexpr COLORREF chosenColor = RGB(0, 0, 0);  // what the system's dialog offers first

class EditorColor : public EditorTest {
 protected:
  COLORREF swatch() const {
    const CRect face = buttonFace();
    return pixelOf(window, IDC_EDITOR_COLOR, face.Width() / 2, face.Height() / 2);
  }
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

// Whether the button shows where the focus is: two frames, black and white, of which one stands out on any
// colour. Everything else must be the colour.
bool isMarked(HWND window, COLORREF color) {
  CRect face;
  ::GetClientRect(::GetDlgItem(window, IDC_EDITOR_COLOR), &face);
  bool hasBlack = false;
  bool hasWhite = false;
  for (int x = 0; x < face.Width() / 2; ++x) {
    const COLORREF pixel = pixelOf(window, IDC_EDITOR_COLOR, x, face.Height() / 2);
    hasBlack = hasBlack || pixel == RGB(0, 0, 0);
    hasWhite = hasWhite || pixel == RGB(255, 255, 255);
    EXPECT_TRUE(pixel == RGB(0, 0, 0) || pixel == RGB(255, 255, 255) || pixel == color) << x;
  }
  EXPECT_EQ(hasBlack, hasWhite);
  return hasBlack && hasWhite;
}

// A button whose dialog has seen no key yet. Not every system can be brought to say so.
LRESULT CALLBACK hideFocus(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                           DWORD_PTR /*data*/) {
  return message == WM_QUERYUISTATE ? UISF_HIDEFOCUS : ::DefSubclassProc(window, message, wParam, lParam);
}

TEST_F(EditorColor, ShowsTheFocusThatTheKeyboardBrings) {
  open(1);
  strike(window, IDC_EDITOR_LABEL, VK_TAB);
  ASSERT_EQ(focusIn(window), IDC_EDITOR_COLOR);
  EXPECT_TRUE(isMarked(window, firstColor));
  EXPECT_EQ(swatch(), firstColor);
  strike(window, IDC_EDITOR_COLOR, VK_TAB);
  EXPECT_FALSE(isMarked(window, firstColor));
}

TEST_F(EditorColor, KeepsTheMarkWhenItIsDrawnAgain) {
  open(1);
  const HWND button = ::GetDlgItem(window, IDC_EDITOR_COLOR);
  ::SetWindowSubclass(button, &hideFocus, 1, 0);
  ::SetFocus(button);
  EXPECT_FALSE(isMarked(window, firstColor)) << "as other buttons, for users of the mouse alone";
  ::RemoveWindowSubclass(button, &hideFocus, 1);
  ::SendMessageW(button, WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
  EXPECT_TRUE(isMarked(window, firstColor)) << "the first key";
  ::RedrawWindow(button, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
  EXPECT_TRUE(isMarked(window, firstColor));
  face().updateDipoleEditor();
  pump();
  EXPECT_TRUE(isMarked(window, firstColor));
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

TEST_F(EditorColor, ANewDipoleIsNotTakenForOneThatIsGone) {
  open(2);
  robot.when("Color", [this](HWND dialog) {
    host->face->cleanDipoles();
    host->addDipoles(40);  // in memory that has just become free, were it not held
    press(dialog, IDOK);
  });
  push(IDC_EDITOR_COLOR);
  for (int slot = 0; slot < 40; ++slot) {
    EXPECT_EQ(dipole(slot).m_color, firstColor) << slot;
  }
  EXPECT_TRUE(host->wasRepainted());
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
