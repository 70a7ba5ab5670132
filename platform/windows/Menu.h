// CMenu: a menu of the system's. Positions count from 0.
#pragma once

#include "platform/portable/Object.h"
#include "platform/portable/String.h"

class CMenu : public CObject {
 public:
  CMenu();
  ~CMenu() override;  // destroys the menu

  // The object of a menu: the one that is attached to it, else a temporary one, which lives as long as the
  // menu does. Null for no menu.
  static CMenu* FromHandle(HMENU menu);
  static void DeleteTempMap();  // ends the temporary objects; their menus stay
  BOOL Attach(HMENU menu);
  HMENU Detach();
  HMENU GetSafeHmenu() const { return m_hMenu; }
  operator HMENU() const { return m_hMenu; }  // implicit, as in MFC

  BOOL CreateMenu();
  BOOL CreatePopupMenu();
  BOOL LoadMenu(UINT id);
  BOOL LoadMenu(LPCTSTR name);
  BOOL DestroyMenu();

  BOOL AppendMenu(UINT flags, UINT_PTR id = 0, LPCTSTR text = nullptr);
  BOOL DeleteMenu(UINT position, UINT flags);
  UINT CheckMenuItem(UINT id,
                     UINT check);             // MF_BYPOSITION, MF_CHECKED, ...; returns the state before
  UINT EnableMenuItem(UINT id, UINT enable);  // likewise
  UINT GetMenuItemCount() const;
  UINT GetMenuItemID(int position) const;  // UINT_MAX for a popup
  UINT GetMenuState(UINT id, UINT flags) const;
  int GetMenuString(UINT id, CString& text,
                    UINT flags) const;  // returns the length of the text
  CMenu* GetSubMenu(int position) const;
  // Shows the popup at a point of the screen and returns when it is closed; commands go to `window`. With
  // TPM_RETURNCMD returns the id chosen, or 0.
  BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* window, LPCRECT rect = nullptr);

  HMENU m_hMenu = nullptr;
};
