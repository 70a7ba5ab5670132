#include "host/viewer/MainFrame.h"

#include <cmath>
#include <string>

#include "host/session/DipoleVisibility.h"
#include "host/viewer/Utf8.h"

namespace host {

namespace {

constexpr int gap = 2;  // pixels between the panes
constexpr COLORREF gapColour = RGB(64, 70, 80);

// How long the module must be quiet before what it did without telling becomes a step that can be undone.
constexpr UINT_PTR quietTimer = 1;
constexpr UINT quietMilliseconds = 250;

CString number(double value, int decimals) {
  CString text;
  text.Format(_T("%.*f"), decimals, value);
  return text;
}

// A label may be longer than any status bar, and than its length can tell.
CString shortened(const CString& label) {
  constexpr int most = 200;
  return label.GetLength() > most ? label.Left(most) + _T("...") : label;
}

CString placeText(const Vector3& head) {
  return number(head.x, 1) + _T("  ") + number(head.y, 1) + _T("  ") + number(head.z, 1) + _T(" mm");
}

}  // namespace

MainFrame* MainFrame::theFrame = nullptr;

BEGIN_MESSAGE_MAP(MainFrame, CFrameWnd)
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
ON_COMMAND(ID_FILE_EXPORT_TEXT, &MainFrame::OnExportText)
ON_COMMAND(ID_FILE_EXPORT_CSV, &MainFrame::OnExportCsv)
ON_COMMAND(ID_FILE_SAVE_PICTURE, &MainFrame::OnSavePicture)
ON_COMMAND(ID_FILE_EXIT, &MainFrame::OnExit)
ON_COMMAND_RANGE(ID_FILE_RECENT_FIRST, ID_FILE_RECENT_LAST, &MainFrame::OnRecent)
ON_UPDATE_COMMAND_UI(ID_FILE_EXPORT_TEXT, &MainFrame::OnUpdateWithDipoles)
ON_UPDATE_COMMAND_UI(ID_FILE_EXPORT_CSV, &MainFrame::OnUpdateWithDipoles)

ON_COMMAND(ID_DIPOLES_UNDO, &MainFrame::OnUndo)
ON_COMMAND(ID_DIPOLES_REDO, &MainFrame::OnRedo)
ON_COMMAND(ID_DIPOLES_MANAGER, &MainFrame::OnManager)
ON_COMMAND(ID_DIPOLES_EDITOR, &MainFrame::OnEditor)
ON_COMMAND(ID_DIPOLES_COORDINATES, &MainFrame::OnCoordinates)
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
ON_COMMAND_RANGE(ID_VIEW_COLOR_OWN, ID_VIEW_COLOR_MOMENT, &MainFrame::OnColorBy)
ON_COMMAND(ID_VIEW_LEGEND, &MainFrame::OnLegend)
ON_COMMAND(ID_VIEW_PANEL, &MainFrame::OnPanel)
ON_COMMAND(ID_VIEW_FIT, &MainFrame::OnFit)
ON_COMMAND(ID_VIEW_RESET_GREY, &MainFrame::OnResetGrey)
ON_COMMAND_RANGE(ID_VIEW_FROM_LEFT, ID_VIEW_FROM_BOTTOM, &MainFrame::OnLookFrom)
ON_COMMAND(ID_HELP_KEYS, &MainFrame::OnKeys)
ON_COMMAND(ID_HELP_ABOUT, &MainFrame::OnAbout)
ON_UPDATE_COMMAND_UI(ID_VIEW_SHOW_DIPOLES, &MainFrame::OnUpdateSwitch)
ON_UPDATE_COMMAND_UI_RANGE(ID_VIEW_CURRENT_ONLY, ID_VIEW_FIDUCIALS, &MainFrame::OnUpdateSwitch)
ON_UPDATE_COMMAND_UI_RANGE(ID_VIEW_COLOR_OWN, ID_VIEW_COLOR_MOMENT, &MainFrame::OnUpdateColorBy)
ON_UPDATE_COMMAND_UI(ID_VIEW_LEGEND, &MainFrame::OnUpdateLegend)
ON_UPDATE_COMMAND_UI(ID_VIEW_PANEL, &MainFrame::OnUpdatePanel)
END_MESSAGE_MAP()

MainFrame::MainFrame()
    : m_dipoles(std::make_unique<CDipoleFacezq>()),
      m_session(std::make_unique<Session>(*m_dipoles)),
      m_panel(*m_session, [this] {
        repaintPanes();
        showStatus();
      }) {
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
  if (!LoadFrame(IDR_MAINFRAME, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN))
    return FALSE;
  UINT id = IDC_PANE_FIRST;
  for (const auto& pane : m_panes)
    if (!pane->createIn(this, id++))
      return FALSE;
  const RECT nowhere = {0, 0, 1, 1};
  if (!m_panel.createIn(this) ||
      !m_statusBar.Create(STATUSCLASSNAMEW, _T(""), WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, nowhere, this,
                          IDC_STATUS_BAR))
    return FALSE;
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
  m_session.reset();
  m_dipoles.reset();
  CFrameWnd::OnDestroy();
}

void MainFrame::PostNcDestroy() {
  CFrameWnd::PostNcDestroy();
}

// The coordinates are zeros by design; the current dipole says where it is.
int MainFrame::onPosition(double /*x*/, double /*y*/, double /*z*/, double /*latency*/) {
  if (theFrame != nullptr)
    theFrame->followCurrentDipole();
  return 1;
}

int MainFrame::onSetChanged(bool /*unused*/) {
  if (theFrame != nullptr && theFrame->m_session != nullptr)
    theFrame->afterCommand(CString());
  return 1;
}

void MainFrame::afterCommand(const CString& name) {
  KillTimer(quietTimer);
  m_session->noteChange(name);
  showEverywhere();
}

void MainFrame::noteQuietChange() {
  KillTimer(quietTimer);
  if (m_session->noteChange())
    showEverywhere();
}

void MainFrame::OnTimer(UINT_PTR id) {
  if (id == quietTimer)
    noteQuietChange();
}

void MainFrame::onIdle() {
  if (m_session == nullptr)
    return;
  if (m_dipoles->getCurrentDipole() != m_followed || m_dipoles->m_currentDipole != m_followedSlot)
    followCurrentDipole();
}

void MainFrame::followCurrentDipole() {
  m_followed = m_dipoles->getCurrentDipole();
  m_followedSlot = m_dipoles->m_currentDipole;
  m_session->goToCurrentDipole();
  repaintPanes();
  showStatus();
}

PaneContents MainFrame::paneContents() {
  return {*m_dipoles,          m_session->head(),   m_session->view(), m_session->crosshair(),
          m_session->window(), m_session->colours()};
}

void MainFrame::showPointer(const Vector3& head) {
  const Volume& volume = *m_session->head().volume;
  const Vector3 index = volume.fromScanner()(m_session->head().frame.toScanner(head));
  CString text = _T("Pointer  ") + placeText(head);
  const auto& size = volume.dimensions();
  const int voxel[3] = {static_cast<int>(std::lround(index.x)), static_cast<int>(std::lround(index.y)),
                        static_cast<int>(std::lround(index.z))};
  bool isInside = true;
  for (std::size_t axis = 0; axis < 3; ++axis)
    isInside = isInside && voxel[axis] >= 0 && voxel[axis] < size[axis];
  if (isInside) {
    CString place;
    place.Format(_T("   voxel %d %d %d = %g"), voxel[0], voxel[1], voxel[2],
                 static_cast<double>(volume.voxel(voxel[0], voxel[1], voxel[2])));
    text += place;
  }
  m_statusBar.SendMessage(SB_SETTEXTW, pointerPart, reinterpret_cast<LPARAM>(text.GetString()));
}

void MainFrame::hidePointer() {
  m_statusBar.SendMessage(SB_SETTEXTW, pointerPart, reinterpret_cast<LPARAM>(_T("")));
}

void MainFrame::moveCrosshair(const Vector3& head) {
  m_session->setCrosshair(head);
  repaintPanes();
  showStatus();
}

// The editors and the manager's list hear of it; the crosshair follows.
void MainFrame::takeDipole(int slot) {
  m_dipoles->setCurrentDipole(slot);
  m_dipoles->updateDipoleEditor();
  chooseInManager(slot);
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
  if (m_statusBar.m_hWnd == nullptr)
    return;
  CRect area;
  GetClientRect(&area);
  CRect bar;
  m_statusBar.SendMessage(WM_SIZE);
  m_statusBar.GetWindowRect(&bar);
  const int height = area.Height() - bar.Height();
  const bool hasPanel = m_panel.IsWindowVisible() != FALSE;
  const int panelWidth = hasPanel ? m_panel.width() : 0;
  const int width = area.Width() - panelWidth;
  if (hasPanel)
    m_panel.MoveWindow(width, 0, panelWidth, height);
  const int edges[statusParts] = {area.Width() * 24 / 100, area.Width() * 40 / 100, area.Width() * 76 / 100,
                                  -1};
  m_statusBar.SendMessage(SB_SETPARTS, statusParts, reinterpret_cast<LPARAM>(edges));

  const int paneWidth = (width - 3 * gap) / 2;
  const int paneHeight = (height - 3 * gap) / 2;
  for (int number = 0; number < paneCount; ++number) {
    PaneWindow& window = pane(number);
    if (m_singlePane >= 0) {
      window.MoveWindow(gap, gap, width - 2 * gap, height - 2 * gap);
    } else {
      const int column = number % 2;
      const int row = number / 2;
      window.MoveWindow(gap + column * (paneWidth + gap), gap + row * (paneHeight + gap), paneWidth,
                        paneHeight);
    }
    window.ShowWindow(m_singlePane < 0 || m_singlePane == number ? SW_SHOW : SW_HIDE);
  }
  ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

void MainFrame::OnSize(UINT /*type*/, int /*width*/, int /*height*/) {
  if (m_session != nullptr)
    layOut();
}

void MainFrame::OnGetMinMaxInfo(MINMAXINFO* info) {
  info->ptMinTrackSize = CPoint(640, 480);
}

// The module asks for this window to be painted when something has changed.
void MainFrame::OnPaint() {
  CPaintDC context(this);
  CRect area;
  GetClientRect(&area);
  context.FillSolidRect(area, gapColour);
  repaintPanes();
  SetTimer(quietTimer, quietMilliseconds, nullptr);
}

void MainFrame::repaintPanes() {
  for (const auto& window : m_panes)
    if (window->m_hWnd != nullptr)
      window->Invalidate(FALSE);
}

void MainFrame::showEverywhere() {
  repaintPanes();
  m_panel.refresh();
  showStatus();
  showTitle();
}

CString MainFrame::statusText(int part) const {
  const WPARAM which = static_cast<WPARAM>(part);
  const int length = LOWORD(m_statusBar.SendMessage(SB_GETTEXTLENGTHW, which));
  CString text;
  m_statusBar.SendMessage(SB_GETTEXTW, which, reinterpret_cast<LPARAM>(text.GetBuffer(length)));
  text.ReleaseBuffer();
  return text;
}

void MainFrame::showStatus() {
  const auto show = [this](StatusPart part, const CString& text) {
    m_statusBar.SendMessage(SB_SETTEXTW, part, reinterpret_cast<LPARAM>(text.GetString()));
  };
  show(crosshairPart, _T("Crosshair  ") + placeText(m_session->crosshair()));

  CString dipole = _T("No current dipole");
  if (const CDipoleszq* const current = m_dipoles->getCurrentDipole()) {
    CString head;
    head.Format(_T("Dipole %d of %d  "), m_dipoles->m_currentDipole + 1, m_dipoles->m_totalDipoles);
    dipole = head + shortened(current->m_label) + _T("   ") + number(current->m_latency, 1) + _T(" ms   error ") +
             number(current->m_fitError, 1) + _T(" %   moment ") + number(current->m_moment, 1) +
             (m_dipoles->m_momentInNAm != 0 ? _T(" nAm") : _T(""));
  }
  show(dipolePart, dipole);

  const VisibleCount count = countVisible(*m_dipoles, m_session->view());
  CString dipoles;
  dipoles.Format(_T("Dipoles shown: %d of %d"), count.shown, count.total);
  if (!m_session->head().isRegistered())
    dipoles += _T("   MRI NOT REGISTERED");
  show(countPart, dipoles);
}

void MainFrame::showTitle() {
  const CString& path = m_session->setPath();
  const CString name = path.IsEmpty() ? CString(_T("Untitled")) : path.Mid(path.ReverseFind(_T('\\')) + 1);
  SetWindowText(name + (m_session->isUnsaved() ? _T(" *") : _T("")) + _T(" - ") +
                fromUtf8(m_session->head().name) + _T(" - Dipole Viewer"));
}

// The module's own list: the row of the dipole alone is selected and in sight.
void MainFrame::chooseInManager(int slot) {
  const CDialog* const manager = m_dipoles->getDlgDipoleList();
  const HWND list =
      manager == nullptr ? nullptr : ::FindWindowExW(manager->m_hWnd, nullptr, WC_LISTVIEWW, nullptr);
  const int row = m_dipoles->getDipoleListItemID(slot);
  if (list == nullptr || manager->IsWindowVisible() == FALSE || row < 0)
    return;
  LVITEM item = {};
  item.stateMask = LVIS_SELECTED;
  ::SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  item.state = item.stateMask;
  ::SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  ::SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

void MainFrame::refreshModuleWindows() {
  m_dipoles->updateDipoleList();
  m_dipoles->updateDipoleSettings();
}

bool MainFrame::tell(const std::exception& problem) {
  AfxMessageBox(fromUtf8(problem.what()), MB_ICONEXCLAMATION);
  return false;
}

void MainFrame::OnSetFocus(CWnd* /*before*/) {
  pane(m_singlePane < 0 ? 0 : m_singlePane).SetFocus();
}

// The wheel turns what the pointer is over, whatever has the keyboard.
BOOL MainFrame::OnMouseWheel(UINT flags, short delta, CPoint at) {
  for (const auto& window : m_panes) {
    CRect place;
    window->GetWindowRect(&place);
    if (window->IsWindowVisible() != FALSE && place.PtInRect(at) != FALSE) {
      window->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(flags, delta), MAKELPARAM(at.x, at.y));
      return TRUE;
    }
  }
  return TRUE;
}

}  // namespace host
