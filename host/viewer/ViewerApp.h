// The viewer as a program: its command line, its main window, its idle time.
//
//   viewer [FILES] [--fiducials FILE]
//
// FILES are opened as if they were dropped on the window: MRI, dipole sets, dipole files, in this order.
#pragma once

#include <afxwin.h>

#include "host/viewer/MainFrame.h"

namespace host {

class ViewerApp : public CWinApp {
 public:
  ViewerApp() : CWinApp(_T("Dipole Viewer")) {}

  BOOL InitInstance() override;
  BOOL OnIdle(LONG count) override;

  [[nodiscard]] MainFrame* frame() const { return static_cast<MainFrame*>(m_pMainWnd); }

 private:
  void openArguments();
};

}  // namespace host
