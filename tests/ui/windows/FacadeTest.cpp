// CDipoleFacezq as its host calls it: opening, showing again, callbacks, refreshing.
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/support/TestPlaces.h"
#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

int rememberedByAnother = 0;

int anotherPosition(double /*x*/, double /*y*/, double /*z*/, double /*latency*/) {
  return ++rememberedByAnother;
}

int updatesOfAnother = 0;

int anotherUpdate(bool /*value*/) {
  return ++updatesOfAnother;
}

class Facade : public testing::Test {
 protected:
  Facade() : host(3) {
    rememberedByAnother = 0;
    updatesOfAnother = 0;
  }

  CDipoleFacezq& face() { return *host.face; }

  void showList(int (*callback)(double, double, double, double)) {
    face().showDipoleList(&host.window, callback);
    pump();
  }
  void hide(HWND window) {
    ::SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    pump();
    ASSERT_TRUE(::IsWindow(window));
    ASSERT_FALSE(::IsWindowVisible(window));
  }
  // A user picks a row with the position on; tells who heard of it.
  std::string whoHearsOfAPick(int row) {
    if (!isChecked(host.manager(), IDC_MANAGER_DYNAMIC_UPDATE)) {
      press(host.manager(), IDC_MANAGER_DYNAMIC_UPDATE);
    }
    host.forget();
    rememberedByAnother = 0;
    host.click(row);
    std::string heard;
    heard += host.positions().empty() ? "" : "host";
    heard += rememberedByAnother == 0 ? "" : "another";
    return heard;
  }

  Messages messages;
  Host host;
};

TEST_F(Facade, NothingIsMadeBeforeItIsAskedFor) {
  const int before = threadWindows();
  auto fresh = std::make_unique<CDipoleFacezq>();
  EXPECT_EQ(fresh->getDlgDipoleList(), nullptr);
  EXPECT_EQ(fresh->m_pParentWnd, nullptr);
  EXPECT_EQ(fresh->updateDipoleList(), 1);
  EXPECT_EQ(fresh->updateDipoleEditor(), 1);
  EXPECT_EQ(fresh->updateDipoleSettings(), 0);
  EXPECT_EQ(threadWindows(), before);
}

TEST_F(Facade, TheSameDialogIsReturnedByEveryCall) {
  CDialog* const first = face().showDipoleList(&host.window, nullptr);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(face().getDlgDipoleList(), first);
  const HWND window = first->m_hWnd;
  hide(window);
  EXPECT_EQ(face().getDlgDipoleList(), first);
  EXPECT_EQ(face().showDipoleList(&host.window, nullptr), first);
  EXPECT_EQ(first->m_hWnd, window);
  EXPECT_TRUE(::IsWindowVisible(window));
}

TEST_F(Facade, TheManagerIsVisibleFilledAndHasTheFocus) {
  showList(nullptr);
  EXPECT_TRUE(::IsWindowVisible(host.manager()));
  EXPECT_EQ(host.column(10), (Texts{"d1", "d2", "d3"}));
  EXPECT_EQ(::GetActiveWindow(), host.manager());
  EXPECT_EQ(::GetFocus(), host.list());
}

TEST_F(Facade, ShowingAgainGivesTheFocusBackAndShowsTheSetAsItIs) {
  showList(nullptr);
  host.window.SetFocus();
  face().addDipole();
  EXPECT_EQ(host.rows(), 3);  // a host's own change is the host's to tell
  showList(nullptr);
  EXPECT_EQ(host.rows(), 4);
  EXPECT_EQ(::GetActiveWindow(), host.manager());
}

TEST_F(Facade, AMinimizedManagerComesBack) {
  showList(nullptr);
  ::ShowWindow(host.manager(), SW_SHOWMINIMIZED);
  pump();
  ASSERT_TRUE(::IsIconic(host.manager()));
  showList(nullptr);
  EXPECT_FALSE(::IsIconic(host.manager()));
}

TEST_F(Facade, TheCaptionIsTheCollectionsTitle) {
  showList(nullptr);
  EXPECT_EQ(captionOf(host.manager()), "Dipole Manager");
  face().m_managerTitle = _T("Spikes \u4e2d");
  EXPECT_EQ(captionOf(host.manager()), "Dipole Manager");
  showList(nullptr);
  EXPECT_EQ(captionOf(host.manager()), "Spikes \u4e2d");
}

TEST_F(Facade, NoDialogHasTheHostForItsParent) {
  showList(nullptr);
  face().dipoleEdit(&host.window);
  face().setDipoleCoordinate(&host.window);
  for (const HWND window : {host.manager(), host.editor(), host.coordinates()}) {
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(::GetParent(window), nullptr);
    EXPECT_EQ(::GetWindow(window, GW_OWNER), nullptr);
  }
  host.window.DestroyWindow();
  EXPECT_TRUE(::IsWindow(host.manager()));
  EXPECT_TRUE(::IsWindow(host.editor()));
  EXPECT_TRUE(::IsWindow(host.coordinates()));
}

TEST_F(Facade, EachOpeningRemembersTheHostsWindow) {
  HostWindow second;
  HostWindow third;
  showList(nullptr);
  EXPECT_EQ(face().m_pParentWnd, &host.window);
  EXPECT_EQ(face().dipoleEdit(&second), 1);
  EXPECT_EQ(face().m_pParentWnd, &second);
  EXPECT_EQ(face().setDipoleCoordinate(&third), 1);
  EXPECT_EQ(face().m_pParentWnd, &third);
  face().showDipoleList(nullptr, nullptr);
  EXPECT_EQ(face().m_pParentWnd, nullptr);
}

TEST_F(Facade, DialogsOtherThanTheManagerLeaveTheFocusToTheSystem) {
  face().dipoleEdit(&host.window);
  pump();
  EXPECT_EQ(::GetActiveWindow(), host.editor());
  face().setDipoleCoordinate(&host.window);
  pump();
  EXPECT_EQ(::GetActiveWindow(), host.coordinates());
}

TEST_F(Facade, PositionCallbackSetBeforeIsUsedWhenNoneIsGiven) {
  EXPECT_EQ(face().setCbfDipoleXYZ(&rememberPosition), 0);
  showList(nullptr);
  EXPECT_EQ(whoHearsOfAPick(1), "host");
}

TEST_F(Facade, PositionCallbackGivenReplacesAndStays) {
  EXPECT_EQ(face().setCbfDipoleXYZ(&rememberPosition), 0);
  showList(&anotherPosition);
  EXPECT_EQ(face().m_cbfDipoleXYZ, &anotherPosition);
  EXPECT_EQ(whoHearsOfAPick(1), "another");
  showList(nullptr);
  EXPECT_EQ(face().m_cbfDipoleXYZ, &anotherPosition);
  EXPECT_EQ(whoHearsOfAPick(2), "another");
  showList(&rememberPosition);
  EXPECT_EQ(whoHearsOfAPick(0), "host");
}

TEST_F(Facade, SetCbfDipoleXYZReturns0AndReachesAnOpenManagerAtOnce) {
  showList(&rememberPosition);
  EXPECT_EQ(face().setCbfDipoleXYZ(&anotherPosition), 0);
  EXPECT_EQ(face().m_cbfDipoleXYZ, &anotherPosition);
  EXPECT_EQ(whoHearsOfAPick(1), "another");
  EXPECT_EQ(face().setCbfDipoleXYZ(nullptr), 0);
  EXPECT_EQ(whoHearsOfAPick(2), "");
}

TEST_F(Facade, ACallbackOfTheManagerWinsOverTheCollectionsWhenNoneIsGiven) {
  showList(&rememberPosition);
  face().m_cbfDipoleXYZ = &anotherPosition;  // past the operation: the manager is not told
  showList(nullptr);
  EXPECT_EQ(whoHearsOfAPick(1), "host");
}

TEST_F(Facade, SetCbfUpdateViewersReturns1AndLeavesAManagerThatHasOne) {
  showList(nullptr);  // with the host's callback
  EXPECT_EQ(face().setCbfUpdateViewers(&anotherUpdate), 1);
  EXPECT_EQ(face().m_cbfUpdateViewers, &anotherUpdate);
  showList(nullptr);
  host.forget();
  host.choose(ID_DIPOLE_SHOW_ALL);
  EXPECT_EQ(host.updates(), 1);
  EXPECT_EQ(updatesOfAnother, 0);
}

TEST_F(Facade, SetCbfUpdateViewersReachesAManagerWithoutOneAtItsNextShowing) {
  face().setCbfUpdateViewers(nullptr);
  showList(nullptr);
  EXPECT_EQ(face().setCbfUpdateViewers(&anotherUpdate), 1);
  host.choose(ID_DIPOLE_SHOW_ALL);
  EXPECT_EQ(updatesOfAnother, 0);
  showList(nullptr);
  EXPECT_EQ(updatesOfAnother, 0);  // showing calls nobody
  host.choose(ID_DIPOLE_SHOW_ALL);
  EXPECT_EQ(updatesOfAnother, 1);
}

TEST_F(Facade, OpeningAndRefreshingCallNobody) {
  showList(&rememberPosition);
  face().dipoleEdit(&host.window);
  face().setDipoleCoordinate(&host.window);
  face().updateDipoleList();
  face().updateDipoleEditor();
  face().updateDipoleSettings();
  pump();
  EXPECT_TRUE(host.positions().empty());
  EXPECT_EQ(host.updates(), 0);
}

TEST_F(Facade, UpdateDipoleListRefillsAVisibleManagerOnly) {
  showList(nullptr);
  face().setDipoleName(0, _T("renamed"));
  EXPECT_EQ(host.cell(0, 10), "d1");
  EXPECT_EQ(face().updateDipoleList(), 1);
  EXPECT_EQ(host.cell(0, 10), "renamed");
  hide(host.manager());
  face().setDipoleName(0, _T("again"));
  EXPECT_EQ(face().updateDipoleList(), 1);
  EXPECT_EQ(host.cell(0, 10), "renamed");
  showList(nullptr);
  EXPECT_EQ(host.cell(0, 10), "again");
}

TEST_F(Facade, UpdateDipoleEditorRefreshesAVisibleEditorOnly) {
  face().dipoleEdit(&host.window);
  const HWND editor = host.editor();
  face().setDipoleName(0, _T("renamed"));
  EXPECT_EQ(face().updateDipoleEditor(), 1);
  EXPECT_EQ(textOf(editor, IDC_EDITOR_LABEL), "renamed");
  hide(editor);
  face().setDipoleName(0, _T("again"));
  EXPECT_EQ(face().updateDipoleEditor(), 1);
  EXPECT_EQ(textOf(editor, IDC_EDITOR_LABEL), "renamed");
}

TEST_F(Facade, ImportsShowInAVisibleManager) {
  host.face->cleanDipoles();
  showList(nullptr);
  CString path = fromUtf8(examplesFolder() + "auditory.dip");
  EXPECT_EQ(face().importDipoleX(path, false), 1);
  EXPECT_GT(face().getTotalDipoles(), 0U);
  EXPECT_EQ(host.rows(), static_cast<int>(face().getTotalDipoles()));
  EXPECT_EQ(messages.take().size(), 1U);
  char latency[32] = {};
  std::snprintf(latency, sizeof latency, "%.4f", host.dipole(host.rows() - 1).m_latency);
  EXPECT_EQ(host.cell(host.rows() - 1, 1), latency);
}

TEST_F(Facade, ImportsShowInAVisibleEditorWithoutTheManager) {
  face().dipoleEdit(&host.window);
  CString path = fromUtf8(examplesFolder() + "auditory.dip");
  face().importDipoleX(path, false);
  messages.take();
  const int current = face().getCurrentDipoleID();
  const std::string expected = "Current dipole (Total dipoles):" + std::to_string(current) + "(" +
                               std::to_string(face().getTotalDipoles()) + ")";
  EXPECT_EQ(captionOf(host.editor()), expected);
  EXPECT_EQ(textOf(host.editor(), IDC_EDITOR_LABEL), toUtf8(host.dipole(current).m_label));
}

TEST_F(Facade, ImportsLeaveAHiddenManager) {
  showList(nullptr);
  hide(host.manager());
  CString path = fromUtf8(examplesFolder() + "auditory.dip");
  face().importDipoleX(path, false);
  messages.take();
  EXPECT_GT(face().getTotalDipoles(), 3U);
  EXPECT_EQ(host.rows(), 3);
}

TEST_F(Facade, WindowsThatWereDestroyedAreMadeAgain) {
  showList(&rememberPosition);
  CDialog* const manager = face().getDlgDipoleList();
  face().dipoleEdit(&host.window);
  face().setDipoleCoordinate(&host.window);
  for (const HWND window : {host.manager(), host.editor(), host.coordinates()}) {
    ::DestroyWindow(window);
  }
  pump();
  EXPECT_EQ(face().updateDipoleList(), 1);
  EXPECT_EQ(face().updateDipoleEditor(), 1);
  EXPECT_EQ(face().updateDipoleSettings(), 1);
  EXPECT_EQ(face().showDipoleList(&host.window, nullptr), manager);
  face().dipoleEdit(&host.window);
  face().setDipoleCoordinate(&host.window);
  pump();
  EXPECT_EQ(host.column(10), (Texts{"d1", "d2", "d3"}));
  EXPECT_EQ(host.heading(10), "Label");
  EXPECT_EQ(textOf(host.editor(), IDC_EDITOR_LABEL), "d1");
  EXPECT_EQ(pixelOf(host.editor(), IDC_EDITOR_COLOR, 3, 3), 65535U);
  EXPECT_EQ(textOf(host.coordinates(), IDC_COORDINATE_LOCATION_X), "0");
  EXPECT_EQ(whoHearsOfAPick(2), "host");
}

}  // namespace
