// The menus of the manager, operated with the keys of a real menu: the bar, and the one of the right button.
#include <algorithm>
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/ui/windows/Host.h"
#include "tests/ui/windows/Spy.h"
#include "ui/resource.h"

namespace {

struct Item {
  std::string text;  // empty: a separator
  UINT id;
  char mnemonic;
  bool operator==(const Item&) const = default;
};

using Items = std::vector<Item>;

const Items fileItems = {{"Import CTF", ID_DIPOLE_IMPORT_CTF, 'i'},
                         {"", 0, 0},
                         {"Export Excel", ID_DIPOLE_EXPORT_EXCEL, 'e'},
                         {"", 0, 0},
                         {"Exit", ID_DIPOLE_EXIT, 'x'}};
const Items toolsItems = {{"Delete", ID_DIPOLE_DELETE, 'd'},
                          {"Edit", ID_DIPOLE_EDIT, 'e'},
                          {"", 0, 0},
                          {"Show", ID_DIPOLE_SHOW, 's'},
                          {"Hide", ID_DIPOLE_HIDE, 'h'},
                          {"Show All ", ID_DIPOLE_SHOW_ALL, 'a'},
                          {"Hide  All ", ID_DIPOLE_HIDE_ALL, 'l'},
                          {"Show Current Only", ID_DIPOLE_SHOW_CURRENT_ONLY, 'c'},
                          {"", 0, 0},
                          {"Average As...", ID_DIPOLE_AVERAGE_AS, 'v'},
                          {"Average Zip...", ID_DIPOLE_AVERAGE_ZIP, 'z'},
                          {"", 0, 0},
                          {"Name Selected...", ID_DIPOLE_NAME_SELECTED, 'n'},
                          {"Color Selected...", ID_DIPOLE_COLOR_SELECTED, 'o'}};

Item itemAt(HMENU menu, UINT position) {
  TCHAR text[100] = {};
  MENUITEMINFOW info = {};
  info.cbSize = sizeof info;
  info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_STRING;
  info.dwTypeData = text;
  info.cch = 100;
  ::GetMenuItemInfoW(menu, position, TRUE, &info);
  if ((info.fType & MFT_SEPARATOR) != 0) {
    return {"", 0, 0};
  }
  CString plain = text;
  const int mark = plain.Find(_T('&'));
  const char mnemonic = mark < 0 ? '-' : toUtf8(plain.Mid(mark + 1, 1).MakeLower())[0];
  plain.Remove(_T('&'));
  return {toUtf8(plain), info.wID, mnemonic};
}

Items itemsOf(HMENU menu) {
  Items items;
  for (int position = 0; position < ::GetMenuItemCount(menu); ++position) {
    items.push_back(itemAt(menu, static_cast<UINT>(position)));
  }
  return items;
}

std::string textAt(HMENU menu, UINT position) {
  return itemAt(menu, position).text;
}

HMENU menuIn(HWND menuWindow) {
  return reinterpret_cast<HMENU>(::SendMessageW(menuWindow, MN_GETHMENU, 0, 0));
}

bool isChecked(HMENU menu, UINT id) {
  return (::GetMenuState(menu, id, MF_BYCOMMAND) & MF_CHECKED) != 0;
}

void press(const Host& host, char key) {
  ::PostMessageW(host.manager(), WM_CHAR, static_cast<WPARAM>(key), 1);
}

void leaveMenu() {
  ::EndMenu();
}

// Alt and the popup's letter; the step then sees the popup.
void openPopup(const Host& host, char letter, const Robot::Step& step) {
  Robot robot;
  robot.whenMenu(step);
  ::PostMessageW(host.manager(), WM_SYSCOMMAND, SC_KEYMENU, letter);
  pump();
}

// What an update handler sets.
class ShownState : public CCmdUI {
 public:
  void Enable(BOOL on) override { isEnabled = on != FALSE; }
  void SetCheck(int state) override { check = state; }

  bool isEnabled = false;
  int check = -1;
};

// The commands that menus give; none is carried out.
class KeptCommands {
 public:
  explicit KeptCommands(HWND manager)
      : m_kept(manager, [this](UINT message, WPARAM wParam, LPARAM lParam) {
          if (message != WM_COMMAND || lParam != 0) {
            return false;
          }
          ids.push_back(LOWORD(wParam));
          return true;
        }) {}

  std::vector<UINT> ids;

 private:
  KeptMessages m_kept;
};

TEST(ManagerMenu, BarHasTwoPopups) {
  Host host;
  host.openManager();
  const HMENU bar = ::GetMenu(host.manager());
  ASSERT_EQ(::GetMenuItemCount(bar), 2);
  EXPECT_EQ(textAt(bar, 0), "File");
  EXPECT_EQ(textAt(bar, 1), "Tools");
  EXPECT_EQ(itemsOf(::GetSubMenu(bar, 0)), fileItems);
  EXPECT_EQ(itemsOf(::GetSubMenu(bar, 1)), toolsItems);
}

TEST(ManagerMenu, EveryItemOfTheBarGivesItsCommand) {
  Host host(2);
  host.openManager();
  for (const auto& [letter, items] : {std::pair{'f', &fileItems}, std::pair{'t', &toolsItems}}) {
    for (const Item& item : *items) {
      if (!item.text.empty()) {
        KeptCommands commands(host.manager());
        openPopup(host, letter, [&](HWND) { press(host, item.mnemonic); });
        EXPECT_EQ(commands.ids, std::vector<UINT>{item.id}) << item.text;
      }
    }
  }
}

TEST(ManagerMenu, RightClickGivesTheTools) {
  Host host(3);
  host.openManager();
  for (const Item& item : toolsItems) {
    if (!item.text.empty()) {
      KeptCommands commands(host.manager());
      Robot robot;
      robot.whenMenu([&](HWND menu) {
        EXPECT_EQ(itemsOf(menuIn(menu)), toolsItems);
        press(host, item.mnemonic);
      });
      host.rightClick(1);
      EXPECT_EQ(commands.ids, std::vector<UINT>{item.id}) << item.text;
    }
  }
}

TEST(ManagerMenu, RightClickChoosesItsRow) {
  Host host(3);
  host.openManager();
  Robot robot;
  robot.whenMenu([&](HWND) { press(host, 'd'); });
  host.rightClick(1);
  EXPECT_EQ(host.numbers(), (std::vector<int>{1, 3}));
  EXPECT_EQ(host.updates(), 1);
}

TEST(ManagerMenu, RightClickOnTheDialogGivesTheToolsWhereItIs) {
  Host host(3);
  host.openManager();
  Robot robot;
  RECT place = {};
  robot.whenMenu([&](HWND menu) {
    ::GetWindowRect(menu, &place);
    leaveMenu();
  });
  ::SendMessageW(host.manager(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(host.manager()),
                 MAKELPARAM(321, 210));
  EXPECT_EQ(place.left, 321);
  EXPECT_EQ(place.top, 210);
}

TEST(ManagerMenu, KeyboardGivesTheToolsAtTheFocus) {
  Host host(30);
  host.openManager();
  host.click(3);
  RECT row = {};
  row.left = LVIR_LABEL;
  ::SendMessageW(host.list(), LVM_GETITEMRECT, 3, reinterpret_cast<LPARAM>(&row));
  POINT corner = {row.left, row.bottom};
  ::ClientToScreen(host.list(), &corner);
  RECT place = {};
  const auto openByKey = [&] {
    Robot robot;
    robot.whenMenu([&](HWND menu) {
      ::GetWindowRect(menu, &place);
      EXPECT_EQ(itemsOf(menuIn(menu)), toolsItems);
      leaveMenu();
    });
    ::SendMessageW(host.list(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(host.list()), -1);
    pump();
  };
  openByKey();
  EXPECT_EQ(place.left, corner.x);
  EXPECT_EQ(place.top, corner.y);
  // The row is out of sight: the corner of the list.
  ::SendMessageW(host.list(), LVM_ENSUREVISIBLE, 29, FALSE);
  corner = {0, 0};
  ::ClientToScreen(host.list(), &corner);
  openByKey();
  EXPECT_EQ(place.left, corner.x);
  EXPECT_EQ(place.top, corner.y);
}

TEST(ManagerMenu, ShowCurrentOnlyIsCheckedInBothMenus) {
  Host host(3);
  host.openManager();
  for (const bool on : {false, true, false}) {
    std::vector<bool> seen;
    const auto look = [&](HWND menu) {
      seen.push_back(isChecked(menuIn(menu), ID_DIPOLE_SHOW_CURRENT_ONLY));
      EXPECT_EQ(::GetMenuState(menuIn(menu), ID_DIPOLE_SHOW_CURRENT_ONLY, MF_BYCOMMAND) & MF_GRAYED, 0U);
      leaveMenu();
    };
    openPopup(host, 't', look);
    {
      Robot robot;
      robot.whenMenu(look);
      host.rightClick(0);
    }
    EXPECT_EQ(seen, (std::vector<bool>{on, on}));
    openPopup(host, 't', [&](HWND) { press(host, 'c'); });
  }
}

TEST(ManagerMenu, WhoAsksForTheUpdateOfShowCurrentOnlyIsToldItsState) {
  Host host;
  host.openManager();
  for (const int on : {0, 1, 0}) {
    ShownState item;
    EXPECT_NE(host.face->getDlgDipoleList()->OnCmdMsg(ID_DIPOLE_SHOW_CURRENT_ONLY, CN_UPDATE_COMMAND_UI,
                                                      &item, nullptr),
              FALSE);
    EXPECT_EQ(item.check, on);
    EXPECT_EQ(item.isEnabled, on != 0);  // off leaves it as it is
    host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  }
}

TEST(ManagerMenu, NothingElseIsCheckedOrGrey) {
  Host host;
  host.openManager();
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  openPopup(host, 't', [&](HWND menu) {
    for (const Item& item : toolsItems) {
      const UINT expected = item.id == ID_DIPOLE_SHOW_CURRENT_ONLY ? UINT{MF_CHECKED} : 0U;
      if (!item.text.empty()) {
        EXPECT_EQ(::GetMenuState(menuIn(menu), item.id, MF_BYCOMMAND) & (MF_CHECKED | MF_GRAYED), expected)
            << item.text;
      }
    }
    leaveMenu();
  });
}

TEST(ManagerMenu, CollectionMayGoWhileAMenuIsOpen) {
  for (const bool byRightClick : {false, true}) {
    Host host(3);
    host.openManager();
    const HWND manager = host.manager();
    const auto end = [&](HWND) { host.face.reset(); };
    if (byRightClick) {
      Robot robot;
      robot.whenMenu(end);
      host.rightClick(1);
    } else {
      openPopup(host, 't', end);
    }
    EXPECT_FALSE(::IsWindow(manager));
    EXPECT_EQ(::FindWindowW(L"#32768", nullptr), nullptr);
  }
}

}  // namespace
