// The list as it looks: columns, pictures, styles, cells, what stays at a refill.
#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "tests/ui/windows/DrawnPixels.h"
#include "tests/ui/windows/Host.h"
#include "tests/ui/windows/Spy.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;
using Texts = std::vector<std::string>;

constexpr LPARAM rowStyle = LVS_EX_TRACKSELECT | LVS_EX_FULLROWSELECT | LVS_EX_TWOCLICKACTIVATE;
constexpr LPARAM oneClickStyle = LVS_EX_TRACKSELECT | LVS_EX_ONECLICKACTIVATE;

LRESULT ask(const Host& host, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  return ::SendMessageW(host.list(), message, wParam, lParam);
}

// A number as C writes it, by another way than the module's.
std::string fourDecimals(double value) {
  char digits[400];
  return {digits, std::to_chars(digits, digits + 400, value, std::chars_format::fixed, 4).ptr};
}

std::vector<COLORREF> pixels(HIMAGELIST images, int image, int size) {
  return drawnPixels(size, [&](HDC context) { ::ImageList_Draw(images, image, context, 0, 0, ILD_NORMAL); });
}

TEST(List, ColumnsStandInTheirOrder) {
  Host host;
  host.openManager();
  const Texts headings = {"Index",          "Latency(ms)",   "Position X(mm)", "Position Y(mm)",
                          "Position Z(mm)", "Orientation X", "Orientation Y",  "Orientation Z",
                          "Fit Error",      "Moment",        "Label"};
  const HWND header = reinterpret_cast<HWND>(ask(host, LVM_GETHEADER));
  ASSERT_EQ(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0), 11);
  int order[11] = {};
  ask(host, LVM_GETCOLUMNORDERARRAY, 11, reinterpret_cast<LPARAM>(order));
  for (int column = 0; column < 11; ++column) {
    EXPECT_EQ(host.heading(column), headings[static_cast<std::size_t>(column)]);
    EXPECT_EQ(order[column], column);
  }
}

TEST(List, ColumnsAreEightyWideAndLeftAligned) {
  Host host;
  host.openManager();
  const HDC screen = ::GetDC(nullptr);
  const int width = 80 * ::GetDeviceCaps(screen, LOGPIXELSX) / 96;
  ::ReleaseDC(nullptr, screen);
  for (WPARAM column = 0; column < 11; ++column) {
    LVCOLUMNW description = {};
    description.mask = LVCF_FMT | LVCF_WIDTH;
    ASSERT_NE(ask(host, LVM_GETCOLUMNW, column, reinterpret_cast<LPARAM>(&description)), 0);
    EXPECT_EQ(description.cx, width);
    EXPECT_EQ(description.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_LEFT);
  }
}

TEST(List, HasAReportsStyle) {
  Host host;
  host.openManager();
  const LONG_PTR style = ::GetWindowLongPtrW(host.list(), GWL_STYLE);
  EXPECT_EQ(style & LVS_TYPEMASK, LVS_REPORT);
  EXPECT_EQ(style & LVS_ALIGNLEFT, LVS_ALIGNLEFT);
}

TEST(List, PicturesComeInTwoSizes) {
  Host host;
  host.openManager();
  for (const auto& [which, size] : {std::pair{LVSIL_NORMAL, 32}, std::pair{LVSIL_SMALL, 16}}) {
    const auto images = reinterpret_cast<HIMAGELIST>(ask(host, LVM_GETIMAGELIST, static_cast<WPARAM>(which)));
    int width = 0;
    int height = 0;
    ASSERT_TRUE(::ImageList_GetIconSize(images, &width, &height));
    EXPECT_EQ(width, size);
    EXPECT_EQ(height, size);
    ASSERT_EQ(::ImageList_GetImageCount(images), 2);
    EXPECT_NE(pixels(images, 0, size), pixels(images, 1, size));
  }
}

TEST(List, PictureTellsWhetherTheDipoleIsShown) {
  Host host(4);
  host.dipole(1).m_show = 0;
  host.dipole(2).m_show = 7;
  host.dipole(3).m_show = -1;
  host.openManager();
  EXPECT_EQ((Rows{host.image(0), host.image(1), host.image(2), host.image(3)}), (Rows{0, 1, 0, 0}));
}

TEST(List, ExtendedStyleFollowsInitialisationAndRefill) {
  Host host(2);
  const SentMessages sent(nullptr);
  host.openManager();
  EXPECT_EQ(sent.parameters(LVM_SETEXTENDEDLISTVIEWSTYLE),
            (std::vector<LPARAM>{rowStyle, oneClickStyle, rowStyle}));
  EXPECT_EQ(ask(host, LVM_GETEXTENDEDLISTVIEWSTYLE), rowStyle);
}

TEST(List, ExtendedStyleIsSetForAnEmptySetToo) {
  Host host;
  host.openManager();
  EXPECT_EQ(host.rows(), 0);
  EXPECT_EQ(ask(host, LVM_GETEXTENDEDLISTVIEWSTYLE), rowStyle);
}

TEST(List, RefillEndsBeforeAnEmptySlot) {
  Host host(5);
  host.openManager();
  host.face->deleteDipole(2, 0);
  const SentMessages sent(host.list());
  EXPECT_EQ(host.face->updateDipoleList(), 1);
  EXPECT_EQ(host.column(0), (Texts{"1", "2"}));
  EXPECT_EQ(sent.count(LVM_SETEXTENDEDLISTVIEWSTYLE), 0);  // it failed before
}

TEST(List, RefillGivesEveryDipoleItsRow) {
  Host host(4);
  host.openManager();
  host.face->deleteDipole(1, 1);
  host.dipole(0).m_listItemId = 17;
  host.face->updateDipoleList();
  for (int slot = 0; slot < 3; ++slot) {
    EXPECT_EQ(host.dipole(slot).m_listItemId, slot);
  }
}

TEST(List, RefillClearsTheSelectionAndKeepsFocusAndPlace) {
  Host host(60);
  host.openManager();
  host.click(41);
  ask(host, LVM_ENSUREVISIBLE, 59, FALSE);
  ask(host, LVM_ENSUREVISIBLE, 40, FALSE);
  const LRESULT top = ask(host, LVM_GETTOPINDEX);
  ASSERT_GT(top, 30);
  host.face->updateDipoleList();
  EXPECT_EQ(host.selectedRows(), Rows{});
  EXPECT_EQ(host.focusedRow(), 41);
  EXPECT_EQ(ask(host, LVM_GETTOPINDEX), top);
  EXPECT_EQ(host.selected(), Rows{41});  // the flag is the user's choice, which has not changed
}

TEST(List, RangeAfterARefillStartsAtTheFocus) {
  Host host(10);
  host.openManager();
  host.click(4);
  host.choose(ID_DIPOLE_SHOW);
  EXPECT_EQ(ask(host, LVM_GETSELECTIONMARK), 4);
  host.key(VK_DOWN, false, true);
  EXPECT_EQ(host.selectedRows(), (Rows{4, 5}));
}

TEST(List, HiddenManagerIsNotRefilled) {
  Host host(3);
  CDialog& manager = host.openManager();
  manager.ShowWindow(SW_HIDE);
  host.addDipoles(2);
  EXPECT_EQ(host.face->updateDipoleList(), 1);
  EXPECT_EQ(host.rows(), 3);
  host.openManager();
  EXPECT_EQ(host.rows(), 5);
}

TEST(List, OddNumbersAreWrittenAsTheyAre) {
  Host host(1);
  CDipoleszq& dipole = host.dipole(0);
  dipole.m_number = -7;
  dipole.m_latency = std::numeric_limits<double>::quiet_NaN();
  dipole.m_location[0] = std::numeric_limits<double>::infinity();
  dipole.m_location[1] = -std::numeric_limits<double>::infinity();
  dipole.m_location[2] = -0.0;
  dipole.m_orientation[0] = 0.00005;
  dipole.m_orientation[1] = 0.00004;
  dipole.m_orientation[2] = 1e200;
  dipole.m_fitError = -1e15;
  dipole.m_moment = 5e-324;
  host.openManager();
  const Texts expected = {"-7",
                          "nan",
                          "inf",
                          "-inf",
                          "-0.0000",
                          fourDecimals(0.00005),
                          "0.0000",
                          fourDecimals(1e200),
                          "-1000000000000000.0000",
                          "0.0000"};
  for (int column = 0; column < 10; ++column) {
    EXPECT_EQ(host.cell(0, column), expected[static_cast<std::size_t>(column)]) << column;
  }
}

TEST(List, CellLongerThanTheControlsRoomIsCut) {
  Host host(1);
  host.dipole(0).m_moment = 1e308;
  host.openManager();
  EXPECT_EQ(host.cell(0, 9), fourDecimals(1e308).substr(0, 299));  // Host::cell has room for so many
}

TEST(List, LabelsMayHoldAnything) {
  Host host(4);
  const CString longLabel(_T('x'), 70000);
  host.dipole(0).m_label.Empty();
  host.dipole(1).m_label = _T("a\tb\nc");
  host.dipole(2).m_label = longLabel;
  host.dipole(3).m_label = _T("\u4E2D\u6587 \u00E9 %s");
  host.openManager();
  ::UpdateWindow(host.list());
  EXPECT_EQ(host.cell(0, 10), "");
  EXPECT_EQ(host.cell(1, 10), "a\tb\nc");
  EXPECT_EQ(host.cell(2, 10), std::string(299, 'x'));
  EXPECT_EQ(host.cell(3, 10), "中文 é %s");
  EXPECT_EQ(host.dipole(2).m_label.GetLength(), 70000);
}

TEST(List, TypedNumberFindsItsRow) {
  Host host(150);
  host.openManager();
  host.click(0);
  host.typeInList('1');
  host.typeInList('4');
  EXPECT_EQ(host.focusedRow(), 13);
  host.typeInList('2');
  EXPECT_EQ(host.focusedRow(), 141);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 141);
}

TEST(List, TypedNumberIsLookedForFromTheFocusOn) {
  Host host(50);
  host.openManager();
  host.click(32);
  host.typeInList('3');
  EXPECT_EQ(host.focusedRow(), 33);
}

TEST(List, WholeNumberIsFoundForPrograms) {
  Host host(30);
  host.openManager();
  LVFINDINFOW what = {};
  what.flags = LVFI_STRING;
  what.psz = L"2";
  EXPECT_EQ(ask(host, LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&what)), 1);
  what.psz = L"20";
  EXPECT_EQ(ask(host, LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&what)), 19);
  what.psz = L"31";
  EXPECT_EQ(ask(host, LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&what)), -1);
}

TEST(List, HoldsAFullTable) {
  Host host(30000);
  host.openManager();
  EXPECT_EQ(host.rows(), 30000);
  EXPECT_EQ(host.cell(29999, 0), "30000");
  EXPECT_EQ(host.cell(29999, 10), "d30000");
  EXPECT_EQ(host.dipole(29999).m_listItemId, 29999);
}

TEST(List, SaysWhenItCannotBeEmptied) {
  Host host(3);
  host.openManager();
  const KeptMessages kept(host.list(),
                          [](UINT message, WPARAM, LPARAM) { return message == LVM_DELETEALLITEMS; });
  const SentMessages sent(host.list());
  host.face->deleteDipole(0, 1);
  Robot robot;
  robot.when(messageCaption, answer("Clean all items error"));
  host.face->updateDipoleList();
  EXPECT_EQ(host.column(0), (Texts{"1", "2", "3"}));  // as before
  EXPECT_EQ(sent.count(LVM_SETEXTENDEDLISTVIEWSTYLE), 0);
}

TEST(List, CollectionMayGoWhileTheListSaysThatItCannotBeEmptied) {
  Host host(3);
  host.openManager();
  const HWND manager = host.manager();
  const KeptMessages kept(host.list(),
                          [](UINT message, WPARAM, LPARAM) { return message == LVM_DELETEALLITEMS; });
  Robot robot;
  robot.when(messageCaption, [&](HWND box) {
    host.face.reset();
    press(box, IDOK);
  });
  host.choose(ID_DIPOLE_SHOW_ALL);
  EXPECT_FALSE(::IsWindow(manager));
  EXPECT_EQ(host.updates(), 0);
}

}  // namespace
