// Shows how far an import of many files has come, and lets the user stop it between two files.
#pragma once

#include <afxwin.h>

#include <vector>

#include "host/viewer/resource.h"

namespace host {

class ProgressWindow : public CDialog {
 public:
  // Before `parent`. No other window of the program can be used meanwhile.
  explicit ProgressWindow(CWnd* parent);
  ~ProgressWindow() override;

  // Shows the file that comes next; false when the user has cancelled.
  bool show(int done, int total, const CString& path);

 protected:
  void OnCancel() override { m_isCancelled = true; }
  void OnOK() override {}

 private:
  std::vector<HWND> m_disabled;
  bool m_isCancelled = false;
};

}  // namespace host
