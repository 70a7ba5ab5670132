// What was found about the imported files: the bar, the window, the remedies; and the import of the module's
// manager, whose files the module does not name.
#include <algorithm>
#include <commctrl.h>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

#include "host/text/Utf8.h"
#include "host/viewer/MainFrame.h"

namespace host {

namespace {

constexpr UINT_PTR managerSubclass = 1;

}  // namespace

void MainFrame::OnFindings() {
  m_findings.open();
}

void MainFrame::showFindings() {
  const std::vector<std::string> wrong = wrongTexts(m_session->shownFindings());
  CString count;
  if (wrong.size() > 1) {
    count.Format(_T(" (1 of %u)"), static_cast<unsigned>(wrong.size()));
  }
  if (m_warningBar.show(wrong.empty() ? CString()
                                      : _T("WRONG") + count + _T(": ") + fromUtf8(wrong.front()))) {
    layOut();
  }
  m_findings.refresh();
}

// One step to undo for each; findings of one kind in one file have one remedy.
void MainFrame::repairFindings(const std::vector<StandingFinding>& chosen, std::optional<LengthUnit> unit) {
  if (isBusy()) {
    ::MessageBeep(MB_OK);
    return;
  }
  noteQuietChange();
  CString told;
  CString failed;
  std::set<std::pair<std::size_t, FindingCode>> done;
  for (const StandingFinding& standing : chosen) {
    const FindingCode code = standing.finding.code;
    if (!done.insert({standing.file, code}).second) {
      continue;
    }
    try {
      for (const std::string& sentence : m_session->repair(standing.file, {{code}, unit})) {
        told += fromUtf8(standing.finding.file + ": " + sentence) + _T("\n");
      }
    } catch (const std::exception& problem) {
      failed += fromUtf8(problem.what()) + _T("\n");
    }
  }
  refreshModuleWindows();
  m_dipoles->updateDipoleEditor();
  showEverywhere();
  if (!failed.IsEmpty()) {
    AfxMessageBox(failed + told, MB_ICONEXCLAMATION);
  } else {
    AfxMessageBox(told.IsEmpty() ? CString(_T("No value had to be changed.")) : told, MB_ICONINFORMATION);
  }
}

// A window of the manager's has the viewer as its listener as long as it lives.
void MainFrame::takeOverManager() {
  const CDialog* const manager = m_dipoles->getDlgDipoleList();
  if (manager != nullptr && manager->m_hWnd != nullptr) {
    ::SetWindowSubclass(manager->m_hWnd, &MainFrame::onManagerMessage, managerSubclass, 0);
  }
}

// "Import CTF" imports as the viewer does: each file by itself, audited, as one step, or not at all.
LRESULT CALLBACK MainFrame::onManagerMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                             UINT_PTR id, DWORD_PTR /*unused*/) {
  if (message == WM_COMMAND && LOWORD(wParam) == ID_MANAGER_IMPORT_CTF && theFrame != nullptr) {
    theFrame->importCtf();
    return 0;
  }
  if (message == WM_NCDESTROY) {
    ::RemoveWindowSubclass(window, &MainFrame::onManagerMessage, id);
  }
  return ::DefSubclassProc(window, message, wParam, lParam);
}

void MainFrame::importCtf() {
  if (isBusy()) {
    ::MessageBeep(MB_OK);
    return;
  }
  const std::vector<CString> paths = askForNames(_T("CTF dipole files (*.dip)|*.dip|All files (*.*)|*.*||"));
  if (!paths.empty()) {
    importFiles(paths);
  }
}

}  // namespace host
