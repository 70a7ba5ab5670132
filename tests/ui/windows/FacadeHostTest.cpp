// The host's windows: each dialog repaints the one that it was shown with, and none that has gone.
#include <gtest/gtest.h>
#include <optional>

#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

bool isDue(HWND window) {
  return ::GetUpdateRect(window, nullptr, FALSE) != FALSE;
}

class FacadeHost : public testing::Test {
 protected:
  CDipoleFacezq& face() { return *host.face; }

  // Which of these windows the act, which handles no further messages, makes due for repainting.
  template <typename Act>
  std::vector<HWND> repaintedBy(const std::vector<HWND>& windows, Act act) {
    pump();
    for (const HWND window : windows) {
      ::UpdateWindow(window);
    }
    act();
    std::vector<HWND> due;
    std::copy_if(windows.begin(), windows.end(), std::back_inserter(due), &isDue);
    return due;
  }
  // The acts of the dialogs, by which each asks for a repaint.
  std::function<void()> ofManager() {
    return [this] { host.selectOnly(++m_row % 3); };
  }
  // Up on the first row: no row changes, so the manager asks for nothing.
  std::function<void()> ofList() {
    return [this] { ::SendMessageW(host.list(), WM_KEYDOWN, VK_UP, 1); };
  }
  static std::function<void()> ofEditor(HWND editor) {
    return [editor] { press(editor, IDC_EDITOR_APPLY); };
  }
  std::function<void()> ofCoordinates() {
    return [this] { press(host.coordinates(), IDC_COORDINATE_APPLY); };
  }

  Messages messages;
  Host host{3};

 private:
  int m_row = 0;
};

using Windows = std::vector<HWND>;

TEST_F(FacadeHost, EachDialogRepaintsTheWindowThatItWasShownWith) {
  HostWindow second;
  HostWindow third;
  face().showDipoleList(&host.window, nullptr);
  face().dipoleEdit(&second);
  face().setDipoleCoordinate(&third);
  const HWND editor = host.editor();
  const Windows all = {host.window, second, third};
  EXPECT_EQ(repaintedBy(all, ofManager()), Windows{host.window});
  EXPECT_EQ(repaintedBy(all, ofEditor(editor)), Windows{second});
  EXPECT_EQ(repaintedBy(all, ofCoordinates()), Windows{third});
  HostWindow fourth;
  face().dipoleEdit(&fourth);  // the editor alone changes its window
  EXPECT_EQ(repaintedBy({third, fourth}, ofCoordinates()), Windows{third});
  EXPECT_EQ(repaintedBy({third, fourth}, ofEditor(editor)), Windows{fourth});
  face().dipoleEdit(&third);
  EXPECT_EQ(repaintedBy(all, ofManager()), Windows{host.window});
  EXPECT_EQ(repaintedBy(all, ofEditor(editor)), Windows{third});
  face().showDipoleList(&second, nullptr);
  EXPECT_EQ(repaintedBy(all, ofManager()), Windows{second});
  EXPECT_EQ(repaintedBy(all, ofEditor(editor)), Windows{third});
  host.key(VK_HOME);
  EXPECT_EQ(repaintedBy(all, ofList()), Windows{second});  // the list's own request
  EXPECT_EQ(repaintedBy(all, ofCoordinates()), Windows{third});
}

TEST_F(FacadeHost, NullIsForItsOwnDialogAlone) {
  face().showDipoleList(&host.window, nullptr);
  face().dipoleEdit(&host.window);
  face().setDipoleCoordinate(&host.window);
  const HWND editor = host.editor();
  const Windows all = {host.window};
  face().dipoleEdit(nullptr);
  EXPECT_EQ(face().m_pParentWnd, nullptr);
  EXPECT_EQ(repaintedBy(all, ofEditor(editor)), Windows{});
  EXPECT_EQ(repaintedBy(all, ofManager()), all);
  EXPECT_EQ(repaintedBy(all, ofCoordinates()), all);
  face().showDipoleList(nullptr, nullptr);
  EXPECT_EQ(repaintedBy(all, ofManager()), Windows{});
  host.key(VK_HOME);
  EXPECT_EQ(repaintedBy(all, ofList()), Windows{});
  face().setDipoleCoordinate(nullptr);
  EXPECT_EQ(repaintedBy(all, ofCoordinates()), Windows{});
}

TEST_F(FacadeHost, TheManagersEditorKeepsTheWindowWithWhichItWasOpened) {
  HostWindow second;
  face().showDipoleList(&host.window, nullptr);
  host.choose(ID_DIPOLE_EDIT);
  const HWND editor = host.editor();
  const Windows all = {host.window, second};
  face().showDipoleList(&second, nullptr);
  EXPECT_EQ(repaintedBy(all, ofEditor(editor)), Windows{host.window});
  host.choose(ID_DIPOLE_EDIT);
  EXPECT_EQ(repaintedBy(all, ofEditor(editor)), Windows{second});
}

TEST_F(FacadeHost, TheManagersEditorGoesAlongToTheWindowOfACopy) {
  HostWindow second;
  face().showDipoleList(&host.window, nullptr);
  host.choose(ID_DIPOLE_EDIT);
  const HWND editor = host.editor();
  const auto copy = std::make_unique<CDipoleFacezq>(face());
  copy->showDipoleList(&second, nullptr);
  EXPECT_EQ(repaintedBy({host.window, second}, ofEditor(editor)), Windows{second});
}

// The dialogs must not follow the pointer: where the object was there is another one, with a window of its
// own.
TEST_F(FacadeHost, AWindowMayGoWithItsObject) {
  auto storage = std::make_unique<std::optional<HostWindow>>(std::in_place);
  HostWindow* const gone = &**storage;
  face().showDipoleList(gone, nullptr);
  face().dipoleEdit(gone);
  face().setDipoleCoordinate(gone);
  const HWND editor = host.editor();
  storage->reset();
  HostWindow& next = storage->emplace();
  ASSERT_EQ(&next, gone);
  const Windows all = {host.window, next};
  EXPECT_EQ(repaintedBy(all, ofManager()), Windows{});
  EXPECT_EQ(repaintedBy(all, ofEditor(editor)), Windows{});
  EXPECT_EQ(repaintedBy(all, ofCoordinates()), Windows{});
  EXPECT_EQ(host.face->getCurrentDipoleID(), 1);
}

// The same object with another window: that one was never given.
TEST_F(FacadeHost, AWindowThatDiedIsNotRepaintedWhenItsObjectGetsAnother) {
  face().showDipoleList(&host.window, nullptr);
  face().dipoleEdit(&host.window);
  face().setDipoleCoordinate(&host.window);
  const HWND editor = host.editor();
  host.window.DestroyWindow();
  const RECT place = {900, 20, 1100, 140};
  host.window.CreateEx(0, _T("STATIC"), _T("Host"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, place, nullptr, 0);
  const Windows all = {host.window};
  EXPECT_EQ(repaintedBy(all, ofManager()), Windows{});
  EXPECT_EQ(repaintedBy(all, ofEditor(editor)), Windows{});
  EXPECT_EQ(repaintedBy(all, ofCoordinates()), Windows{});
  face().showDipoleList(&host.window, nullptr);
  EXPECT_EQ(repaintedBy(all, ofManager()), all);
}

// As when the system gives the handle of a window that died to a new one.
TEST_F(FacadeHost, AnotherWindowWithTheSameHandleIsNotRepainted) {
  face().showDipoleList(&host.window, nullptr);
  const HWND window = host.window.Detach();
  CWnd other;
  other.Attach(window);
  EXPECT_EQ(repaintedBy({window}, ofManager()), Windows{});
  other.Detach();
  host.window.Attach(window);
  EXPECT_EQ(repaintedBy({window}, ofManager()), Windows{window});
}

TEST_F(FacadeHost, AWindowWithoutAnObjectOfItsOwnIsRepaintedUntilItGoes) {
  const HWND plain = ::CreateWindowExW(0, L"STATIC", L"Plain", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 900, 200,
                                       200, 120, nullptr, nullptr, nullptr, nullptr);
  face().showDipoleList(CWnd::FromHandle(plain), nullptr);
  EXPECT_EQ(repaintedBy({plain}, ofManager()), Windows{plain});
  CWnd own;
  own.Attach(plain);  // later
  EXPECT_EQ(repaintedBy({plain}, ofManager()), Windows{plain});
  own.Detach();
  ::DestroyWindow(plain);
  EXPECT_EQ(repaintedBy({host.window}, ofManager()), Windows{});
}

}  // namespace
