// "Name Selected..." and "Color Selected...": the dialogs are the real ones.
#include <gtest/gtest.h>

#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

using Texts = std::vector<std::string>;

// The edits of the system's colour dialog.
constexpr int redEdit = 706;
constexpr int greenEdit = 707;
constexpr int blueEdit = 708;

constexpr auto nameCaption = "Set Name";
constexpr auto colorCaption = "Color";

// Rows 1 and 3 of four; dipole 3 is the current one.
void chooseTwo(Host& host) {
  host.openManager();
  host.click(1);
  host.click(3, true);
  host.forget();
}

void run(Host& host, UINT command, const std::string& caption, const Robot::Step& step) {
  Robot robot;
  robot.when(caption, step);
  host.choose(command);
}

void name(Host& host, const Robot::Step& step) {
  run(host, ID_DIPOLE_NAME_SELECTED, nameCaption, step);
}

void color(Host& host, const Robot::Step& step) {
  run(host, ID_DIPOLE_COLOR_SELECTED, colorCaption, step);
}

void setColor(HWND dialog, int red, int green, int blue) {
  type(dialog, redEdit, std::to_string(red));
  type(dialog, greenEdit, std::to_string(green));
  type(dialog, blueEdit, std::to_string(blue));
}

std::vector<COLORREF> colors(const Host& host) {
  std::vector<COLORREF> found;
  for (int slot = 0; slot < host.face->m_totalDipoles; ++slot) {
    found.push_back(host.dipole(slot).m_color);
  }
  return found;
}

TEST(ManagerName, IsOfferedFromTheCurrentDipoleAndGivenToTheSelected) {
  Host host(4);
  chooseTwo(host);
  std::string offered;
  name(host, [&](HWND dialog) {
    offered = textOf(dialog, IDC_NEW_NAME);
    EXPECT_FALSE(::IsWindowEnabled(host.manager()));
    type(dialog, IDC_NEW_NAME, "left é temporal");
    press(dialog, IDOK);
  });
  EXPECT_EQ(offered, "d4");
  EXPECT_EQ(host.labels(), (Texts{"d1", "left é temporal", "d3", "left é temporal"}));
  EXPECT_EQ(host.cell(1, 10), "left é temporal");
  EXPECT_EQ(host.updates(), 1);
  EXPECT_TRUE(::IsWindowEnabled(host.manager()));
}

TEST(ManagerName, CancelGivesTheNameOfTheCurrentDipole) {
  Host host(4);
  chooseTwo(host);
  name(host, [](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "typed");
    press(dialog, IDCANCEL);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "d4", "d3", "d4"}));
  EXPECT_EQ(host.cell(1, 10), "d4");
  EXPECT_EQ(host.updates(), 1);
}

TEST(ManagerName, ClosingTheBoxIsACancel) {
  Host host(4);
  chooseTwo(host);
  name(host, [](HWND dialog) { ::PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); });
  EXPECT_EQ(host.labels(), (Texts{"d1", "d4", "d3", "d4"}));
  EXPECT_EQ(host.updates(), 1);
}

TEST(ManagerName, MayBeEmpty) {
  Host host(4);
  chooseTwo(host);
  name(host, [](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "");
    press(dialog, IDOK);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "", "d3", ""}));
}

TEST(ManagerName, ChangesNothingWhenNothingIsSelected) {
  Host host(3);
  host.openManager();
  name(host, [](HWND dialog) {
    EXPECT_EQ(textOf(dialog, IDC_NEW_NAME), "d1");
    type(dialog, IDC_NEW_NAME, "other");
    press(dialog, IDOK);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "d2", "d3"}));
  EXPECT_EQ(host.updates(), 1);
}

TEST(ManagerName, IsEmptyAtFirstWithoutACurrentDipole) {
  Host host(3);
  host.openManager();
  host.face->m_currentDipole = -1;
  name(host, [](HWND dialog) {
    EXPECT_EQ(textOf(dialog, IDC_NEW_NAME), "");
    press(dialog, IDCANCEL);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "d2", "d3"}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 0);  // the gaps were closed
}

TEST(ManagerName, ClosesTheGapsOfTheSet) {
  Host host(4);
  chooseTwo(host);
  host.face->deleteDipole(0, 0);
  name(host, [](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "n");
    press(dialog, IDOK);
  });
  EXPECT_EQ(host.labels(), (Texts{"n", "d3", "n"}));
}

TEST(ManagerName, EnterIsOkAndEscapeIsCancel) {
  Host host(4);
  chooseTwo(host);
  name(host, [](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "by key");
    ::PostMessageW(::GetDlgItem(dialog, IDC_NEW_NAME), WM_KEYDOWN, VK_RETURN, 1);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "by key", "d3", "by key"}));
  host.click(0);
  name(host, [](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "never");
    ::PostMessageW(::GetDlgItem(dialog, IDC_NEW_NAME), WM_KEYDOWN, VK_ESCAPE, 1);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "by key", "d3", "by key"}));
}

TEST(ManagerName, CollectionMayGoWhileItIsAsked) {
  Host host(4);
  chooseTwo(host);
  const HWND manager = host.manager();
  name(host, [&](HWND dialog) {
    host.face.reset();
    if (::IsWindow(dialog) != FALSE) {
      press(dialog, IDOK);
    }
  });
  EXPECT_FALSE(::IsWindow(manager));
  EXPECT_EQ(host.updates(), 0);
  EXPECT_TRUE(::IsWindowEnabled(host.window.m_hWnd));
}

TEST(ManagerColor, StartsWithTheCurrentDipolesAndIsGivenToTheSelected) {
  Host host(4);
  host.dipole(3).setColorValue(RGB(10, 200, 30));
  chooseTwo(host);
  color(host, [](HWND dialog) { press(dialog, IDOK); });
  const COLORREF yellow = host.dipole(0).m_color;
  EXPECT_EQ(colors(host), (std::vector<COLORREF>{yellow, RGB(10, 200, 30), yellow, RGB(10, 200, 30)}));
  EXPECT_FLOAT_EQ(host.dipole(1).m_colorF[0], 10.0F / 256.0F);
  EXPECT_FLOAT_EQ(host.dipole(1).m_colorF[1], 200.0F / 256.0F);
  EXPECT_FLOAT_EQ(host.dipole(1).m_colorF[2], 30.0F / 256.0F);
  EXPECT_EQ(host.updates(), 1);
  EXPECT_EQ(host.selectedRows(), std::vector<int>{});
}

TEST(ManagerColor, IsTheOneThatTheUserSets) {
  Host host(4);
  chooseTwo(host);
  color(host, [](HWND dialog) {
    setColor(dialog, 1, 2, 255);
    press(dialog, IDOK);
  });
  EXPECT_EQ(host.dipole(1).m_color, RGB(1, 2, 255));
  EXPECT_EQ(host.dipole(3).m_color, RGB(1, 2, 255));
  EXPECT_NE(host.dipole(0).m_color, RGB(1, 2, 255));
}

TEST(ManagerColor, CancelLeavesThemAndTellsTheHost) {
  Host host(4);
  chooseTwo(host);
  const std::vector<COLORREF> before = colors(host);
  color(host, [](HWND dialog) {
    setColor(dialog, 1, 2, 255);
    press(dialog, IDCANCEL);
  });
  EXPECT_EQ(colors(host), before);
  EXPECT_EQ(host.updates(), 1);
  EXPECT_EQ(host.selectedRows(), (std::vector<int>{1, 3}));  // no refill
}

TEST(ManagerColor, ChangesNothingWhenNothingIsSelected) {
  Host host(3);
  host.openManager();
  const std::vector<COLORREF> before = colors(host);
  color(host, [](HWND dialog) {
    setColor(dialog, 9, 9, 9);
    press(dialog, IDOK);
  });
  EXPECT_EQ(colors(host), before);
  EXPECT_EQ(host.updates(), 1);
}

TEST(ManagerColor, FirstCustomColourIsTheCurrentDipoles) {
  Host host(4);
  host.dipole(3).setColorValue(RGB(255, 0, 255));
  chooseTwo(host);
  color(host, [](HWND dialog) {
    setColor(dialog, 0, 0, 64);
    // The custom colours: two rows of eight in this control.
    const HWND table = ::GetDlgItem(dialog, 721);
    RECT all = {};
    ::GetWindowRect(table, &all);
    POINT first = {all.left + (all.right - all.left) / 16, all.top + (all.bottom - all.top) / 4};
    ::ScreenToClient(dialog, &first);
    ::SendMessageW(dialog, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(first.x, first.y));
    press(dialog, IDOK);
  });
  EXPECT_EQ(host.dipole(1).m_color, RGB(255, 0, 255));
}

TEST(ManagerColor, CollectionMayGoWhileItIsAsked) {
  Host host(4);
  chooseTwo(host);
  const HWND manager = host.manager();
  color(host, [&](HWND dialog) {
    host.face.reset();
    if (::IsWindow(dialog) != FALSE) {
      press(dialog, IDOK);
    }
  });
  EXPECT_FALSE(::IsWindow(manager));
  EXPECT_EQ(host.updates(), 0);
}

}  // namespace
