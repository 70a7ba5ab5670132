#include "host/viewer/ViewerApp.h"

#include <algorithm>
#include <commctrl.h>
#include <filesystem>
#include <shellapi.h>
#include <vector>

#include "host/PathText.h"
#include "host/session/FileKind.h"
#include "host/viewer/Benchmark.h"
#include "host/viewer/KeptMessages.h"

namespace host {

namespace {

std::vector<CString> arguments() {
  int count = 0;
  LPWSTR* const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<CString> texts;
  for (int i = 1; i < count; ++i)
    texts.emplace_back(words[i]);
  ::LocalFree(words);
  return texts;
}

CString wholePath(const CString& path) {
  return textOf(std::filesystem::absolute(pathOf(path)));
}

}  // namespace

int ViewerApp::DoMessageBox(LPCTSTR text, UINT type, UINT helpId) {
  return KeptMessages::keep(text, type) ? IDOK : CWinApp::DoMessageBox(text, type, helpId);
}

BOOL ViewerApp::InitInstance() {
  return makeFrame() && openArguments();
}

BOOL ViewerApp::makeFrame() {
  const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES | ICC_LISTVIEW_CLASSES};
  ::InitCommonControlsEx(&controls);
  SetRegistryKey(_T("Dipole"));
  auto* const made = new MainFrame;  // ends itself with its window
  m_pMainWnd = made;
  if (!made->create())
    return FALSE;
  constexpr int width = 1280;
  constexpr int height = 940;
  made->SetWindowPos(nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
  made->ShowWindow(m_nCmdShow);
  made->UpdateWindow();
  return TRUE;
}

// FALSE: there is nothing left to do.
BOOL ViewerApp::openArguments() {
  std::vector<CString> files;
  CString fiducials;
  CString report;
  const std::vector<CString> words = arguments();
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool isFollowed = i + 1 < words.size();
    if (words[i] == _T("--fiducials") && isFollowed)
      fiducials = wholePath(words[++i]);
    else if (words[i] == _T("--benchmark") && isFollowed)
      report = wholePath(words[++i]);
    else
      files.push_back(wholePath(words[i]));
  }
  std::stable_sort(files.begin(), files.end(),
                   [](const CString& left, const CString& right) { return kindOf(left) < kindOf(right); });
  const auto firstOther = std::find_if(files.begin(), files.end(),
                                       [](const CString& path) { return kindOf(path) != FileKind::mri; });
  frame()->openFiles({files.begin(), firstOther});
  if (!fiducials.IsEmpty())
    frame()->registerFromFile(fiducials);
  frame()->openFiles({firstOther, files.end()});
  if (report.IsEmpty())
    return TRUE;
  writeBenchmark(*frame(), report);
  return FALSE;
}

BOOL ViewerApp::OnIdle(LONG count) {
  if (frame() != nullptr)
    frame()->onIdle();
  return CWinApp::OnIdle(count);
}

}  // namespace host
