// CFrameWnd: a program's main window, with menu and accelerator keys. Made by new; it ends its object when
// the window goes, and, as the main window (CWinApp::m_pMainWnd), the program's message loop too.
#pragma once

#include "platform/windows/Wnd.h"

class CFrameWnd : public CWnd {
 public:
  CFrameWnd();
  ~CFrameWnd() override;

  // Makes the window with the resources of one number: menu, accelerators, icon and the text of its title;
  // each may be missing. It is not shown. `context` must be null.
  virtual BOOL LoadFrame(UINT id, DWORD style = WS_OVERLAPPEDWINDOW, CWnd* parent = nullptr,
                         void* context = nullptr);

  BOOL PreTranslateMessage(MSG* message) override;  // accelerator keys

  HACCEL m_hAccelTable = nullptr;

 protected:
  void OnClose();  // destroys the window
  // Asks the ON_UPDATE_COMMAND_UI handlers about every item; one without any handler is disabled. A handler
  // may append items, which are asked for too, and remove its own; one that inserts items before its own adds
  // their number to m_nIndex.
  void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu);
  void PostNcDestroy() override;
  const MessageMap* GetMessageMap() const override;
  static const MessageMap* GetThisMessageMap();
};

// Registers a window class, once for each set of arguments, and returns its name.
LPCTSTR AfxRegisterWndClass(UINT style, HCURSOR cursor = nullptr, HBRUSH background = nullptr,
                            HICON icon = nullptr);
