// Menus from resources, and their updates.
#include <afxwin.h>

#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"

namespace {

class MenuDialog : public CDialog {
 public:
  bool enabled = true;
  int thirds = 0;

 protected:
  afx_msg void OnThird() { ++thirds; }
  afx_msg void OnUpdateThird(CCmdUI* item) {
    item->Enable(enabled ? TRUE : FALSE);
    item->SetCheck(enabled ? 1 : 0);
  }
  afx_msg void OnInitMenuPopup(CMenu* menu, UINT /*index*/, BOOL /*systemMenu*/) {
    CCmdUI item;
    item.m_pMenu = menu;
    item.m_nIndexMax = menu->GetMenuItemCount();
    for (item.m_nIndex = 0; item.m_nIndex < item.m_nIndexMax; ++item.m_nIndex) {
      item.m_nID = menu->GetMenuItemID(static_cast<int>(item.m_nIndex));
      item.DoUpdate(this, TRUE);
    }
  }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(MenuDialog, CDialog)
ON_COMMAND(ID_THIRD, &MenuDialog::OnThird)
ON_COMMAND(ID_FIRST, &MenuDialog::OnThird)
ON_UPDATE_COMMAND_UI(ID_THIRD, &MenuDialog::OnUpdateThird)
ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

CString textAt(const CMenu& menu, UINT position) {
  CString text;
  menu.GetMenuString(position, text, MF_BYPOSITION);
  return text;
}

TEST(Menu, IsLoadedFromResources) {
  CMenu menu;
  EXPECT_FALSE(menu.LoadMenu(9999));
  ASSERT_TRUE(menu.LoadMenu(IDR_MENU));
  EXPECT_EQ(menu.GetMenuItemCount(), 2U);
  EXPECT_EQ(toUtf8(textAt(menu, 1)), "Tools");
  CMenu* const tools = menu.GetSubMenu(1);
  ASSERT_NE(tools, nullptr);
  EXPECT_EQ(menu.GetSubMenu(1), tools);
  EXPECT_EQ(menu.GetSubMenu(2), nullptr);
  EXPECT_EQ(toUtf8(textAt(*tools, 0)), "Second");
  EXPECT_EQ(tools->GetMenuItemID(1), UINT{ID_THIRD});
  EXPECT_FALSE(menu.LoadMenu(IDR_MENU));  // it has one
}

TEST(Menu, ItemsAreChecked) {
  CMenu menu;
  ASSERT_TRUE(menu.LoadMenu(IDR_MENU));
  EXPECT_EQ(menu.CheckMenuItem(ID_THIRD, MF_CHECKED), UINT{MF_UNCHECKED});
  EXPECT_EQ(menu.GetMenuState(ID_THIRD, MF_BYCOMMAND) & MF_CHECKED, UINT{MF_CHECKED});
  EXPECT_EQ(menu.CheckMenuItem(ID_THIRD, MF_UNCHECKED), UINT{MF_CHECKED});
  EXPECT_EQ(menu.GetMenuState(ID_THIRD, MF_BYCOMMAND) & MF_CHECKED, 0U);
}

TEST(Menu, IsDestroyedWithItsObject) {
  HMENU handle = nullptr;
  {
    CMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    EXPECT_TRUE(menu.AppendMenu(MF_STRING, 5, _T("Five")));
    EXPECT_EQ(menu.GetMenuItemID(0), 5U);
    handle = menu.m_hMenu;
    EXPECT_EQ(CMenu::FromHandle(handle), &menu);
  }
  EXPECT_FALSE(::IsMenu(handle));
}

TEST(Menu, UpdatesFollowTheHandlers) {
  MenuDialog dialog;
  ASSERT_TRUE(dialog.Create(IDD_PLAIN));
  CMenu menu;
  ASSERT_TRUE(menu.LoadMenu(IDR_MENU));
  const auto state = [&](UINT id) { return menu.GetMenuState(id, MF_BYCOMMAND) & (MF_CHECKED | MF_GRAYED); };
  const auto open = [&](int position) {
    dialog.SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu.GetSubMenu(position)->m_hMenu));
  };
  open(0);
  open(1);
  EXPECT_EQ(state(ID_FIRST), 0U);  // it has a handler for its command
  EXPECT_EQ(state(ID_NOBODYS), UINT{MF_GRAYED});
  EXPECT_EQ(state(ID_THIRD), UINT{MF_CHECKED});
  dialog.enabled = false;
  open(1);
  EXPECT_EQ(state(ID_THIRD), UINT{MF_GRAYED});
}

TEST(Menu, ChosenFromAPopupRunsItsCommand) {
  MenuDialog dialog;
  ASSERT_TRUE(dialog.Create(IDD_PLAIN));
  dialog.ShowWindow(SW_SHOWNORMAL);
  CMenu menu;
  ASSERT_TRUE(menu.LoadMenu(IDR_MENU));
  Robot robot;
  robot.whenMenu([&](HWND) {
    EXPECT_EQ(menu.GetMenuState(ID_THIRD, MF_BYCOMMAND) & MF_CHECKED, UINT{MF_CHECKED});
    dialog.PostMessage(WM_KEYDOWN, VK_UP);
    dialog.PostMessage(WM_KEYDOWN, VK_RETURN);
  });
  EXPECT_TRUE(menu.GetSubMenu(1)->TrackPopupMenu(TPM_LEFTALIGN, 20, 20, &dialog));
  pump();
  EXPECT_EQ(dialog.thirds, 1);
}

}  // namespace
