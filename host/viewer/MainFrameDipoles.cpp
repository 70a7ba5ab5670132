// The commands of the menu Dipoles: the module's windows, undo, registration.
#include <stdexcept>

#include "host/head/FiducialFile.h"
#include "host/head/HeadPlacement.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"
#include "host/viewer/MainFrame.h"

namespace host {

void MainFrame::OnManager() {
  m_dipoles->showDipoleList(this, &MainFrame::onPosition);
  takeOverManager();
}

void MainFrame::OnEditor() {
  m_dipoles->dipoleEdit(this);
}

void MainFrame::OnCoordinates() {
  m_dipoles->setDipoleCoordinate(this);
}

// Dipoles that come back are new objects, so every window of the module is brought up to date.
void MainFrame::step(UndoHistory::Moved (Session::*move)()) {
  noteQuietChange();
  if ((m_session.get()->*move)() == UndoHistory::Moved::noMemory) {
    AfxMessageBox(_T("Not enough memory"), MB_ICONEXCLAMATION);
  }
  refreshModuleWindows();
  m_dipoles->updateDipoleEditor();
  showEverywhere();
}

void MainFrame::OnUndo() {
  step(&Session::undo);
}

void MainFrame::OnRedo() {
  step(&Session::redo);
}

void MainFrame::stepDipole(CDipoleszq* (CDipoleFace::*next)()) {
  if ((m_dipoles.get()->*next)() != nullptr) {
    takeDipole(m_dipoles->m_currentDipole);
  }
}

void MainFrame::OnNextDipole() {
  stepDipole(&CDipoleFace::getNextDipole);
}

void MainFrame::OnPreviousDipole() {
  stepDipole(&CDipoleFace::getPreviousDipole);
}

void MainFrame::OnGoToDipole() {
  followCurrentDipole();
}

// `registration` registers the head, or throws why not.
template <class Registration>
bool MainFrame::registerBy(Registration registration) {
  bool isDone = true;
  try {
    registration();
  } catch (const std::exception& problem) {
    isDone = tell(problem);
  }
  OnFit();
  showEverywhere();
  if (isDone) {
    warnOfOtherHead();
  }
  return isDone;
}

void MainFrame::OnRegisterFromSet() {
  registerBy([this] { m_session->registerHead(m_session->fiducialsOfSet()); });
}

bool MainFrame::registerFromFile(const CString& path) {
  return registerBy(
      [&] { m_session->registerHead(inScanner(readFiducialFile(pathOf(path)), m_session->head())); });
}

void MainFrame::OnRegisterFromFile() {
  const CString path = askForName(
      true, nullptr, _T("Fiducial points (*.fiducials;*.fif)|*.fiducials;*.fif|All files (*.*)|*.*||"));
  if (!path.IsEmpty()) {
    registerFromFile(path);
  }
}

void MainFrame::OnPlaceFiducial(UINT id) {
  m_session->placeFiducial(static_cast<FiducialName>(id - ID_REGISTER_NASION));
  showEverywhere();
}

void MainFrame::OnRegisterPlaced() {
  registerBy([this] { m_session->registerPlaced(); });
}

void MainFrame::OnRegisterNone() {
  m_session->unregister();
  OnFit();
  showEverywhere();
}

void MainFrame::OnUpdateUndo(CCmdUI* item) {
  item->SetText(m_session->history().undoText() + _T("\tCtrl+Z"));
  item->Enable(m_session->history().undoSteps() > 0 ? TRUE : FALSE);
}

void MainFrame::OnUpdateRedo(CCmdUI* item) {
  item->SetText(m_session->history().redoText() + _T("\tCtrl+Y"));
  item->Enable(m_session->history().redoSteps() > 0 ? TRUE : FALSE);
}

void MainFrame::OnUpdateWithDipoles(CCmdUI* item) {
  item->Enable(m_dipoles->m_totalDipoles > 0 ? TRUE : FALSE);
}

void MainFrame::OnUpdatePlace(CCmdUI* item) {
  item->SetCheck(m_session->placedFiducials()[item->m_nID - ID_REGISTER_NASION] ? 1 : 0);
}

void MainFrame::OnUpdateRegisterPlaced(CCmdUI* item) {
  const auto placed = m_session->placedFiducials();
  item->Enable(placed[0] && placed[1] && placed[2] ? TRUE : FALSE);
}

void MainFrame::OnUpdateRegisterNone(CCmdUI* item) {
  item->Enable(m_session->head().isRegistered() ? TRUE : FALSE);
}

}  // namespace host
