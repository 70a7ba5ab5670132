// The manager's menus.
#include "ui/DlgDipoleManagerzq.h"
#include "ui/resource.h"

namespace {

constexpr int toolsPopup = 1;

}  // namespace

// Where a menu for the point belongs: the keyboard gives none, then it is the row with the focus, or the
// list's corner when that row is out of sight.
CPoint CDlgDipoleManagerzq::menuPoint(CPoint point) const {
  if (point.x != -1 || point.y != -1) {
    return point;
  }
  CRect list;
  CRect row;
  m_listDipoles.GetClientRect(&list);
  const int focus = m_listDipoles.GetNextItem(-1, LVNI_FOCUSED);
  CPoint corner(0, 0);
  if (focus >= 0 && m_listDipoles.GetItemRect(focus, &row, LVIR_LABEL) &&
      list.PtInRect(CPoint(row.left, row.bottom))) {
    corner = CPoint(row.left, row.bottom);
  }
  m_listDipoles.ClientToScreen(&corner);
  return corner;
}

void CDlgDipoleManagerzq::OnContextMenu(CWnd* /*window*/, CPoint point) {
  CMenu menu;
  if (!menu.LoadMenu(IDR_DIPOLE_MENU)) {
    return;
  }
  const CPoint corner = menuPoint(point);
  menu.GetSubMenu(toolsPopup)->TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON, corner.x, corner.y, this);
}

// Dialogs bring their menus up to date themselves: the framework asks the handlers below for frames only.
void CDlgDipoleManagerzq::OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu) {
  CDialog::OnInitMenuPopup(menu, index, systemMenu);
  if (systemMenu == FALSE && menu != nullptr) {
    const UINT check = m_showCurrentOnly != FALSE ? MF_CHECKED : MF_UNCHECKED;
    menu->CheckMenuItem(ID_DIPOLE_SHOW_CURRENT_ONLY, MF_BYCOMMAND | check);
  }
}

// For a host that sends the updates of its own menu or tool bar here (OnCmdMsg).
void CDlgDipoleManagerzq::OnUpdateShowCurrentOnly(CCmdUI* item) {
  if (m_showCurrentOnly != FALSE) {
    item->Enable(TRUE);
    item->SetCheck(1);
  } else {
    item->SetCheck(0);
  }
}
