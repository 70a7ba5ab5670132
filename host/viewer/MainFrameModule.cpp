// What goes on between the viewer and the module's windows: its callbacks, and what it does without a word.
#include "host/viewer/MainFrame.h"

namespace host {

namespace {

// How long the module must be quiet before what it did without telling becomes a step that can be undone.
constexpr UINT_PTR quietTimer = 1;
constexpr UINT quietMilliseconds = 250;

}  // namespace

// The coordinates are zeros by design; the current dipole says where it is.
int MainFrame::onPosition(double /*x*/, double /*y*/, double /*z*/, double /*latency*/) {
  if (theFrame != nullptr && theFrame->m_session != nullptr) {
    theFrame->followCurrentDipole();
  }
  return 1;
}

int MainFrame::onSetChanged(bool /*unused*/) {
  if (theFrame != nullptr && theFrame->m_session != nullptr) {
    theFrame->afterCommand(CString());
  }
  return 1;
}

void MainFrame::afterCommand(const CString& name) {
  KillTimer(quietTimer);
  m_session->noteChange(name);
  showEverywhere();
  tellOfDroppedSteps();
}

void MainFrame::noteQuietChange() {
  KillTimer(quietTimer);
  if (m_session->noteChange()) {
    showEverywhere();
    tellOfDroppedSteps();
  }
}

void MainFrame::noteLater() {
  SetTimer(quietTimer, quietMilliseconds, nullptr);
}

// The module's editor changes dipoles without a word when it is left.
LRESULT MainFrame::OnActivate(WPARAM state, LPARAM /*other*/) {
  if (LOWORD(state) == WA_INACTIVE && ::IsChild(m_hWnd, ::GetFocus()) != FALSE) {
    m_focusBefore = ::GetFocus();
  }
  if (LOWORD(state) != WA_INACTIVE && m_session != nullptr && m_statusBar.m_hWnd != nullptr) {
    repaintPanes();
    showStatus();
    noteLater();
  }
  return Default();
}

void MainFrame::OnTimer(UINT_PTR id) {
  if (id == quietTimer && isBusy()) {
    noteLater();  // the work is not done yet: half of it would become a step
  } else if (id == quietTimer) {
    noteQuietChange();
  }
}

void MainFrame::onIdle() {
  if (m_session == nullptr) {
    return;
  }
  m_panel.bringFocusIntoView();
  takeBackActivation();
  if (m_dipoles->getCurrentDipole() != m_followed || m_dipoles->m_currentDipole != m_followedSlot) {
    followCurrentDipole();
  }
}

// The system need not activate another window when the active one is hidden, as the module's are when they
// are closed: then no window has the keyboard. When the user has gone to another program, the last one stays
// visible.
void MainFrame::takeBackActivation() {
  if (const HWND active = ::GetActiveWindow()) {
    m_lastActive = active;
  } else if (m_lastActive != nullptr && ::IsWindowVisible(m_lastActive) == FALSE) {
    m_lastActive = m_hWnd;
    ::SetForegroundWindow(m_hWnd);
  }
}

void MainFrame::followCurrentDipole() {
  m_followed = m_dipoles->getCurrentDipole();
  m_followedSlot = m_dipoles->m_currentDipole;
  m_session->goToCurrentDipole();
  repaintPanes();
  showStatus();
}

void MainFrame::refreshModuleWindows() {
  m_dipoles->updateDipoleList();
  m_dipoles->updateDipoleSettings();
}

}  // namespace host
