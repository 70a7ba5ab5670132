// The commands of the menu View, and the view panel.
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/host/viewer/windows/ViewerUser.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"

namespace {

class ViewerView : public testing::Test {
 protected:
  ViewerView() {
    for (int i = 0; i < 10; ++i) {
      m_user.dipoles().addDipoleF(static_cast<float>(i * 5), 40.0F, 10.0F);
      CDipoleszq& dipole = *m_user.dipoles().getCurrentDipole();
      dipole.m_latency = 10.0 * i;
      dipole.m_fitError = i;
      dipole.m_moment = 5.0 * i;
    }
    m_user.session().noteChange();
    m_user.waitQuiet();
    m_user.choose(ID_VIEW_PANEL);
    m_user.choose(ID_VIEW_PANEL);  // brings the panel up to date with what was added behind its back
  }
  std::string count() { return m_user.status(host::MainFrame::countPart); }
  host::ViewSettings& view() { return m_user.session().view(); }
  // A part of a bar has room for its text.
  void expectWhole(int part) {
    const bool isPlace = part >= host::MainFrame::crosshairPart;
    const HWND bar = ::GetDlgItem(m_user.frame().m_hWnd, isPlace ? IDC_PLACE_BAR : IDC_STATUS_BAR);
    const HDC context = ::GetDC(bar);
    const HGDIOBJ before =
        ::SelectObject(context, reinterpret_cast<HGDIOBJ>(::SendMessageW(bar, WM_GETFONT, 0, 0)));
    const CString text = m_user.frame().statusText(part);
    SIZE size = {};
    ::GetTextExtentPoint32W(context, text, text.GetLength(), &size);
    CRect place;
    ::SendMessageW(bar, SB_GETRECT,
                   static_cast<WPARAM>(isPlace ? part - host::MainFrame::crosshairPart : part),
                   reinterpret_cast<LPARAM>(&place));
    EXPECT_GT(place.Width(), size.cx) << toUtf8(text);
    CRect whole;
    ::GetClientRect(bar, &whole);
    EXPECT_LE(place.right, whole.right) << toUtf8(text);
    ::SelectObject(context, before);
    ::ReleaseDC(bar, context);
  }

  ScriptedOperator m_operator;
  ViewerUser m_user;
};

TEST_F(ViewerView, SwitchesGoToTheModuleAndCanBeUndone) {
  struct Switch {
    UINT command;
    bool initial;
    const char* undo;
  };
  for (const Switch& tried : {Switch{ID_VIEW_SHOW_DIPOLES, true, "Undo Show Dipoles\tCtrl+Z"},
                              {ID_VIEW_CURRENT_ONLY, false, "Undo Current Dipole Only\tCtrl+Z"},
                              {ID_VIEW_LATENCY_WINDOW, false, "Undo Latency Window\tCtrl+Z"},
                              {ID_VIEW_OVERLAP, true, "Undo Overlap\tCtrl+Z"},
                              {ID_VIEW_ARROWS, true, "Undo Orientation Arrows\tCtrl+Z"},
                              {ID_VIEW_FIDUCIALS, true, "Undo Fiducial Points\tCtrl+Z"}}) {
    EXPECT_EQ(m_user.isChecked(tried.command), tried.initial) << tried.undo;
    m_user.choose(tried.command);
    EXPECT_EQ(m_user.isChecked(tried.command), !tried.initial) << tried.undo;
    EXPECT_EQ(::IsDlgButtonChecked(m_user.panel(), static_cast<int>(tried.command)) != 0, !tried.initial);
    EXPECT_EQ(m_user.menuText(ID_DIPOLES_UNDO), tried.undo);
    m_user.choose(ID_DIPOLES_UNDO);
    EXPECT_EQ(m_user.isChecked(tried.command), tried.initial) << tried.undo;
  }
}

TEST_F(ViewerView, PanelsBoxesAreTheMenusSwitches) {
  m_user.clickPanel(ID_VIEW_CURRENT_ONLY);
  EXPECT_EQ(m_user.dipoles().m_showCurrentDipoleOnly, 1);
  EXPECT_EQ(count(), "Dipoles shown: 1 of 10");
  m_user.clickPanel(ID_VIEW_CURRENT_ONLY);
  EXPECT_EQ(count(), "Dipoles shown: 10 of 10");
}

TEST_F(ViewerView, FilterFieldsLimitWhatIsShownWhileTheyAreTyped) {
  m_user.setField(IDC_FILTER_ERROR_MOST, "4");
  EXPECT_EQ(count(), "Dipoles shown: 5 of 10 (filter)");
  m_user.setField(IDC_FILTER_LATENCY_LEAST, "20");
  EXPECT_EQ(count(), "Dipoles shown: 3 of 10 (filter)");
  m_user.setField(IDC_FILTER_MOMENT_LEAST, "15,0");  // a comma is a point
  EXPECT_EQ(count(), "Dipoles shown: 2 of 10 (filter)");
  EXPECT_EQ(m_user.field(IDC_FILTER_TEXT), "Filter is on");
  m_user.clickPanel(IDC_FILTER_CLEAR);
  EXPECT_EQ(count(), "Dipoles shown: 10 of 10");
  EXPECT_EQ(m_user.field(IDC_FILTER_ERROR_MOST), "");
  EXPECT_EQ(m_user.field(IDC_FILTER_TEXT), "");
}

TEST_F(ViewerView, WhatIsNoNumberLimitsNothingAndIsTold) {
  m_user.setField(IDC_FILTER_ERROR_MOST, "4x");
  EXPECT_EQ(count(), "Dipoles shown: 10 of 10");
  EXPECT_EQ(m_user.field(IDC_FILTER_TEXT), "Not a number: 4x");
  EXPECT_EQ(m_user.field(IDC_FILTER_ERROR_MOST), "4x");
}

TEST_F(ViewerView, WhatIsTypedIntoALatencyFieldStays) {
  m_user.choose(ID_VIEW_LATENCY_WINDOW);
  for (const char* typed : {"", "-", "-5", "-5.", "-5.5"}) {
    m_user.setField(IDC_LATENCY_FROM, typed);
    EXPECT_EQ(m_user.field(IDC_LATENCY_FROM), typed);
  }
  EXPECT_DOUBLE_EQ(view().latency.from, -5.5);
  m_user.setField(IDC_LATENCY_FROM, "-");
  ::SetFocus(::GetDlgItem(m_user.panel(), IDC_COLOR_BY));
  m_user.wait();
  EXPECT_EQ(m_user.field(IDC_LATENCY_FROM), "-5.5");
}

TEST_F(ViewerView, MistakeInAFieldIsToldAsLongAsItStands) {
  m_user.setField(IDC_FILTER_ERROR_MOST, "4x");
  m_user.setField(IDC_FILTER_MOMENT_MOST, "100");
  EXPECT_EQ(m_user.field(IDC_FILTER_TEXT), "Not a number: 4x");
  m_user.setField(IDC_FILTER_ERROR_MOST, "4");
  EXPECT_EQ(m_user.field(IDC_FILTER_TEXT), "Filter is on");
}

TEST_F(ViewerView, LatencyWindowStartsWithTheWholeSet) {
  m_user.choose(ID_VIEW_LATENCY_WINDOW);
  EXPECT_EQ(m_user.field(IDC_LATENCY_FROM), "0");
  EXPECT_EQ(m_user.field(IDC_LATENCY_TO), "90");
  EXPECT_EQ(count(), "Dipoles shown: 10 of 10");
  m_user.setField(IDC_LATENCY_FROM, "35");
  m_user.setField(IDC_LATENCY_TO, "60");
  EXPECT_EQ(count(), "Dipoles shown: 3 of 10 (filter)");
  m_user.choose(ID_VIEW_SHOW_ALL);
  EXPECT_EQ(count(), "Dipoles shown: 10 of 10");
}

TEST_F(ViewerView, ToleranceSliderGoesFromTheSliceToAllDepths) {
  m_user.setSlider(IDC_TOLERANCE, 0);
  EXPECT_EQ(view().toleranceMm, 0.0);
  EXPECT_EQ(m_user.field(IDC_TOLERANCE_TEXT), "on this slice only");
  m_user.setSlider(IDC_TOLERANCE, 4);
  EXPECT_EQ(view().toleranceMm, 5.0);
  EXPECT_EQ(m_user.field(IDC_TOLERANCE_TEXT), "within 5 mm of the slice");
  m_user.setSlider(IDC_TOLERANCE, 11);
  EXPECT_EQ(view().toleranceMm, std::nullopt);
  EXPECT_EQ(m_user.field(IDC_TOLERANCE_TEXT), "in all depths");
  m_user.clickPanel(ID_VIEW_OVERLAP);
  EXPECT_EQ(m_user.field(IDC_TOLERANCE_TEXT), "on this slice only");
}

TEST_F(ViewerView, SizesFollowTheirSliders) {
  m_user.setSlider(IDC_GLYPH_SIZE, 15);
  EXPECT_EQ(view().glyphPixels, 15);
  m_user.setSlider(IDC_BALL_SIZE, 8);
  EXPECT_DOUBLE_EQ(view().ballRadius, 4.0);
}

TEST_F(ViewerView, ColourByAValueIsTheSameInMenuAndPanel) {
  m_user.choose(ID_VIEW_COLOR_ERROR);
  EXPECT_EQ(view().colourBy, host::ColourBy::fitError);
  EXPECT_EQ(::SendDlgItemMessageW(m_user.panel(), IDC_COLOR_BY, CB_GETCURSEL, 0, 0), 2);
  EXPECT_TRUE(m_user.isChecked(ID_VIEW_COLOR_ERROR));
  EXPECT_TRUE(m_user.isEnabled(ID_VIEW_LEGEND));
  m_user.chooseColourBy(3);
  EXPECT_EQ(view().colourBy, host::ColourBy::moment);
  EXPECT_TRUE(m_user.isChecked(ID_VIEW_COLOR_MOMENT));
  EXPECT_FALSE(m_user.isChecked(ID_VIEW_COLOR_ERROR));
  m_user.chooseColourBy(4);
  EXPECT_EQ(view().colourBy, host::ColourBy::cluster);
  EXPECT_TRUE(m_user.isChecked(ID_VIEW_COLOR_CLUSTER));
  m_user.choose(ID_VIEW_COLOR_MOMENT);
  m_user.choose(ID_VIEW_COLOR_CLUSTER);
  EXPECT_EQ(view().colourBy, host::ColourBy::cluster);
  EXPECT_EQ(::SendDlgItemMessageW(m_user.panel(), IDC_COLOR_BY, CB_GETCURSEL, 0, 0), 4);
  EXPECT_TRUE(m_user.isEnabled(ID_VIEW_LEGEND));
  m_user.chooseColourBy(0);
  EXPECT_EQ(view().colourBy, host::ColourBy::own);
  EXPECT_FALSE(m_user.isEnabled(ID_VIEW_LEGEND));
}

TEST_F(ViewerView, PanelCanBeHidden) {
  CRect before;
  m_user.frame().pane(0).GetClientRect(&before);
  EXPECT_TRUE(m_user.isChecked(ID_VIEW_PANEL));
  m_user.choose(ID_VIEW_PANEL);
  EXPECT_FALSE(m_user.isChecked(ID_VIEW_PANEL));
  CRect after;
  m_user.frame().pane(0).GetClientRect(&after);
  EXPECT_GT(after.Width(), before.Width());
}

// Whether all of a window of the panel is within the panel.
bool isInSight(HWND panel, HWND control) {
  CRect area;
  ::GetClientRect(panel, &area);
  CRect place;
  ::GetWindowRect(control, &place);
  ::MapWindowPoints(nullptr, panel, reinterpret_cast<POINT*>(&place), 2);
  return place.top >= area.top && place.bottom <= area.bottom && place.right <= area.right;
}

TEST_F(ViewerView, PanelScrollsInALowWindow) {
  const HWND clear = ::GetDlgItem(m_user.panel(), IDC_FILTER_CLEAR);
  const HWND first = ::GetDlgItem(m_user.panel(), ID_VIEW_SHOW_DIPOLES);
  const auto isScrollable = [&] { return (::GetWindowLongW(m_user.panel(), GWL_STYLE) & WS_VSCROLL) != 0; };
  EXPECT_FALSE(isScrollable());
  EXPECT_TRUE(isInSight(m_user.panel(), clear));
  m_user.frame().SetWindowPos(nullptr, 0, 0, 1000, 500, SWP_NOZORDER);
  m_user.wait();
  EXPECT_TRUE(isScrollable());
  EXPECT_TRUE(isInSight(m_user.panel(), first));
  EXPECT_FALSE(isInSight(m_user.panel(), clear));
  ::SendMessageW(m_user.panel(), WM_VSCROLL, SB_BOTTOM, 0);
  EXPECT_TRUE(isInSight(m_user.panel(), clear));
  EXPECT_FALSE(isInSight(m_user.panel(), first));
  ::SendMessageW(m_user.panel(), WM_VSCROLL, SB_PAGEUP, 0);
  EXPECT_TRUE(isInSight(m_user.panel(), first));
  EXPECT_FALSE(isInSight(m_user.panel(), clear));

  CPoint overThePanel(20, 20);
  ::ClientToScreen(m_user.panel(), &overThePanel);
  for (int notch = 0; notch < 20; ++notch) {
    m_user.frame().SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA),
                               MAKELPARAM(overThePanel.x, overThePanel.y));
  }
  EXPECT_TRUE(isInSight(m_user.panel(), clear));

  ::SetFocus(first);
  m_user.wait();
  EXPECT_TRUE(isInSight(m_user.panel(), first));
  ::SetFocus(clear);
  m_user.wait();
  EXPECT_TRUE(isInSight(m_user.panel(), clear));

  m_user.frame().SetWindowPos(nullptr, 0, 0, 1200, 1500, SWP_NOZORDER);
  m_user.wait();
  EXPECT_FALSE(isScrollable());
  EXPECT_TRUE(isInSight(m_user.panel(), first));
  EXPECT_TRUE(isInSight(m_user.panel(), clear));
}

TEST_F(ViewerView, StatusBarShowsCrosshairAndWarningsWholeInASmallWindow) {
  m_operator.answerFilesUtf8({exampleHead()});
  m_user.choose(ID_FILE_OPEN_MRI);
  m_user.frame().SetWindowPos(nullptr, 0, 0, 800, 600, SWP_NOZORDER);
  m_user.wait();
  ASSERT_NE(count().find("MRI NOT REGISTERED"), std::string::npos) << count();
  expectWhole(host::MainFrame::crosshairPart);
  expectWhole(host::MainFrame::countPart);
}

TEST_F(ViewerView, PlacesInEveryFrameStandWholeAndApartFromEachOtherIn1280Pixels) {
  m_user.frame().openMri(fromUtf8(exampleHead()));
  m_user.frame().registerFromFile(fromUtf8(examplesFolder() + "ch2.fiducials"));
  m_user.frame().SetWindowPos(nullptr, 0, 0, 1280, 900, SWP_NOZORDER);
  m_user.choose(ID_MNI_IS_UNNAMED);
  m_user.session().setCrosshair({-88.8, -88.8, -88.8});
  m_user.frame().SendMessage(WM_COMMAND, ID_VIEW_FIT);
  m_user.choose(ID_MNI_IS_UNNAMED);
  for (const int part :
       {host::MainFrame::crosshairPart, host::MainFrame::scannerPart, host::MainFrame::mniPart}) {
    EXPECT_FALSE(m_user.status(part).empty()) << part;
    expectWhole(part);
  }
  EXPECT_EQ(m_user.status(host::MainFrame::mniPart).rfind("MNI (which one is not known)  ", 0), 0U);
  m_user.choose(ID_ATLAS_AAL);
  EXPECT_EQ(m_user.status(host::MainFrame::labelPart).rfind("aal: ", 0), 0U);
  expectWhole(host::MainFrame::labelPart);
  EXPECT_TRUE(m_user.isChecked(ID_ATLAS_AAL));
  m_user.choose(ID_MNI_IS_COLIN27);
  EXPECT_EQ(m_user.status(host::MainFrame::mniPart).rfind("Colin27  ", 0), 0U);
  EXPECT_TRUE(m_user.isChecked(ID_MNI_IS_COLIN27));
  m_user.choose(ID_FILE_PHANTOM);  // the statement was about the other head
  EXPECT_EQ(m_user.status(host::MainFrame::mniPart), "");
  EXPECT_EQ(m_user.status(host::MainFrame::scannerPart), "");
  EXPECT_FALSE(m_user.isEnabled(ID_MNI_FILE));
}

TEST_F(ViewerView, AnMniTransformIsGivenByAFile) {
  m_user.frame().openMri(fromUtf8(exampleHead()));
  TempFolder folder;
  folder.write("to.txt", "1 0 0 10\n0 1 0 0\n0 0 1 0\n0 0 0 1\n");
  folder.write("bad.txt", "1 0 0 10\n");
  m_operator.answerFilesUtf8({folder.pathUtf8("to.txt")});
  m_user.choose(ID_MNI_FILE);
  ASSERT_TRUE(m_user.session().mni());
  EXPECT_EQ(m_user.session().mni()->fromScanner.shift().x, 10.0);
  EXPECT_TRUE(m_user.isChecked(ID_MNI_FILE));
  m_operator.answerFilesUtf8({folder.pathUtf8("bad.txt")});
  m_user.choose(ID_MNI_FILE);
  ASSERT_FALSE(m_operator.messages.empty());
  EXPECT_NE(m_operator.messages.back().text.find("bad.txt"), std::string::npos);
  EXPECT_TRUE(m_user.session().mni());
}

TEST_F(ViewerView, HelpSaysWhatItIs) {
  m_user.choose(ID_HELP_KEYS);
  m_user.choose(ID_HELP_ABOUT);
  ASSERT_EQ(m_operator.messages.size(), 2U);
  EXPECT_NE(m_operator.messages[0].text.find("Wheel"), std::string::npos);
  EXPECT_NE(m_operator.messages[1].text.find("no medical device"), std::string::npos);
}

}  // namespace
