// The commands of the menu File.
#include <afxdlgs.h>

#include <algorithm>
#include <stdexcept>

#include "host/exchange/FileKind.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"
#include "host/viewer/MainFrame.h"
#include "host/viewer/ProgressWindow.h"
#include "host/viewer/RecentMenu.h"

namespace host {

namespace {

constexpr LPCTSTR mriFilter =
    _T("Heads (*.nii; *.nii.gz; *.mri; *.mgh; *.mgz; *.hdr; ")
    _T("*.img)|*.nii;*.nii.gz;*.mri;*.mgh;*.mgz;*.hdr;*.img|")
    _T("All files (*.*)|*.*||");
constexpr LPCTSTR setFilter = _T("Dipole sets (*.dipset)|*.dipset|All files (*.*)|*.*||");
constexpr LPCTSTR dipoleFilter =
    _T("Dipole files (*.dip; *.txt; *.csv; *.tsv; *.json)|*.dip;*.txt;*.csv;*.tsv;*.json|")
    _T("CTF dipole files (*.dip)|*.dip|4D/MSI dipole tables (*.txt)|*.txt|")
    _T("Tables (*.csv; *.tsv; *.json)|*.csv;*.tsv;*.json|All files (*.*)|*.*||");

constexpr RecentMenu setMenu{_T("Recent Dipole Sets"), ID_FILE_RECENT_FIRST, ID_FILE_NO_RECENT};
constexpr RecentMenu headMenu{_T("Recent MRI"), ID_FILE_RECENT_MRI_FIRST, ID_FILE_NO_RECENT_MRI};

// A list for a message box: of many lines the first ones, so that the box fits the screen.
CString listed(const std::vector<CString>& lines) {
  constexpr std::size_t most = 15;
  CString whole;
  for (std::size_t number = 0; number < (std::min)(lines.size(), most); ++number) {
    whole += lines[number] + _T("\n");
  }
  if (lines.size() > most) {
    CString more;
    more.Format(_T("and %u more\n"), static_cast<unsigned>(lines.size() - most));
    whole += more;
  }
  return whole;
}

}  // namespace

CString MainFrame::askForName(bool isOpen, LPCTSTR extension, LPCTSTR filter, LPCTSTR proposal) {
  const DWORD flags = isOpen ? OFN_FILEMUSTEXIST | OFN_HIDEREADONLY : OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY;
  CFileDialog dialog(isOpen ? TRUE : FALSE, extension, proposal, flags, filter, this);
  return dialog.DoModal() == IDOK ? dialog.GetPathName() : CString();
}

std::vector<CString> MainFrame::askForNames(LPCTSTR filter) {
  CFileDialog dialog(TRUE, nullptr, nullptr, OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_ALLOWMULTISELECT,
                     filter, this);
  std::vector<TCHAR> names(std::size_t{1} << 18);  // for some thousand files
  dialog.m_ofn.lpstrFile = names.data();
  dialog.m_ofn.nMaxFile = static_cast<DWORD>(names.size());
  std::vector<CString> paths;
  if (dialog.DoModal() == IDOK) {
    for (POSITION at = dialog.GetStartPosition(); at != nullptr;) {
      paths.push_back(dialog.GetNextPathName(at));
    }
  }
  return paths;
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
  const HCURSOR before = ::SetCursor(::LoadCursorW(nullptr, reinterpret_cast<LPCTSTR>(IDC_WAIT)));
  bool isOpen = true;
  try {
    m_session->openMri(path);
    for (const auto& window : m_panes) {
      window->fit();
    }
  } catch (const std::exception& problem) {
    isOpen = tell(problem);
  }
  ::SetCursor(before);
  writeRecent();
  showEverywhere();
  if (isOpen && !m_session->notice().empty()) {
    AfxMessageBox(fromUtf8(m_session->notice()), MB_ICONINFORMATION);
  }
  if (isOpen) {
    warnOfOtherHead();
  }
  return isOpen;
}

void MainFrame::importFiles(const std::vector<CString>& paths) {
  noteQuietChange();
  const std::vector<StandingFinding> before = m_session->findings();
  Session::ImportResult result;
  try {
    ProgressWindow progress(this);
    result = m_session->importFiles(
        paths, [&](int done, int total, const CString& path) { return progress.show(done, total, path); });
  } catch (const std::exception& problem) {
    tell(problem);
  }
  refreshModuleWindows();
  showEverywhere();
  tellOfImport(result);
  if (!m_session->findings().empty() && m_session->findings() != before) {
    m_findings.open();
  }
}

// One message: first what must not be missed.
void MainFrame::tellOfImport(const Session::ImportResult& result) {
  CString text = fromUtf8(result.headMismatch);
  if (!text.IsEmpty()) {
    text += _T("\n\n");
  }
  if (result.mixesPatients) {
    text += _T("The set holds dipoles of different patients:");
    for (const std::string& patient : result.patients) {
      text += _T(" ") + fromUtf8(patient);
    }
    text += _T("\n\n");
  }
  std::vector<CString> told;
  for (const std::string& message : result.told) {
    told.push_back(fromUtf8(message));
  }
  bool isWarning = !text.IsEmpty() || !told.empty();
  text += listed(told);
  std::vector<CString> failed;
  for (const Session::Failed& file : result.failed) {
    failed.push_back(fileNameOf(file.path) + _T(": ") + fromUtf8(file.cause));
  }
  if (!failed.empty()) {
    text += _T("These files brought no dipoles:\n") + listed(failed) + _T("\n");
    isWarning = true;
  }
  if (result.cancelled) {
    text += _T("The import was cancelled; the other files were not read.\n");
  }
  CString sum;
  sum.Format(_T("%d dipoles from %d %s."), result.dipoles, result.files,
             result.files == 1 ? _T("file") : _T("files"));
  AfxMessageBox(text + sum, isWarning ? MB_ICONEXCLAMATION : MB_ICONINFORMATION);
}

void MainFrame::openFiles(const std::vector<CString>& paths) {
  std::vector<CString> dipoleFiles;
  for (const CString& path : paths) {
    const FileKind kind = kindOf(path);
    if (kind == FileKind::mri) {
      openMri(path);
    } else if (kind == FileKind::dipoles) {
      dipoleFiles.push_back(path);
    } else if (mayDropChanges()) {
      openSet(path);
    }
  }
  if (!dipoleFiles.empty()) {
    importFiles(dipoleFiles);
  }
}

void MainFrame::OnDropFiles(HDROP files) {
  std::vector<CString> paths;
  const UINT count = ::DragQueryFileW(files, UINT_MAX, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    const UINT length = ::DragQueryFileW(files, i, nullptr, 0);
    CString path;
    ::DragQueryFileW(files, i, path.GetBuffer(static_cast<int>(length)), length + 1);
    path.ReleaseBuffer();
    paths.push_back(path);
  }
  ::DragFinish(files);
  if (isBusy()) {
    ::MessageBeep(MB_OK);
    return;
  }
  SetForegroundWindow();
  openFiles(paths);
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

void MainFrame::OnImport() {
  const std::vector<CString> paths = askForNames(dipoleFilter);
  if (!paths.empty()) {
    importFiles(paths);
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

void MainFrame::exportTo(LPCTSTR extension, LPCTSTR filter, void (Session::*write)(const CString&)) {
  const CString path = askForName(false, extension, filter);
  if (path.IsEmpty()) {
    return;
  }
  try {
    (m_session.get()->*write)(path);
  } catch (const std::exception& problem) {
    tell(problem);
  }
}

void MainFrame::OnExportText() {
  exportTo(_T("txt"), _T("Text for spreadsheets (*.txt)|*.txt|All files (*.*)|*.*||"), &Session::exportText);
}

void MainFrame::OnExportCsv() {
  exportTo(_T("csv"), _T("Tables (*.csv; *.tsv; *.json)|*.csv;*.tsv;*.json|All files (*.*)|*.*||"),
           &Session::exportTable);
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
