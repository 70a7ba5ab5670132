// CWinApp: the application object, through which every message box passes.
#pragma once

#include "platform/portable/Object.h"
#include "platform/portable/Types.h"

class CWinApp : public CObject {
 public:
  // Becomes the application object until it ends; the one before it then is again.
  explicit CWinApp(LPCTSTR appName = nullptr);
  ~CWinApp() override;

  // Shows `text` with the buttons and icon of `type` (MB_...) and returns the answer (ID...). Asks the
  // installed operator (platform/Operator.h). Without one it is the system's message box on Windows;
  // elsewhere the text goes to the standard error stream, and the answer is the careful one: OK where there
  // is nothing else, No where there is a No, else Cancel (for abort, retry, ignore, Abort).
  virtual int DoMessageBox(LPCTSTR text, UINT type, UINT helpId);

  LPCTSTR m_pszAppName;        // not copied; the caption of message boxes
  CWnd* m_pMainWnd = nullptr;  // what dialogs without a parent belong to; the program keeps it up to date

 private:
  CWinApp* m_previous;
};

// The application object; never null: a default one serves when the program made none.
CWinApp* AfxGetApp();

// Its main window, or null.
CWnd* AfxGetMainWnd();

// One message box, through the application object's DoMessageBox. Returns the answer (ID...).
int AfxMessageBox(LPCTSTR text, UINT type = MB_OK, UINT helpId = 0);
