// Command targets, menus, and what an update handler gets.
#pragma once

#include "documented/Gdi.h"

struct AFX_CMDHANDLERINFO;
class CMenu;
class CWnd;

class CCmdTarget : public CObject {
 public:
  void BeginWaitCursor();
  CCmdTarget();
  void EnableAutomation();
  void EndWaitCursor();
  BOOL IsResultExpected();
  virtual BOOL OnCmdMsg(UINT, int, void*, AFX_CMDHANDLERINFO*);
  virtual void OnFinalRelease();
  void RestoreWaitCursor();

 protected:
  static void checkMessageMap() {}  // not a documented name: see MessageMap.h
};

class CMenu : public CObject {
 public:
  BOOL AppendMenu(UINT, UINT_PTR = 0, LPCTSTR = nullptr);
  BOOL AppendMenu(UINT, UINT_PTR, const CBitmap*);
  BOOL Attach(HMENU);
  UINT CheckMenuItem(UINT, UINT);
  BOOL CheckMenuRadioItem(UINT, UINT, UINT, UINT);
  CMenu();
  BOOL CreateMenu();
  BOOL CreatePopupMenu();
  BOOL DeleteMenu(UINT, UINT);
  static void PASCAL DeleteTempMap();
  BOOL DestroyMenu();
  HMENU Detach();
  virtual void DrawItem(LPDRAWITEMSTRUCT);
  UINT EnableMenuItem(UINT, UINT);
  static CMenu* PASCAL FromHandle(HMENU);
  UINT GetDefaultItem(UINT, BOOL = FALSE);
  DWORD GetMenuContextHelpId() const;
  BOOL GetMenuInfo(LPMENUINFO) const;
  UINT GetMenuItemCount() const;
  UINT GetMenuItemID(int) const;
  BOOL GetMenuItemInfo(UINT, LPMENUITEMINFO, BOOL = FALSE);
  UINT GetMenuState(UINT, UINT) const;
  int GetMenuString(UINT, LPTSTR, int, UINT) const;
  int GetMenuString(UINT, CString&, UINT) const;
  HMENU GetSafeHmenu() const;
  CMenu* GetSubMenu(int) const;
  BOOL InsertMenu(UINT, UINT, UINT_PTR = 0, LPCTSTR = nullptr);
  BOOL InsertMenu(UINT, UINT, UINT_PTR, const CBitmap*);
  BOOL InsertMenuItem(UINT, LPMENUITEMINFO, BOOL = FALSE);
  BOOL LoadMenu(LPCTSTR);
  BOOL LoadMenu(UINT);
  BOOL LoadMenuIndirect(const void*);
  HMENU m_hMenu;
  virtual void MeasureItem(LPMEASUREITEMSTRUCT);
  BOOL ModifyMenu(UINT, UINT, UINT_PTR = 0, LPCTSTR = nullptr);
  BOOL ModifyMenu(UINT, UINT, UINT_PTR, const CBitmap*);
  operator HMENU() const;
  BOOL operator!=(const CMenu&) const;
  BOOL operator==(const CMenu&) const;
  BOOL RemoveMenu(UINT, UINT);
  BOOL SetDefaultItem(UINT, BOOL = FALSE);
  BOOL SetMenuContextHelpId(DWORD);
  BOOL SetMenuInfo(LPCMENUINFO);
  BOOL SetMenuItemBitmaps(UINT, UINT, const CBitmap*, const CBitmap*);
  BOOL SetMenuItemInfo(UINT, LPMENUITEMINFO, BOOL = FALSE);
  BOOL TrackPopupMenu(UINT, int, int, CWnd*, LPCRECT = 0);
  BOOL TrackPopupMenuEx(UINT, int, int, CWnd*, LPTPMPARAMS);
};

// Only the framework makes one.
class CCmdUI {
 public:
  CCmdUI() = delete;
  CCmdUI(const CCmdUI&) = delete;
  CCmdUI& operator=(const CCmdUI&) = delete;
  void ContinueRouting();
  virtual void Enable(BOOL = TRUE);
  UINT m_nID;
  UINT m_nIndex;
  CMenu* m_pMenu;
  CMenu* m_pSubMenu;
  CWnd* m_pOther;
  virtual void SetCheck(int = 1);
  virtual void SetRadio(BOOL = TRUE);
  virtual void SetText(LPCTSTR);
};
