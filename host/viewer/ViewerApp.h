// The viewer as a program: its command line, its main window, its idle time, its message boxes.
//
//   viewer [FILES] [--fiducials FILE] [--benchmark FILE]
//
// FILES are opened as if they were dropped on the window: MRI, dipole sets, dipole files, in this order. With
// --benchmark the viewer measures itself, with the MRIs among the files, writes a report and ends
// (host/viewer/Benchmark.h).
#pragma once

#include <afxwin.h>

#include "host/viewer/MainFrame.h"

namespace host {

class ViewerApp : public CWinApp {
 public:
  ViewerApp() : CWinApp(_T("Dipole Viewer")) {}

  BOOL InitInstance() override;
  BOOL OnIdle(LONG count) override;
  BOOL PreTranslateMessage(MSG* message) override;
  int DoMessageBox(LPCTSTR text, UINT type, UINT helpId) override;

  // Makes and shows the main window. FALSE: there is no room for it.
  BOOL makeFrame();
  MainFrame* frame() const { return static_cast<MainFrame*>(m_pMainWnd); }

 private:
  BOOL openArguments();
};

}  // namespace host
