// CWinApp: the application object, through which every message box passes.
#pragma once

#include "platform/portable/Object.h"
#include "platform/portable/String.h"
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

#ifdef _WIN32
  // The life of a program with windows, which AfxWinMain runs (platform/windows/program/).
  virtual BOOL InitInstance();  // makes the main window; FALSE: the program ends
  // Handles messages until the main window is gone; between them, when none is waiting, OnIdle is called with
  // 0, 1, 2, ... until it returns FALSE. Returns what ExitInstance returns.
  virtual int Run();
  virtual int ExitInstance();                      // returns the program's exit code
  virtual BOOL OnIdle(LONG count);                 // TRUE: there is more to do
  virtual BOOL PreTranslateMessage(MSG* message);  // TRUE: it is done with

  // Settings of the user, in the registry below Software\<key>\<program>. Without SetRegistryKey, which must
  // be called first, reading gives the default and writing FALSE.
  void SetRegistryKey(LPCTSTR key);
  UINT GetProfileInt(LPCTSTR section, LPCTSTR entry, int otherwise);
  BOOL WriteProfileInt(LPCTSTR section, LPCTSTR entry, int value);
  CString GetProfileString(LPCTSTR section, LPCTSTR entry, LPCTSTR otherwise = nullptr);
  BOOL WriteProfileString(LPCTSTR section, LPCTSTR entry, LPCTSTR value);  // null removes the entry

  int m_nCmdShow = SW_SHOWNORMAL;  // how the main window is to be shown first
#endif

  LPCTSTR m_pszAppName;        // not copied; the caption of message boxes
  CWnd* m_pMainWnd = nullptr;  // what dialogs without a parent belong to; the program keeps it up to date

 private:
  CWinApp* m_previous;
#ifdef _WIN32
  CString m_registryKey;  // below HKEY_CURRENT_USER; empty: none
#endif
};

// The application object; never null: a default one serves when the program made none.
CWinApp* AfxGetApp();

// Its main window, or null.
CWnd* AfxGetMainWnd();

// One message box, through the application object's DoMessageBox. Returns the answer (ID...).
int AfxMessageBox(LPCTSTR text, UINT type = MB_OK, UINT helpId = 0);

#ifdef _WIN32
// Runs the application object: InitInstance, Run, ExitInstance. Returns the exit code. MFC's takes more
// arguments; its libraries call it, and here WinMain.cpp does.
int AfxWinMain(int show);
#endif
