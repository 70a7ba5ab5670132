// Files of dipoles that come in, by the menu, dropped, or named when the program starts.
#include <afxdlgs.h>

#include <algorithm>
#include <stdexcept>

#include "host/exchange/FileKind.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"
#include "host/viewer/MainFrame.h"
#include "host/viewer/ProgressWindow.h"

namespace host {

namespace {

constexpr LPCTSTR dipoleFilter =
    _T("Dipole files (*.dip; *.bdip; *.txt; *.csv; *.tsv; *.json; *.dipset)|")
    _T("*.dip;*.bdip;*.txt;*.csv;*.tsv;*.json;*.dipset|")
    _T("CTF and Neuromag/MNE dipole files (*.dip; *.bdip)|*.dip;*.bdip|4D/MSI dipole tables (*.txt)|*.txt|")
    _T("Tables (*.csv; *.tsv; *.json)|*.csv;*.tsv;*.json|Dipole sets (*.dipset)|*.dipset|")
    _T("All files (*.*)|*.*||");

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

// Whether it holds the voxels of a head whose .hdr is among the files.
bool isSecondOfPair(const CString& path, const std::vector<CString>& paths) {
  if (!hasEnding(path, ".img")) {
    return false;
  }
  const CString header = path.Left(path.GetLength() - 4) + _T(".hdr");
  return std::any_of(paths.begin(), paths.end(),
                     [&](const CString& other) { return other.CompareNoCase(header) == 0; });
}

}  // namespace

Ask MainFrame::asker() {
  return [](const std::string& question) {
    return AfxMessageBox(fromUtf8(question), MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION) == IDYES;
  };
}

// Shows the findings when there are such that were not there before.
void MainFrame::openNewDoubts(const std::vector<StandingFinding>& before) {
  const std::vector<StandingFinding>& now = m_session->findings();
  if (std::any_of(now.begin(), now.end(), [&](const StandingFinding& standing) {
        return standing.finding.severity != Severity::note &&
               std::find(before.begin(), before.end(), standing) == before.end();
      })) {
    m_findings.open();
  }
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

void MainFrame::importFiles(const std::vector<CString>& paths) {
  noteQuietChange();
  const std::vector<StandingFinding> before = m_session->findings();
  Session::ImportResult result;
  try {
    ProgressWindow progress(this);
    result = m_session->importFiles(
        paths, [&](int done, int total, const CString& path) { return progress.show(done, total, path); },
        asker());
  } catch (const std::exception& problem) {
    tell(problem);
  }
  if (result.openedMri) {
    writeRecent();
    OnFit();
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
  CString text;
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
  for (const std::string& note : result.notes) {
    text += fromUtf8(note) + _T("\n");
  }
  if (result.openedMri && !m_session->notice().empty()) {
    text += fromUtf8(m_session->notice()) + _T("\n");
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
      if (!isSecondOfPair(path, paths)) {
        openMri(path);
      }
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

void MainFrame::OnImport() {
  const std::vector<CString> paths = askForNames(dipoleFilter);
  if (!paths.empty()) {
    importFiles(paths);
  }
}

}  // namespace host
