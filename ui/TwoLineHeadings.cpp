#include "ui/TwoLineHeadings.h"

#include <algorithm>
#include <iterator>
#include <uxtheme.h>
#include <vsstyle.h>

#include "ui/WindowTools.h"

namespace {

constexpr int margin = 6;  // pixels left and right of a heading, at 96 dots per inch
constexpr UINT inLines = DT_LEFT | DT_WORDBREAK | DT_WORD_ELLIPSIS | DT_NOPREFIX;

// A font in a device context, for a time.
class FontInUse {
 public:
  FontInUse(HDC context, HFONT font) : m_context(context), m_before(::SelectObject(context, font)) {}
  ~FontInUse() { ::SelectObject(m_context, m_before); }
  FontInUse(const FontInUse&) = delete;
  FontInUse& operator=(const FontInUse&) = delete;

 private:
  HDC m_context;
  HGDIOBJ m_before;
};

HFONT fontOf(HWND window) {
  return reinterpret_cast<HFONT>(::SendMessage(window, WM_GETFONT, 0, 0));
}

int lineHeight(CWnd& window) {
  CClientDC context(&window);
  const FontInUse inUse(context.m_hDC, fontOf(window.GetSafeHwnd()));
  TEXTMETRIC metric = {};
  ::GetTextMetrics(context.m_hDC, &metric);
  return static_cast<int>(metric.tmHeight);
}

// As the system draws it, with or without visual styles.
void drawGround(HWND window, const NMCUSTOMDRAW& heading) {
  const bool isPressed = (heading.uItemState & CDIS_SELECTED) != 0;
  const bool isHot = (heading.uItemState & CDIS_HOT) != 0;
  RECT place = heading.rc;
  if (const HTHEME theme = ::OpenThemeData(window, L"HEADER")) {
    const int state = isPressed ? HIS_PRESSED : isHot ? HIS_HOT : HIS_NORMAL;
    ::DrawThemeBackground(theme, heading.hdc, HP_HEADERITEM, state, &place, nullptr);
    ::CloseThemeData(theme);
  } else {
    ::DrawFrameControl(heading.hdc, &place, DFC_BUTTON,
                       isPressed ? DFCS_BUTTONPUSH | DFCS_PUSHED : DFCS_BUTTONPUSH);
  }
}

}  // namespace

BEGIN_MESSAGE_MAP(TwoLineHeadings, CWnd)
ON_MESSAGE(HDM_LAYOUT, &TwoLineHeadings::OnLayout)
ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &TwoLineHeadings::OnCustomDraw)
END_MESSAGE_MAP()

TwoLineHeadings::TwoLineHeadings() = default;

TwoLineHeadings::~TwoLineHeadings() = default;

void TwoLineHeadings::take(CListCtrl& list) {
  SubclassWindow(reinterpret_cast<HWND>(list.SendMessage(LVM_GETHEADER)));
  list.SendMessage(WM_SETFONT, static_cast<WPARAM>(list.SendMessage(WM_GETFONT)), TRUE);  // lays it out
}

// What the system needs for one line, and another line.
LRESULT TwoLineHeadings::OnLayout(WPARAM /*wParam*/, LPARAM layout) {
  const LRESULT result = Default();
  const auto& places = *reinterpret_cast<const HDLAYOUT*>(layout);
  const int more = lineHeight(*this);
  places.pwpos->cy += more;
  places.prc->top += more;
  return result;
}

void TwoLineHeadings::OnCustomDraw(NMHDR* header, LRESULT* result) {
  const auto& heading = *reinterpret_cast<const NMCUSTOMDRAW*>(header);
  *result = CDRF_DODEFAULT;
  if (heading.dwDrawStage == CDDS_PREPAINT) {
    *result = CDRF_NOTIFYITEMDRAW;
  } else if (heading.dwDrawStage == CDDS_ITEMPREPAINT) {
    draw(heading);
    *result = CDRF_SKIPDEFAULT;
  }
}

void TwoLineHeadings::draw(const NMCUSTOMDRAW& heading) const {
  drawGround(m_hWnd, heading);
  const FontInUse inUse(heading.hdc, fontOf(m_hWnd));
  TCHAR text[64] = {};  // drawing asks for no memory: nobody could tell of its end
  HDITEM item = {};
  item.mask = HDI_TEXT;
  item.pszText = text;
  item.cchTextMax = static_cast<int>(std::size(text));
  ::SendMessage(m_hWnd, HDM_GETITEM, static_cast<WPARAM>(heading.dwItemSpec),
                reinterpret_cast<LPARAM>(&item));
  RECT place = heading.rc;
  place.left += scaledToScreen(margin);
  place.right -= scaledToScreen(margin);
  RECT needed = place;
  ::DrawText(heading.hdc, text, -1, &needed, inLines | DT_CALCRECT);
  const LONG spare = (place.bottom - place.top) - (needed.bottom - needed.top);
  place.top += (std::max)(spare, LONG{0}) / 2;
  ::SetBkMode(heading.hdc, TRANSPARENT);
  ::SetTextColor(heading.hdc, ::GetSysColor(COLOR_BTNTEXT));
  ::DrawText(heading.hdc, text, -1, &place, inLines);
}
