#include "ui/HeadingFont.h"

#include <iterator>

#include "ui/WindowTools.h"

namespace {

constexpr int margins = 12;    // pixels left and right of a heading together, at 96 dots per inch
constexpr LONG narrowest = 4;  // pixels of an average character: below, nothing is legible

struct Heading {
  TCHAR text[64];
  int width;  // of its column, pixels
};

bool headingOf(const CListCtrl& list, int column, Heading& heading) {
  LVCOLUMN description = {};
  description.mask = LVCF_TEXT | LVCF_WIDTH;
  description.pszText = heading.text;
  description.cchTextMax = static_cast<int>(std::size(heading.text));
  const bool found = list.GetColumn(column, &description) != FALSE;
  heading.width = description.cx;
  return found;
}

// Whether every heading fits when it is written with a font.
bool allFit(const CListCtrl& list, HFONT font) {
  CClientDC screen(nullptr);
  const HGDIOBJ before = ::SelectObject(screen.m_hDC, font);
  bool fits = true;
  Heading heading;
  for (int column = 0; fits && headingOf(list, column, heading); ++column) {
    SIZE size = {};
    ::GetTextExtentPoint32(screen.m_hDC, heading.text, ::lstrlen(heading.text), &size);
    fits = size.cx + scaledToScreen(margins) <= heading.width;
  }
  ::SelectObject(screen.m_hDC, before);
  return fits;
}

LONG averageWidth(HFONT font) {
  CClientDC screen(nullptr);
  const HGDIOBJ before = ::SelectObject(screen.m_hDC, font);
  TEXTMETRIC metric = {};
  ::GetTextMetrics(screen.m_hDC, &metric);
  ::SelectObject(screen.m_hDC, before);
  return metric.tmAveCharWidth;
}

}  // namespace

HeadingFont::~HeadingFont() {
  take(nullptr);
}

void HeadingFont::take(HFONT font) {
  if (m_font != nullptr) {
    ::DeleteObject(m_font);
  }
  m_font = font;
}

void HeadingFont::fit(CListCtrl& list) {
  LOGFONT description = {};
  const auto own = reinterpret_cast<HFONT>(list.SendMessage(WM_GETFONT));
  if (::GetObject(own, sizeof description, &description) == 0 || description.lfHeight >= 0) {
    return;  // the system's font, whose size is the system's business
  }
  take(::CreateFontIndirect(&description));
  for (description.lfWidth = averageWidth(m_font);
       !allFit(list, m_font) && description.lfWidth > narrowest;) {
    --description.lfWidth;
    take(::CreateFontIndirect(&description));
  }
  const auto headings = reinterpret_cast<HWND>(list.SendMessage(LVM_GETHEADER));
  ::SendMessage(headings, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), TRUE);
}
