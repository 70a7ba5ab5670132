// "Set Name", as the manager's command "Name Selected..." runs it.
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

class NewName : public testing::Test {
 protected:
  // Three dipoles, the last two selected; the last one is current.
  NewName() : host(3) {
    host.openManager();
    host.click(1);
    host.click(2, true);
    host.forget();
  }

  void run(const Robot::Step& step) {
    robot.when("Set Name", step);
    host.choose(ID_DIPOLE_NAME_SELECTED);
  }

  Messages messages;
  Robot robot;
  Host host;
};

TEST_F(NewName, OffersTheLabelOfTheCurrentDipoleReadyToBeReplaced) {
  run([](HWND dialog) {
    EXPECT_EQ(textOf(dialog, IDC_NEW_NAME), "d3");
    EXPECT_EQ(focusIn(dialog), IDC_NEW_NAME);
    DWORD first = 9;
    DWORD end = 9;
    ::SendMessageW(::GetDlgItem(dialog, IDC_NEW_NAME), EM_GETSEL, reinterpret_cast<WPARAM>(&first),
                   reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(first, 0U);
    EXPECT_EQ(end, 2U);
    press(dialog, IDCANCEL);
  });
}

TEST_F(NewName, OkNamesTheSelectedDipoles) {
  run([](HWND dialog) {
    type(dialog, IDC_NEW_NAME, " caf\u00e9 \u4e2d ");
    press(dialog, IDOK);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", " caf\u00e9 \u4e2d ", " caf\u00e9 \u4e2d "}));
  EXPECT_EQ(host.cell(1, 10), " caf\u00e9 \u4e2d ");
  EXPECT_EQ(host.updates(), 1);
}

TEST_F(NewName, CancelNamesThemAsTheCurrentOne) {
  run([](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "typed");
    press(dialog, IDCANCEL);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "d3", "d3"}));
  EXPECT_EQ(host.updates(), 1);
}

TEST_F(NewName, AnEmptyNameIsAName) {
  run([](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "");
    press(dialog, IDOK);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "", ""}));
}

TEST_F(NewName, ANameMayBeLongerThanTheField) {
  const std::string name(2000, 'n');
  run([&](HWND dialog) {
    type(dialog, IDC_NEW_NAME, name);
    press(dialog, IDOK);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", name, name}));
}

TEST_F(NewName, EnterAndEscapeAreOkAndCancel) {
  run([](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "entered");
    ::PostMessageW(::GetDlgItem(dialog, IDC_NEW_NAME), WM_KEYDOWN, VK_RETURN, 1);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "entered", "entered"}));
  host.click(0);
  run([](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "escaped");
    ::PostMessageW(::GetDlgItem(dialog, IDC_NEW_NAME), WM_KEYDOWN, VK_ESCAPE, 1);
  });
  EXPECT_EQ(host.labels(), (Texts{"d1", "entered", "entered"}));
}

TEST_F(NewName, TheManagerIsDisabledMeanwhile) {
  run([this](HWND dialog) {
    EXPECT_FALSE(::IsWindowEnabled(host.manager()));
    press(dialog, IDCANCEL);
  });
  EXPECT_TRUE(::IsWindowEnabled(host.manager()));
}

TEST_F(NewName, NothingOpensForAnEmptySet) {
  host.face->cleanDipoles();
  host.face->updateDipoleList();
  host.choose(ID_DIPOLE_NAME_SELECTED);
  EXPECT_TRUE(openWindows("Set Name").empty());
}

// As when the system has no room for another window.
LRESULT CALLBACK refuseWindows(int code, WPARAM window, LPARAM parameter) {
  return code == HCBT_CREATEWND ? 1 : ::CallNextHookEx(nullptr, code, window, parameter);
}

TEST_F(NewName, TheHostIsToldAlsoWhenNoDialogCanBeMade) {
  const HHOOK hook = ::SetWindowsHookExW(WH_CBT, &refuseWindows, nullptr, ::GetCurrentThreadId());
  host.choose(ID_DIPOLE_NAME_SELECTED);
  ::UnhookWindowsHookEx(hook);
  EXPECT_EQ(host.updates(), 1);
  EXPECT_EQ(host.labels(), (Texts{"d1", "d2", "d3"}));
  EXPECT_EQ(host.selectedRows(), (std::vector<int>{1, 2}));
  EXPECT_TRUE(::IsWindowEnabled(host.manager()));
}

TEST_F(NewName, TheCollectionMayGoWhileTheNameIsAsked) {
  const HWND manager = host.manager();
  robot.when("Set Name", [this](HWND dialog) {
    host.face.reset();
    press(dialog, IDOK);
  });
  ::SendMessageW(manager, WM_COMMAND, ID_DIPOLE_NAME_SELECTED, 0);
  pump();
  EXPECT_FALSE(::IsWindow(manager));
  EXPECT_TRUE(openWindows("Set Name").empty());
  EXPECT_EQ(host.updates(), 0);
}

}  // namespace
