// The headings of the list: whole, in the list's own font.
#include <algorithm>
#include <gtest/gtest.h>

#include "tests/ui/windows/Host.h"

namespace {

class Headings : public testing::Test {
 protected:
  Headings() { host.openManager(); }

  HWND headings() const { return reinterpret_cast<HWND>(::SendMessageW(host.list(), LVM_GETHEADER, 0, 0)); }

  RECT placeOf(int column) const {
    RECT place = {};
    ::SendMessageW(headings(), HDM_GETITEMRECT, static_cast<WPARAM>(column),
                   reinterpret_cast<LPARAM>(&place));
    return place;
  }

  static LOGFONTW fontOf(HWND window) {
    LOGFONTW font = {};
    ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font;
  }

  // Moves a column into sight and gives the rows in which its heading has dark pixels, from its upper border.
  std::vector<std::vector<bool>> ink(int column) const {
    RECT place = placeOf(column);
    ::SendMessageW(host.list(), LVM_SCROLL,
                   static_cast<WPARAM>(place.left - ::GetScrollPos(host.list(), SB_HORZ)), 0);
    place = placeOf(column);
    ::RedrawWindow(headings(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const HDC context = ::GetDC(headings());
    std::vector<std::vector<bool>> rows;
    for (LONG y = place.top + 2; y < place.bottom - 2; ++y) {
      std::vector<bool>& row = rows.emplace_back();
      for (LONG x = place.left + 3; x < place.right - 3; ++x) {
        row.push_back(GetGValue(::GetPixel(context, x, y)) < 90);
      }
    }
    ::ReleaseDC(headings(), context);
    return rows;
  }

  // Groups of rows with ink, apart from each other by rows without.
  int lines(int column) const {
    int count = 0;
    int empty = 2;
    for (const std::vector<bool>& row : ink(column)) {
      const bool hasInk = std::find(row.begin(), row.end(), true) != row.end();
      count += hasInk && empty >= 2 ? 1 : 0;
      empty = hasInk ? 0 : empty + 1;
    }
    return count;
  }

  Host host{3};
};

TEST_F(Headings, AreWrittenInTheFontOfTheList) {
  const LOGFONTW font = fontOf(headings());
  const LOGFONTW ofList = fontOf(host.list());
  EXPECT_EQ(std::wstring(font.lfFaceName), std::wstring(ofList.lfFaceName));
  EXPECT_EQ(font.lfHeight, ofList.lfHeight);
  EXPECT_EQ(font.lfWidth, 0) << "squeezed";
}

TEST_F(Headings, HaveRoomForEveryWord) {
  const HDC context = ::GetDC(headings());
  const HGDIOBJ before =
      ::SelectObject(context, reinterpret_cast<HFONT>(::SendMessageW(headings(), WM_GETFONT, 0, 0)));
  for (int column = 0; column < 11; ++column) {
    const RECT place = placeOf(column);
    const CString text(host.heading(column).c_str());
    RECT needed = {0, 0, place.right - place.left - 12, 0};
    ::DrawTextW(context, text, -1, &needed, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    EXPECT_LE(needed.right, place.right - place.left - 12) << column;  // the longest word
    EXPECT_LE(needed.bottom, place.bottom - place.top) << column;
  }
  ::SelectObject(context, before);
  ::ReleaseDC(headings(), context);
}

TEST_F(Headings, AreBrokenWhereOneLineIsTooShort) {
  EXPECT_EQ(lines(0), 1);  // Index
  EXPECT_EQ(lines(2), 2);  // Position X(mm)
}

TEST_F(Headings, OfTheThreeAxesDiffer) {
  EXPECT_NE(ink(2), ink(3));
  EXPECT_NE(ink(3), ink(4));
  EXPECT_NE(ink(5), ink(6));
  EXPECT_NE(ink(6), ink(7));
}

TEST_F(Headings, StandAboveTheFirstRow) {
  RECT row = {};
  row.left = LVIR_BOUNDS;
  ::SendMessageW(host.list(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
  RECT place = {};
  ::GetWindowRect(headings(), &place);
  ::MapWindowPoints(nullptr, host.list(), reinterpret_cast<POINT*>(&place), 2);
  EXPECT_EQ(place.top, 0);
  EXPECT_LE(place.bottom, row.top);
  EXPECT_LE(row.top - place.bottom, 4);
}

TEST_F(Headings, ShowThatTheyArePressed) {
  const auto before = [&] {
    ::RedrawWindow(headings(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const HDC context = ::GetDC(headings());
    std::vector<COLORREF> pixels;
    const RECT place = placeOf(1);
    for (LONG x = place.left; x < place.right; ++x) {
      pixels.push_back(::GetPixel(context, x, place.top));
      pixels.push_back(::GetPixel(context, x, place.bottom - 3));
    }
    ::ReleaseDC(headings(), context);
    return pixels;
  };
  const auto released = before();
  const RECT place = placeOf(1);
  const LPARAM point = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
  ::SendMessageW(headings(), WM_LBUTTONDOWN, MK_LBUTTON, point);
  const auto pressed = before();
  ::SendMessageW(headings(), WM_LBUTTONUP, 0, point);
  pump();
  EXPECT_NE(pressed, released);
}

}  // namespace
