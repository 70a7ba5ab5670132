// The commands of the menu File.
#include <afxdlgs.h>

#include <stdexcept>

#include "host/exchange/FileKind.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"
#include "host/viewer/MainFrame.h"
#include "host/viewer/RecentMenu.h"

namespace host {

namespace {

constexpr LPCTSTR mriFilter =
    _T("Heads (*.nii; *.nii.gz; *.mri; *.mgh; *.mgz; *.hdr; ")
    _T("*.img)|*.nii;*.nii.gz;*.mri;*.mgh;*.mgz;*.hdr;*.img|")
    _T("All files (*.*)|*.*||");
constexpr LPCTSTR setFilter = _T("Dipole sets (*.dipset)|*.dipset|All files (*.*)|*.*||");
constexpr RecentMenu setMenu{_T("Recent Dipole Sets"), ID_FILE_RECENT_FIRST, ID_FILE_NO_RECENT};
constexpr RecentMenu headMenu{_T("Recent MRI"), ID_FILE_RECENT_MRI_FIRST, ID_FILE_NO_RECENT_MRI};

}  // namespace

CString MainFrame::askForName(bool isOpen, LPCTSTR extension, LPCTSTR filter, LPCTSTR proposal) {
  const DWORD flags = isOpen ? OFN_FILEMUSTEXIST | OFN_HIDEREADONLY : OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY;
  CFileDialog dialog(isOpen ? TRUE : FALSE, extension, proposal, flags, filter, this);
  return dialog.DoModal() == IDOK ? dialog.GetPathName() : CString();
}

// False: the user wants to keep them, or they could not be saved.
bool MainFrame::mayDropChanges() {
  noteQuietChange();
  if (!m_session->isUnsaved()) {
    return true;
  }
  const CString& path = m_session->setPath();
  const CString name = path.IsEmpty() ? CString(_T("the new dipole set")) : fileNameOf(path);
  const int answer =
      AfxMessageBox(_T("Save the changes to ") + name + _T("?"), MB_YESNOCANCEL | MB_ICONQUESTION);
  return answer == IDNO || (answer == IDYES && saveAsked());
}

bool MainFrame::save(const CString& path) {
  try {
    noteQuietChange();
    m_session->saveSet(path);
    writeRecent();
    showTitle();
    const std::string loss = m_session->lossOfSaving();
    if (!loss.empty()) {
      AfxMessageBox(fromUtf8(loss), MB_ICONINFORMATION);
    }
    return true;
  } catch (const std::exception& problem) {
    return tell(problem);
  }
}

bool MainFrame::saveAsked() {
  const CString& path = m_session->setPath();
  if (!path.IsEmpty()) {
    return save(path);
  }
  const CString chosen = askForName(false, _T("dipset"), setFilter);
  return !chosen.IsEmpty() && save(chosen);
}

void MainFrame::openSet(const CString& path) {
  try {
    m_session->openSet(path);
  } catch (const std::exception& problem) {
    tell(problem);
  }
  writeRecent();
  refreshModuleWindows();
  showEverywhere();
}

bool MainFrame::openMri(const CString& path) {
  noteQuietChange();
  const std::vector<StandingFinding> before = m_session->findings();
  const HCURSOR cursor = ::SetCursor(::LoadCursorW(nullptr, reinterpret_cast<LPCTSTR>(IDC_WAIT)));
  bool isOpen = false;
  try {
    isOpen = m_session->openMri(path, asker());
  } catch (const std::exception& problem) {
    tell(problem);
  }
  ::SetCursor(cursor);
  writeRecent();
  if (!isOpen) {
    return false;
  }
  for (const auto& window : m_panes) {
    window->fit();
  }
  showEverywhere();
  if (!m_session->notice().empty()) {
    AfxMessageBox(fromUtf8(m_session->notice()), MB_ICONINFORMATION);
  }
  openNewDoubts(before);
  return true;
}

void MainFrame::OnNewSet() {
  if (!mayDropChanges()) {
    return;
  }
  try {
    m_session->newSet();
  } catch (const std::exception& problem) {
    tell(problem);
  }
  refreshModuleWindows();
  showEverywhere();
}

void MainFrame::OnOpenMri() {
  const CString path = askForName(true, nullptr, mriFilter);
  if (!path.IsEmpty()) {
    openMri(path);
  }
}

void MainFrame::OnPhantom() {
  try {
    m_session->usePhantom();
  } catch (const std::exception& problem) {
    tell(problem);
  }
  OnFit();
  showEverywhere();
  if (!m_session->notice().empty()) {
    AfxMessageBox(fromUtf8(m_session->notice()), MB_ICONINFORMATION);
  }
}

void MainFrame::OnOpenSet() {
  if (!mayDropChanges()) {
    return;
  }
  const CString path = askForName(true, nullptr, setFilter);
  if (!path.IsEmpty()) {
    openSet(path);
  }
}

void MainFrame::OnSaveSet() {
  saveAsked();
}

void MainFrame::OnSaveSetAs() {
  const CString path = askForName(false, _T("dipset"), setFilter, fileNameOf(m_session->setPath()));
  if (!path.IsEmpty()) {
    save(path);
  }
}

void MainFrame::OnRecent(UINT id) {
  const std::size_t number = id - ID_FILE_RECENT_FIRST;
  if (number >= m_session->recentSets().paths().size()) {
    return;
  }
  const CString path = m_session->recentSets().paths()[number];  // before a save moves the list
  if (mayDropChanges()) {
    openSet(path);
  }
}

void MainFrame::OnRecentMri(UINT id) {
  const std::size_t number = id - ID_FILE_RECENT_MRI_FIRST;
  if (number < m_session->recentHeads().paths().size()) {
    openMri(CString(m_session->recentHeads().paths()[number]));
  }
}

void MainFrame::OnExit() {
  SendMessage(WM_CLOSE);
}

void MainFrame::OnClose() {
  if (isBusy()) {
    ::MessageBeep(MB_OK);
  } else if (mayDropChanges()) {
    CFrameWnd::OnClose();
  }
}

BOOL MainFrame::OnQueryEndSession() {
  return !isBusy() && mayDropChanges() ? TRUE : FALSE;
}

void MainFrame::OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu) {
  if (!isBusy()) {
    noteQuietChange();  // the menu names the last change
  }
  const UINT first = menu == nullptr ? 0 : menu->GetMenuItemID(0);
  if (systemMenu == FALSE && setMenu.beginsWith(first)) {
    setMenu.show(*menu, m_session->recentSets());
  } else if (systemMenu == FALSE && headMenu.beginsWith(first)) {
    headMenu.show(*menu, m_session->recentHeads());
  } else {
    CFrameWnd::OnInitMenuPopup(menu, index, systemMenu);
  }
}

void MainFrame::readRecent() {
  setMenu.read(m_session->recentSets());
  headMenu.read(m_session->recentHeads());
}

void MainFrame::writeRecent() {
  setMenu.write(m_session->recentSets());
  headMenu.write(m_session->recentHeads());
}

}  // namespace host
