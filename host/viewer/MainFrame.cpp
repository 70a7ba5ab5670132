#include "host/viewer/MainFrame.h"

#include <algorithm>
#include <cmath>

#include "host/text/Utf8.h"
#include "host/viewer/ScreenScale.h"

namespace host {

namespace {

constexpr int paneGap = 2;  // between the panes, pixels at 96 dots per inch
constexpr COLORREF gapColour = RGB(64, 70, 80);

}  // namespace

MainFrame* MainFrame::theFrame = nullptr;

BEGIN_MESSAGE_MAP(MainFrame, CFrameWnd)
ON_MESSAGE(WM_ACTIVATE, &MainFrame::OnActivate)
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_GETMINMAXINFO()
ON_WM_CLOSE()
ON_WM_QUERYENDSESSION()
ON_WM_DESTROY()
ON_WM_DROPFILES()
ON_WM_TIMER()
ON_WM_SETFOCUS()
ON_WM_MOUSEWHEEL()
ON_WM_INITMENUPOPUP()

ON_COMMAND(ID_FILE_NEW_SET, &MainFrame::OnNewSet)
ON_COMMAND(ID_FILE_OPEN_MRI, &MainFrame::OnOpenMri)
ON_COMMAND(ID_FILE_PHANTOM, &MainFrame::OnPhantom)
ON_COMMAND(ID_FILE_OPEN_SET, &MainFrame::OnOpenSet)
ON_COMMAND(ID_FILE_IMPORT, &MainFrame::OnImport)
ON_COMMAND(ID_FILE_SAVE_SET, &MainFrame::OnSaveSet)
ON_COMMAND(ID_FILE_SAVE_SET_AS, &MainFrame::OnSaveSetAs)
ON_COMMAND(ID_FILE_EXPORT, &MainFrame::OnExport)
ON_COMMAND(ID_MNI_FILE, &MainFrame::OnMniFile)
ON_COMMAND_RANGE(ID_MNI_IS_152, ID_MNI_IS_UNNAMED, &MainFrame::OnIsInMni)
ON_COMMAND(ID_MNI_NONE, &MainFrame::OnNoMni)
ON_COMMAND_RANGE(ID_ATLAS_AAL, ID_ATLAS_NONE, &MainFrame::OnAtlas)
ON_COMMAND(ID_FILE_SAVE_PICTURE, &MainFrame::OnSavePicture)
ON_COMMAND(ID_FILE_EXIT, &MainFrame::OnExit)
ON_COMMAND_RANGE(ID_FILE_RECENT_FIRST, ID_FILE_RECENT_LAST, &MainFrame::OnRecent)
ON_COMMAND_RANGE(ID_FILE_RECENT_MRI_FIRST, ID_FILE_RECENT_MRI_LAST, &MainFrame::OnRecentMri)
ON_UPDATE_COMMAND_UI(ID_FILE_EXPORT, &MainFrame::OnUpdateWithDipoles)
ON_UPDATE_COMMAND_UI_RANGE(ID_MNI_FILE, ID_MNI_NONE, &MainFrame::OnUpdateMni)
ON_UPDATE_COMMAND_UI_RANGE(ID_ATLAS_AAL, ID_ATLAS_NONE, &MainFrame::OnUpdateAtlas)

ON_COMMAND(ID_DIPOLES_UNDO, &MainFrame::OnUndo)
ON_COMMAND(ID_DIPOLES_REDO, &MainFrame::OnRedo)
ON_COMMAND(ID_DIPOLES_MANAGER, &MainFrame::OnManager)
ON_COMMAND(ID_DIPOLES_EDITOR, &MainFrame::OnEditor)
ON_COMMAND(ID_DIPOLES_COORDINATES, &MainFrame::OnCoordinates)
ON_COMMAND(ID_DIPOLES_FINDINGS, &MainFrame::OnFindings)
ON_COMMAND(ID_DIPOLES_NEXT, &MainFrame::OnNextDipole)
ON_COMMAND(ID_DIPOLES_PREVIOUS, &MainFrame::OnPreviousDipole)
ON_COMMAND(ID_DIPOLES_GO_TO, &MainFrame::OnGoToDipole)
ON_COMMAND(ID_REGISTER_FROM_SET, &MainFrame::OnRegisterFromSet)
ON_COMMAND(ID_REGISTER_FROM_FILE, &MainFrame::OnRegisterFromFile)
ON_COMMAND_RANGE(ID_REGISTER_NASION, ID_REGISTER_RIGHT_EAR, &MainFrame::OnPlaceFiducial)
ON_COMMAND(ID_REGISTER_PLACED, &MainFrame::OnRegisterPlaced)
ON_COMMAND(ID_REGISTER_NONE, &MainFrame::OnRegisterNone)
ON_UPDATE_COMMAND_UI(ID_DIPOLES_UNDO, &MainFrame::OnUpdateUndo)
ON_UPDATE_COMMAND_UI(ID_DIPOLES_REDO, &MainFrame::OnUpdateRedo)
ON_UPDATE_COMMAND_UI_RANGE(ID_DIPOLES_NEXT, ID_DIPOLES_GO_TO, &MainFrame::OnUpdateWithDipoles)
ON_UPDATE_COMMAND_UI_RANGE(ID_REGISTER_NASION, ID_REGISTER_RIGHT_EAR, &MainFrame::OnUpdatePlace)
ON_UPDATE_COMMAND_UI(ID_REGISTER_PLACED, &MainFrame::OnUpdateRegisterPlaced)
ON_UPDATE_COMMAND_UI(ID_REGISTER_NONE, &MainFrame::OnUpdateRegisterNone)

ON_COMMAND(ID_VIEW_SHOW_ALL, &MainFrame::OnShowAll)
ON_COMMAND_RANGE(ID_VIEW_SHOW_DIPOLES, ID_VIEW_SHOW_DIPOLES, &MainFrame::OnSwitch)
ON_COMMAND_RANGE(ID_VIEW_CURRENT_ONLY, ID_VIEW_FIDUCIALS, &MainFrame::OnSwitch)
ON_COMMAND_RANGE(ID_VIEW_COLOR_OWN, ID_VIEW_COLOR_CLUSTER, &MainFrame::OnColorBy)
ON_COMMAND(ID_VIEW_LEGEND, &MainFrame::OnLegend)
ON_COMMAND(ID_VIEW_PANEL, &MainFrame::OnPanel)
ON_COMMAND(ID_VIEW_FIT, &MainFrame::OnFit)
ON_COMMAND(ID_VIEW_RESET_GREY, &MainFrame::OnResetGrey)
ON_COMMAND_RANGE(ID_VIEW_FROM_LEFT, ID_VIEW_FROM_BOTTOM, &MainFrame::OnLookFrom)
ON_COMMAND(ID_HELP_KEYS, &MainFrame::OnKeys)
ON_COMMAND(ID_HELP_ABOUT, &MainFrame::OnAbout)
ON_UPDATE_COMMAND_UI(ID_VIEW_SHOW_DIPOLES, &MainFrame::OnUpdateSwitch)
ON_UPDATE_COMMAND_UI_RANGE(ID_VIEW_CURRENT_ONLY, ID_VIEW_FIDUCIALS, &MainFrame::OnUpdateSwitch)
ON_UPDATE_COMMAND_UI_RANGE(ID_VIEW_COLOR_OWN, ID_VIEW_COLOR_CLUSTER, &MainFrame::OnUpdateColorBy)
ON_UPDATE_COMMAND_UI(ID_VIEW_LEGEND, &MainFrame::OnUpdateLegend)
ON_UPDATE_COMMAND_UI(ID_VIEW_PANEL, &MainFrame::OnUpdatePanel)
END_MESSAGE_MAP()

MainFrame::MainFrame()
    : m_dipoles(std::make_unique<CDipoleFacezq>()),
      m_session(std::make_unique<Session>(*m_dipoles)),
      m_panel(*m_session,
              [this] {
                repaintPanes();
                showStatus();
              }),
      m_warningBar([this] { OnFindings(); }),
      m_findings(*m_session, [this](const std::vector<StandingFinding>& chosen,
                                    std::optional<LengthUnit> unit) { repairFindings(chosen, unit); }) {
  PaneOwner& owner = *this;
  m_panes[0] = std::make_unique<SliceWindow>(owner, 0, View::axial);
  m_panes[1] = std::make_unique<SliceWindow>(owner, 1, View::coronal);
  m_panes[2] = std::make_unique<SliceWindow>(owner, 2, View::sagittal);
  auto scene = std::make_unique<SceneWindow>(owner, 3);
  m_scene = scene.get();
  m_panes[3] = std::move(scene);
  theFrame = this;
  m_dipoles->setCbfUpdateViewers(&MainFrame::onSetChanged);
  m_dipoles->setCbfDipoleXYZ(&MainFrame::onPosition);
}

MainFrame::~MainFrame() {
  theFrame = nullptr;
}

BOOL MainFrame::create() {
  if (!LoadFrame(IDR_MAINFRAME, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN)) {
    return FALSE;
  }
  UINT id = IDC_PANE_FIRST;
  for (const auto& pane : m_panes) {
    if (!pane->createIn(this, id++)) {
      return FALSE;
    }
  }
  const RECT nowhere = {0, 0, 1, 1};
  if (!m_panel.createIn(this) ||
      !m_statusBar.Create(STATUSCLASSNAMEW, _T(""), WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, nowhere, this,
                          IDC_STATUS_BAR) ||
      !m_placeBar.Create(STATUSCLASSNAMEW, _T(""),
                         WS_CHILD | WS_VISIBLE | CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER, nowhere,
                         this, IDC_PLACE_BAR)) {
    return FALSE;
  }
  if (!m_warningBar.createIn(this, IDC_WARNING_BAR, m_panel) || !m_findings.createIn(this)) {
    return FALSE;
  }
  m_panel.ShowWindow(SW_SHOW);
  readRecent();
  DragAcceptFiles();
  layOut();
  showEverywhere();
  return TRUE;
}

// The module's dialogs and everything else that knows this window go before it does.
void MainFrame::OnDestroy() {
  m_dipoles->setCbfUpdateViewers(nullptr);
  m_dipoles->setCbfDipoleXYZ(nullptr);
  m_session.reset();
  m_dipoles.reset();
  CFrameWnd::OnDestroy();
}

bool MainFrame::isBusy() {
  bool isWaiting = false;
  const auto look = [](HWND window, LPARAM parameter) -> BOOL {
    if (::IsWindowVisible(window) != FALSE && ::IsWindowEnabled(window) == FALSE) {
      *reinterpret_cast<bool*>(parameter) = true;
    }
    return TRUE;
  };
  ::EnumThreadWindows(::GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&isWaiting));
  return isWaiting;
}

// The module's own messages and dialogs stand before its windows and leave this one enabled.
BOOL MainFrame::OnCommand(WPARAM wParam, LPARAM lParam) {
  if (!isBusy()) {
    return CFrameWnd::OnCommand(wParam, lParam);
  }
  ::MessageBeep(MB_OK);
  return TRUE;
}

PaneContents MainFrame::paneContents() {
  m_viewOnScreen = m_session->view();
  m_viewOnScreen.glyphPixels = onScreen(m_viewOnScreen.glyphPixels);
  PaneContents contents = {
      *m_dipoles,          m_session->head(),    m_viewOnScreen,           m_session->crosshair(),
      m_session->window(), m_session->colours(), m_session->placedPoints()};
  contents.scale = screenScale();
  return contents;
}

void MainFrame::moveCrosshair(const Vector3& head) {
  m_session->setCrosshair(head);
  repaintPanes();
  showStatus();
}

// The editors and the manager's list show it; the crosshair follows.
void MainFrame::takeDipole(int slot) {
  if (isBusy()) {
    return;
  }
  m_dipoles->chooseDipole(slot);
  followCurrentDipole();
}

void MainFrame::moveGreyWindow(double wider, double darker) {
  const GreyWindow now = m_session->window();
  const double range = now.high - now.low;
  const double middle = (now.low + now.high) * 0.5 + darker * range;
  const double half = range * 0.5 * std::exp(wider);
  m_session->setWindow({middle - half, middle + half});
  repaintPanes();
}

void MainFrame::toggleSinglePane(int pane) {
  m_singlePane = m_singlePane == pane ? -1 : pane;
  layOut();
}

void MainFrame::layOut() {
  if (m_statusBar.m_hWnd == nullptr) {
    return;
  }
  CRect area;
  GetClientRect(&area);
  CRect bar;
  m_statusBar.SendMessage(WM_SIZE);
  m_statusBar.GetWindowRect(&bar);
  const int height = area.Height() - 2 * bar.Height();
  m_placeBar.MoveWindow(0, height, area.Width(), bar.Height());
  const bool hasPanel = m_panel.IsWindowVisible() != FALSE;
  const int panelWidth = hasPanel ? m_panel.widthFor(height) : 0;
  const int width = area.Width() - panelWidth;
  if (hasPanel) {
    m_panel.MoveWindow(width, 0, panelWidth, height);
  }
  placeStatusParts();
  placePlaceParts();

  const int gap = onScreen(paneGap);
  const int top = m_warningBar.height();
  m_warningBar.MoveWindow(0, 0, width, top);
  const int paneWidth = (width - 3 * gap) / 2;
  const int paneHeight = (height - top - 3 * gap) / 2;
  for (int number = 0; number < paneCount; ++number) {
    PaneWindow& window = pane(number);
    if (m_singlePane >= 0) {
      window.MoveWindow(gap, top + gap, width - 2 * gap, height - top - 2 * gap);
    } else {
      const int column = number % 2;
      const int row = number / 2;
      window.MoveWindow(gap + column * (paneWidth + gap), top + gap + row * (paneHeight + gap), paneWidth,
                        paneHeight);
    }
    window.ShowWindow(m_singlePane < 0 || m_singlePane == number ? SW_SHOW : SW_HIDE);
  }
  ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

void MainFrame::OnSize(UINT /*type*/, int /*width*/, int /*height*/) {
  if (m_session != nullptr) {
    layOut();
  }
}

void MainFrame::OnGetMinMaxInfo(MINMAXINFO* info) {
  info->ptMinTrackSize = CPoint(onScreen(640), onScreen(480));
}

// The module asks for this window to be painted when something has changed.
void MainFrame::OnPaint() {
  CPaintDC context(this);
  CRect area;
  GetClientRect(&area);
  context.FillSolidRect(area, gapColour);
  repaintPanes();
  showStatus();
  noteLater();
}

void MainFrame::repaintPanes() {
  for (const auto& window : m_panes) {
    if (window->m_hWnd != nullptr) {
      window->Invalidate(FALSE);
    }
  }
}

void MainFrame::showEverywhere() {
  repaintPanes();
  m_panel.refresh();
  showStatus();
  showTitle();
  showFindings();
}

void MainFrame::warnOfOtherHead() {
  const CString mismatch = fromUtf8(m_session->headMismatch());
  if (!mismatch.IsEmpty()) {
    AfxMessageBox(mismatch, MB_ICONEXCLAMATION);
  }
}

bool MainFrame::tell(const std::exception& problem) {
  AfxMessageBox(fromUtf8(problem.what()), MB_ICONEXCLAMATION);
  return false;
}

// The keyboard returns to where it was before another window had it.
void MainFrame::OnSetFocus(CWnd* /*before*/) {
  if (::IsChild(m_hWnd, m_focusBefore) != FALSE && ::IsWindowVisible(m_focusBefore) != FALSE) {
    ::SetFocus(m_focusBefore);
    return;
  }
  pane(m_singlePane < 0 ? 0 : m_singlePane).SetFocus();
}

// The wheel turns what the pointer is over, whatever has the keyboard.
BOOL MainFrame::OnMouseWheel(UINT flags, short delta, CPoint at) {
  const auto turn = [&](CWnd& window) {
    CRect place;
    window.GetWindowRect(&place);
    const bool isMeant = window.IsWindowVisible() != FALSE && place.PtInRect(at) != FALSE;
    if (isMeant) {
      window.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(flags, delta), MAKELPARAM(at.x, at.y));
    }
    return isMeant;
  };
  if (!turn(m_panel)) {
    std::any_of(m_panes.begin(), m_panes.end(), [&](const auto& window) { return turn(*window); });
  }
  return TRUE;
}

}  // namespace host
