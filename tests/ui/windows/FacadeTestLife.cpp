// The end of collections with open dialogs, and copies that share them.
#include <gtest/gtest.h>
#include <set>
#include <vector>

#include "platform/Utf.h"
#include "tests/platform/windows/HandleCount.h"
#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

Host* ending = nullptr;  // whose collection a callback destroys

int endAtPosition(double /*x*/, double /*y*/, double /*z*/, double /*latency*/) {
  ending->face.reset();
  return 0;
}

int endAtUpdate(bool /*value*/) {
  ending->face.reset();
  return 0;
}

struct Windows {
  HWND manager;
  HWND managersEditor;
  HWND editor;
  HWND coordinates;

  std::vector<HWND> all() const { return {manager, managersEditor, editor, coordinates}; }
};

using WindowSet = std::set<HWND>;

BOOL CALLBACK addVisibleDialog(HWND window, LPARAM parameter) {
  TCHAR className[32] = {};
  ::GetClassNameW(window, className, 32);
  if (::IsWindowVisible(window) != FALSE && CString(className) == _T("#32770")) {
    reinterpret_cast<WindowSet*>(parameter)->insert(window);
  }
  return TRUE;
}

WindowSet visibleDialogs() {
  WindowSet result;
  ::EnumThreadWindows(::GetCurrentThreadId(), &addVisibleDialog, reinterpret_cast<LPARAM>(&result));
  return result;
}

// The dialog that an act brings on the screen: another collection may have one with the same caption there,
// and which of them is on top is the system's choice.
template <typename Act>
HWND broughtBy(Act act) {
  const WindowSet before = visibleDialogs();
  act();
  WindowSet brought = visibleDialogs();
  std::erase_if(brought, [&](HWND window) { return before.contains(window); });
  EXPECT_EQ(brought.size(), 1U);
  return brought.empty() ? nullptr : *brought.begin();
}

Windows openAll(Host& host) {
  Windows windows = {};
  windows.manager = broughtBy([&] { host.openManager(); });
  windows.managersEditor = broughtBy([&] { host.choose(ID_DIPOLE_EDIT); });
  windows.editor = broughtBy([&] { host.face->dipoleEdit(&host.window); });
  windows.coordinates = broughtBy([&] { host.face->setDipoleCoordinate(&host.window); });
  pump();
  return windows;
}

void expectNone(const Windows& windows) {
  for (const HWND window : windows.all()) {
    EXPECT_FALSE(::IsWindow(window));
  }
}

class FacadeLife : public testing::Test {
 protected:
  Messages messages;
  Host host{3};
};

TEST_F(FacadeLife, ACollectionTakesItsOpenDialogsAlong) {
  const Windows windows = openAll(host);
  for (const HWND window : windows.all()) {
    ASSERT_TRUE(::IsWindowVisible(window));
  }
  host.face.reset();
  expectNone(windows);
}

// The captions of the dialogs, in the order in which they go.
Texts goneCaptions;

LRESULT CALLBACK noteDialog(int code, WPARAM window, LPARAM parameter) {
  if (code == HCBT_DESTROYWND) {
    const std::string caption = captionOf(reinterpret_cast<HWND>(window));
    if (caption.starts_with("Dipole ") || caption.starts_with("Current dipole")) {
      goneCaptions.push_back(caption);
    }
  }
  return ::CallNextHookEx(nullptr, code, window, parameter);
}

TEST_F(FacadeLife, TheEditorGoesFirstThenTheCoordinatesThenTheManager) {
  host.openManager();
  host.face->setDipoleCoordinate(&host.window);
  host.face->dipoleEdit(&host.window);
  goneCaptions.clear();
  const HHOOK hook = ::SetWindowsHookExW(WH_CBT, &noteDialog, nullptr, ::GetCurrentThreadId());
  host.face.reset();
  ::UnhookWindowsHookEx(hook);
  EXPECT_EQ(goneCaptions,
            (Texts{"Current dipole (Total dipoles):0(3)", "Dipole coordinate settings", "Dipole Manager"}));
}

TEST_F(FacadeLife, ACollectionTakesItsHiddenDialogsAlong) {
  const Windows windows = openAll(host);
  for (const HWND window : windows.all()) {
    ::SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
    ASSERT_FALSE(::IsWindowVisible(window));
  }
  host.face.reset();
  expectNone(windows);
}

TEST_F(FacadeLife, ItMayGoAfterItsWindowsAndTheHosts) {
  const Windows windows = openAll(host);
  for (const HWND window : windows.all()) {
    ::DestroyWindow(window);
  }
  host.window.DestroyWindow();
  pump();
  host.face.reset();
  expectNone(windows);
}

TEST_F(FacadeLife, ItsDialogsWorkWhenTheHostsWindowIsGone) {
  const Windows windows = openAll(host);
  host.window.DestroyWindow();
  pump();
  type(windows.editor, IDC_EDITOR_SIZE, "8");
  press(windows.editor, IDC_EDITOR_APPLY);
  type(windows.coordinates, IDC_COORDINATE_LOCATION_X, "5");
  press(windows.coordinates, IDC_COORDINATE_APPLY);
  host.click(1);
  EXPECT_EQ(host.dipole(0).m_size, 8.0);
  EXPECT_EQ(host.face->m_sphereLocational.m_center[0], 5.0);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 1);
}

TEST_F(FacadeLife, ItMayGoInItsUpdateCallback) {
  ending = &host;
  host.face->setCbfUpdateViewers(&endAtUpdate);
  const Windows windows = openAll(host);
  ::SendMessageW(windows.manager, WM_COMMAND, ID_DIPOLE_HIDE_ALL, 0);
  pump();
  EXPECT_EQ(host.face, nullptr);
  expectNone(windows);
}

TEST_F(FacadeLife, ItMayGoInItsPositionCallback) {
  ending = &host;
  const Windows windows = openAll(host);
  host.face->setCbfDipoleXYZ(&endAtPosition);
  press(windows.manager, IDC_MANAGER_DYNAMIC_UPDATE);
  const HWND list = ::GetDlgItem(windows.manager, IDC_MANAGER_LIST);
  LVITEMW item = {};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  item.state = LVIS_SELECTED | LVIS_FOCUSED;
  ::SendMessageW(list, LVM_SETITEMSTATE, 1, reinterpret_cast<LPARAM>(&item));
  pump();
  EXPECT_EQ(host.face, nullptr);
  expectNone(windows);
}

TEST_F(FacadeLife, AllWindowsGoWhileTheRangeMessageIsOnTheScreen) {
  const Windows windows = openAll(host);
  messages.meanwhile([&] { host.face.reset(); });
  type(windows.managersEditor, IDC_EDITOR_MERGE_RADIUS, "0.5");
  pump();
  EXPECT_EQ(messages.take(), Texts{"Please enter a number between 1 and 9000."});
  expectNone(windows);
}

TEST_F(FacadeLife, TwoCollectionsHaveTheirOwnDialogs) {
  const Windows first = openAll(host);
  Host second(2);
  const Windows others = openAll(second);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NE(first.all()[i], others.all()[i]);
  }
  EXPECT_EQ(host.rows(), 3);
  EXPECT_EQ(second.rows(), 2);
  press(others.editor, IDC_EDITOR_DELETE);
  EXPECT_EQ(host.rows(), 3);
  EXPECT_EQ(second.rows(), 1);
  second.face.reset();
  expectNone(others);
  for (const HWND window : first.all()) {
    EXPECT_TRUE(::IsWindowVisible(window));
  }
}

TEST_F(FacadeLife, FiftyCollectionsLeaveNothingBehind) {
  const auto useOne = [] {
    Host one(3);
    const Windows windows = openAll(one);
    press(windows.editor, IDC_EDITOR_NEXT);
    press(windows.coordinates, IDC_COORDINATE_APPLY);
    one.click(1);
  };
  useOne();  // what the system makes once
  const int thread = threadWindows();
  const int user = windowHandles();
  const int gdi = gdiHandles();
  for (int i = 0; i < 50; ++i) {
    useOne();
  }
  EXPECT_EQ(threadWindows(), thread);
  EXPECT_LE(windowHandles(), user);
  EXPECT_LE(gdiHandles(), gdi + 2);  // the system keeps some of its own
}

TEST_F(FacadeLife, ReopeningMakesNothingNew) {
  const std::vector<HWND> windows = openAll(host).all();
  const int thread = threadWindows();
  const int user = windowHandles();
  const int gdi = gdiHandles();
  for (int i = 0; i < 50; ++i) {
    for (const HWND window : windows) {
      ::SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
    }
    EXPECT_EQ(openAll(host).all(), windows);
  }
  EXPECT_EQ(threadWindows(), thread);
  EXPECT_LE(windowHandles(), user);
  EXPECT_LE(gdiHandles(), gdi + 2);
}

class FacadeCopies : public FacadeLife {};

TEST_F(FacadeCopies, ShareTheDialogs) {
  const Windows windows = openAll(host);
  const auto copy = std::make_unique<CDipoleFacezq>(*host.face);
  EXPECT_EQ(copy->getDlgDipoleList(), host.face->getDlgDipoleList());
  EXPECT_EQ(copy->getTotalDipoles(), 3U);
  copy->showDipoleList(&host.window, nullptr);
  copy->dipoleEdit(&host.window);
  copy->setDipoleCoordinate(&host.window);
  pump();
  EXPECT_EQ(openWindows("Dipole Manager"), std::vector<HWND>{windows.manager});
  EXPECT_EQ(openWindows("Dipole coordinate settings"), std::vector<HWND>{windows.coordinates});
  EXPECT_EQ(openWindows("Current dipole").size(), 2U);
}

TEST_F(FacadeCopies, ACopyThatGoesLeavesTheOriginalsDialogsOpen) {
  const Windows windows = openAll(host);
  {
    const auto copy = std::make_unique<CDipoleFacezq>(*host.face);
    EXPECT_NE(copy->getDlgDipoleList(), nullptr);
  }
  for (const HWND window : windows.all()) {
    EXPECT_TRUE(::IsWindowVisible(window));
  }
  press(windows.editor, IDC_EDITOR_NEXT);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 1);
  host.click(2);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 2);
  host.face.reset();
  expectNone(windows);
}

TEST_F(FacadeCopies, AnOriginalThatGoesFirstHidesTheDialogsUntilTheCopyShowsThem) {
  const Windows windows = openAll(host);
  auto copy = std::make_unique<CDipoleFacezq>(*host.face);
  host.face.reset();
  for (const HWND window : windows.all()) {
    EXPECT_TRUE(::IsWindow(window));
    EXPECT_FALSE(::IsWindowVisible(window));
  }
  for (const int button : {IDC_EDITOR_ADD, IDC_EDITOR_DELETE, IDC_EDITOR_NEXT, IDC_EDITOR_PREVIOUS,
                           IDC_EDITOR_APPLY, IDC_EDITOR_COLOR, IDC_EDITOR_SHOW_ORIENTATION, IDOK}) {
    press(windows.editor, button);  // without a collection nothing happens
    press(windows.managersEditor, button);
  }
  press(windows.coordinates, IDC_COORDINATE_APPLY);
  for (int command = ID_DIPOLE_EXIT; command <= ID_DIPOLE_EXPORT_EXCEL; ++command) {
    ::SendMessageW(windows.manager, WM_COMMAND, static_cast<WPARAM>(command), 0);
  }
  pump();
  EXPECT_EQ(copy->getTotalDipoles(), 3U);
  EXPECT_EQ(host.updates(), 0);
  copy->showDipoleList(&host.window, nullptr);
  copy->dipoleEdit(&host.window);
  EXPECT_EQ(copy->getDlgDipoleList()->m_hWnd, windows.manager);
  EXPECT_TRUE(::IsWindowVisible(windows.manager));
  EXPECT_EQ(captionOf(windows.editor), "Current dipole (Total dipoles):0(3)");
  press(windows.editor, IDC_EDITOR_DELETE);
  EXPECT_EQ(copy->getTotalDipoles(), 2U);
  copy.reset();
  expectNone(windows);
}

TEST_F(FacadeCopies, ADialogThatTheCopyShowsStaysWhenTheOriginalGoes) {
  const Windows windows = openAll(host);
  const auto copy = std::make_unique<CDipoleFacezq>(*host.face);
  copy->dipoleEdit(&host.window);
  host.face.reset();
  EXPECT_TRUE(::IsWindowVisible(windows.editor));
  EXPECT_FALSE(::IsWindowVisible(windows.manager));
  press(windows.editor, IDC_EDITOR_NEXT);
  EXPECT_EQ(copy->getCurrentDipoleID(), 1);
}

TEST_F(FacadeCopies, TheManagersEditorFollowsTheManagerToTheCopy) {
  const Windows windows = openAll(host);
  const auto copy = std::make_unique<CDipoleFacezq>(*host.face);
  copy->addDipole();
  copy->showDipoleList(&host.window, nullptr);
  EXPECT_EQ(captionOf(windows.managersEditor), "Current dipole (Total dipoles):3(4)");
  host.face.reset();
  EXPECT_TRUE(::IsWindowVisible(windows.managersEditor));
  press(windows.managersEditor, IDC_EDITOR_PREVIOUS);
  EXPECT_EQ(copy->getCurrentDipoleID(), 2);
}

TEST_F(FacadeCopies, AssignmentTakesTheOthersDialogsAndLetsGoOfItsOwn) {
  const Windows own = openAll(host);
  Host other(2);
  const Windows others = openAll(other);
  *host.face = *other.face;
  expectNone(own);
  EXPECT_EQ(host.face->getDlgDipoleList(), other.face->getDlgDipoleList());
  EXPECT_EQ(host.face->getTotalDipoles(), 2U);
  for (const HWND window : others.all()) {
    EXPECT_TRUE(::IsWindowVisible(window));
  }
  other.face.reset();
  EXPECT_FALSE(::IsWindowVisible(others.manager));
  host.face.reset();
  expectNone(others);
}

TEST_F(FacadeCopies, AssignmentHidesTheDialogsThatACopyStillHas) {
  const Windows own = openAll(host);
  const auto copy = std::make_unique<CDipoleFacezq>(*host.face);
  const auto other = std::make_unique<CDipoleFacezq>();
  *host.face = *other;
  for (const HWND window : own.all()) {
    EXPECT_TRUE(::IsWindow(window));
    EXPECT_FALSE(::IsWindowVisible(window));
  }
  press(own.editor, IDC_EDITOR_ADD);
  EXPECT_EQ(host.face->getTotalDipoles(), 0U);
}

TEST_F(FacadeCopies, AssignmentOfACopyKeepsTheDialogsThatBothHaveOpen) {
  const Windows windows = openAll(host);
  const auto copy = std::make_unique<CDipoleFacezq>(*host.face);
  *host.face = *copy;
  for (const HWND window : windows.all()) {
    EXPECT_TRUE(::IsWindowVisible(window));
  }
  host.choose(ID_DIPOLE_HIDE_ALL);
  EXPECT_EQ(host.image(0), 1);
}

TEST_F(FacadeCopies, AssignmentToItselfKeepsEverything) {
  const Windows windows = openAll(host);
  CDipoleFacezq& same = *host.face;
  *host.face = same;
  for (const HWND window : windows.all()) {
    EXPECT_TRUE(::IsWindowVisible(window));
  }
  EXPECT_EQ(host.rows(), 3);
}

TEST_F(FacadeCopies, WithoutDialogsMakeTheirOwn) {
  const auto copy = std::make_unique<CDipoleFacezq>(*host.face);
  host.openManager();
  EXPECT_EQ(copy->getDlgDipoleList(), nullptr);
  copy->showDipoleList(&host.window, nullptr);
  EXPECT_NE(copy->getDlgDipoleList(), host.face->getDlgDipoleList());
}

}  // namespace
