// The commands of the menus View and Help.
#include <algorithm>
#include <cmath>

#include "host/dipoles/SetSwitches.h"
#include "host/viewer/ColorChoices.h"
#include "host/viewer/MainFrame.h"

namespace host {

namespace {

bool isOn(const CDipoleFace9File& set, UINT id) {
  switch (id) {
    case ID_VIEW_SHOW_DIPOLES:
      return set.isShowDipoleArray() != 0;
    case ID_VIEW_CURRENT_ONLY:
      return set.m_showCurrentDipoleOnly != 0;
    case ID_VIEW_LATENCY_WINDOW:
      return set.getShowDipoleLatencySelected() != 0;
    case ID_VIEW_OVERLAP:
      return set.getShowDipole2DOverlap() != 0;
    case ID_VIEW_ARROWS:
      return areArrowsShown(set);
    default:
      return set.getShowFiducialPt() != 0;
  }
}

void turn(CDipoleFace9File& set, UINT id, int on) {
  switch (id) {
    case ID_VIEW_SHOW_DIPOLES:
      set.setShowDipoleArray(on);
      return;
    case ID_VIEW_CURRENT_ONLY:
      set.setShowCurrentDipoleOnly(on);
      return;
    case ID_VIEW_LATENCY_WINDOW:
      set.setShowDipoleLatencySelected(on);
      return;
    case ID_VIEW_OVERLAP:
      set.setShowDipole2DOverlap(on);
      return;
    case ID_VIEW_ARROWS:
      set.setShowDipoleOrientationAll(on);
      return;
    default:
      set.setShowFiducialPt(on);
      return;
  }
}

LPCTSTR nameOf(UINT id) {
  switch (id) {
    case ID_VIEW_SHOW_DIPOLES:
      return _T("Show Dipoles");
    case ID_VIEW_CURRENT_ONLY:
      return _T("Current Dipole Only");
    case ID_VIEW_LATENCY_WINDOW:
      return _T("Latency Window");
    case ID_VIEW_OVERLAP:
      return _T("Overlap");
    case ID_VIEW_ARROWS:
      return _T("Orientation Arrows");
    default:
      return _T("Fiducial Points");
  }
}

// From the earliest to the latest dipole, for a window that was not chosen yet.
LatencyWindow latenciesOf(const CDipoleFace& set, const UnknownDipoles& unknown) {
  LatencyWindow window;
  bool isEmpty = true;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.getDipole(slot);
    if (dipole == nullptr || !std::isfinite(dipole->m_latency) ||
        unknown.isUnknown(*dipole, DipoleValue::latency)) {
      continue;
    }
    window.from = isEmpty ? dipole->m_latency : (std::min)(window.from, dipole->m_latency);
    window.to = isEmpty ? dipole->m_latency : (std::max)(window.to, dipole->m_latency);
    isEmpty = false;
  }
  return window;
}

}  // namespace

// These switches belong to the set and are saved with it, so they can be undone like any other change.
void MainFrame::OnSwitch(UINT id) {
  noteQuietChange();
  const bool wasOn = isOn(*m_dipoles, id);
  LatencyWindow& latency = m_session->view().latency;
  if (id == ID_VIEW_LATENCY_WINDOW && !wasOn && latency.from == 0.0 && latency.to == 0.0) {
    latency = latenciesOf(*m_dipoles, m_session->unknown());
  }
  turn(*m_dipoles, id, wasOn ? 0 : 1);
  afterCommand(nameOf(id));
}

void MainFrame::OnShowAll() {
  noteQuietChange();
  switchAllOn(*m_dipoles);
  m_session->view().filter = DipoleFilter();
  m_dipoles->updateDipoleList();
  afterCommand(_T("Show All Dipoles"));
}

void MainFrame::OnColorBy(UINT id) {
  m_session->view().colourBy = colorChoices[id - ID_VIEW_COLOR_OWN];
  showEverywhere();
}

void MainFrame::OnLegend() {
  m_session->view().showLegend = !m_session->view().showLegend;
  showEverywhere();
}

void MainFrame::OnPanel() {
  m_panel.ShowWindow(m_panel.IsWindowVisible() != FALSE ? SW_HIDE : SW_SHOW);
  layOut();
}

void MainFrame::OnFit() {
  for (const auto& window : m_panes) {
    window->fit();
  }
}

void MainFrame::OnResetGrey() {
  m_session->resetWindow();
  repaintPanes();
}

void MainFrame::OnLookFrom(UINT id) {
  m_scene->lookFrom(allStandpoints[id - ID_VIEW_FROM_LEFT]);
}

void MainFrame::OnUpdateSwitch(CCmdUI* item) {
  item->SetCheck(isOn(*m_dipoles, item->m_nID) ? 1 : 0);
}

void MainFrame::OnUpdateColorBy(CCmdUI* item) {
  item->SetRadio(colorChoices[item->m_nID - ID_VIEW_COLOR_OWN] == m_session->view().colourBy ? TRUE : FALSE);
}

void MainFrame::OnUpdateLegend(CCmdUI* item) {
  item->Enable(m_session->view().colourBy != ColourBy::own ? TRUE : FALSE);
  item->SetCheck(m_session->view().showLegend ? 1 : 0);
}

void MainFrame::OnUpdatePanel(CCmdUI* item) {
  item->SetCheck(m_panel.IsWindowVisible() != FALSE ? 1 : 0);
}

void MainFrame::OnKeys() {
  AfxMessageBox(
      _T("Slices\n")
      _T("    Left button: crosshair; a click on a dipole takes it\n")
      _T("    Right button, dragged: grey values (across: range, up and down: brightness)\n")
      _T("    Wheel, Page Up, Page Down: next slice (Shift with a Page key: 10 mm)\n")
      _T("    Arrow keys: crosshair by 1 mm (Shift: 10 mm)\n\n")
      _T("3D\n")
      _T("    Left button, dragged: turn; a click on a dipole takes it\n")
      _T("    Wheel, right button: zoom; arrow keys: turn\n\n")
      _T("All panes\n")
      _T("    Ctrl+wheel, + and -: zoom; middle button, or Shift with the left one: move\n")
      _T("    Home: whole head; double click or Space: this pane alone, and back"),
      MB_ICONINFORMATION);
}

void MainFrame::OnAbout() {
  AfxMessageBox(
      _T("Dipole Viewer\n\nThe reference host of the dipole module: equivalent current dipoles over a ")
      _T("patient's MRI.\n\nIt shows what a fit found; it is no medical device, and the sides on its ")
      _T("pictures are only as right as the fiducial points."),
      MB_ICONINFORMATION);
}

}  // namespace host
