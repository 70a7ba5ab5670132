// CCmdUI: what an ON_UPDATE_COMMAND_UI handler sets: one menu item or control, enabled, checked or renamed.
//
// A dialog that wants its menus updated does it from WM_INITMENUPOPUP: set m_pMenu, m_nIndexMax, and for each
// item m_nIndex and m_nID, then call DoUpdate.
#pragma once

#include "platform/portable/Types.h"

class CCmdTarget;
class CMenu;
class CWnd;

class CCmdUI {
 public:
  CCmdUI() = default;
  CCmdUI(const CCmdUI&) = delete;
  CCmdUI& operator=(const CCmdUI&) = delete;
  virtual ~CCmdUI();

  virtual void Enable(BOOL on = TRUE);
  virtual void SetCheck(int check = 1);  // 0 off, 1 on; a control also takes 2, undetermined
  virtual void SetRadio(BOOL on = TRUE);
  virtual void SetText(LPCTSTR text);

  // Asks `target` to set it. Without a handler for an update, an item whose command has no handler either is
  // disabled, if `disableIfNoHandler`. Returns whether there was a handler for the update.
  BOOL DoUpdate(CCmdTarget* target, BOOL disableIfNoHandler);
  void ContinueRouting() { m_continueRouting = true; }

  UINT m_nID = 0;
  UINT m_nIndex = 0;         // of the item in its menu
  CMenu* m_pMenu = nullptr;  // null: m_pOther is updated
  CMenu* m_pSubMenu = nullptr;
  CWnd* m_pOther = nullptr;
  BOOL m_bEnableChanged = FALSE;
  UINT m_nIndexMax = 0;

 private:
  bool m_continueRouting = false;
};
