#include "platform/windows/Menu.h"

#include "platform/windows/DynLinkLibrary.h"
#include "platform/windows/HandleMap.h"
#include "platform/windows/Wnd.h"

namespace {

bool isAlive(HMENU menu) {
  return ::IsMenu(menu) != FALSE;
}

struct TemporaryMenu : CMenu {
  explicit TemporaryMenu(HMENU menu) { m_hMenu = menu; }
  ~TemporaryMenu() override { loseHandle(); }
  void loseHandle() { m_hMenu = nullptr; }
};

using Menus = HandleMap<HMENU, CMenu, TemporaryMenu, &isAlive>;

}  // namespace

CMenu::CMenu() = default;

CMenu::~CMenu() {
  DestroyMenu();
}

CMenu* CMenu::FromHandle(HMENU menu) {
  return Menus::the().find(menu);
}

void CMenu::DeleteTempMap() {
  Menus::the().drop();
}

BOOL CMenu::Attach(HMENU menu) {
  if (menu == nullptr || m_hMenu != nullptr) {
    return FALSE;
  }
  m_hMenu = menu;
  Menus::the().add(menu, this);
  return TRUE;
}

HMENU CMenu::Detach() {
  const HMENU menu = m_hMenu;
  if (menu != nullptr) {
    Menus::the().remove(menu);
  }
  m_hMenu = nullptr;
  return menu;
}

BOOL CMenu::CreateMenu() {
  return Attach(::CreateMenu());
}

BOOL CMenu::CreatePopupMenu() {
  return Attach(::CreatePopupMenu());
}

BOOL CMenu::LoadMenu(UINT id) {
  return LoadMenu(MAKEINTRESOURCEW(id));
}

BOOL CMenu::LoadMenu(LPCTSTR name) {
  return Attach(::LoadMenuW(AfxFindResourceHandle(name, RT_MENU), name));
}

BOOL CMenu::DestroyMenu() {
  const HMENU menu = Detach();
  return menu != nullptr && ::DestroyMenu(menu) != FALSE ? TRUE : FALSE;
}

BOOL CMenu::AppendMenu(UINT flags, UINT_PTR id, LPCTSTR text) {
  return ::AppendMenuW(m_hMenu, flags, id, text);
}

BOOL CMenu::DeleteMenu(UINT position, UINT flags) {
  return ::DeleteMenu(m_hMenu, position, flags);
}

UINT CMenu::CheckMenuItem(UINT id, UINT check) {
  return ::CheckMenuItem(m_hMenu, id, check);
}

UINT CMenu::EnableMenuItem(UINT id, UINT enable) {
  return static_cast<UINT>(::EnableMenuItem(m_hMenu, id, enable));
}

UINT CMenu::GetMenuItemCount() const {
  return static_cast<UINT>(::GetMenuItemCount(m_hMenu));
}

UINT CMenu::GetMenuItemID(int position) const {
  return ::GetMenuItemID(m_hMenu, position);
}

UINT CMenu::GetMenuState(UINT id, UINT flags) const {
  return ::GetMenuState(m_hMenu, id, flags);
}

int CMenu::GetMenuString(UINT id, CString& text, UINT flags) const {
  const int length = ::GetMenuStringW(m_hMenu, id, nullptr, 0, flags);
  ::GetMenuStringW(m_hMenu, id, text.GetBuffer(length), length + 1, flags);
  text.ReleaseBuffer(length);
  return length;
}

CMenu* CMenu::GetSubMenu(int position) const {
  return FromHandle(::GetSubMenu(m_hMenu, position));
}

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* window, LPCRECT rect) {
  return ::TrackPopupMenu(m_hMenu, flags, x, y, 0, window == nullptr ? nullptr : window->m_hWnd, rect);
}
