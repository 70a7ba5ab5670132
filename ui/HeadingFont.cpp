#include "ui/HeadingFont.h"

namespace {

constexpr int margins = 16;        // pixels left and right of a heading together, at 96 dots per inch
constexpr double smallest = 0.75;  // of the list's font: below, nothing is legible

struct Heading {
  CString text;
  int width;  // of its column, pixels
};

bool headingOf(const CListCtrl& list, int column, Heading& heading) {
  TCHAR text[64] = {};
  LVCOLUMN description = {};
  description.mask = LVCF_TEXT | LVCF_WIDTH;
  description.pszText = text;
  description.cchTextMax = 64;
  if (!list.GetColumn(column, &description)) {
    return false;
  }
  heading = {text, description.cx};
  return true;
}

class ScreenFont {
 public:
  ScreenFont(HDC screen, HFONT font) : m_screen(screen), m_before(::SelectObject(screen, font)) {}
  ~ScreenFont() { ::SelectObject(m_screen, m_before); }
  ScreenFont(const ScreenFont&) = delete;
  ScreenFont& operator=(const ScreenFont&) = delete;

 private:
  HDC m_screen;
  HGDIOBJ m_before;
};

bool allFit(const CListCtrl& list, HDC screen, HFONT font) {
  const ScreenFont chosen(screen, font);
  const int around = ::MulDiv(margins, ::GetDeviceCaps(screen, LOGPIXELSX), USER_DEFAULT_SCREEN_DPI);
  Heading heading;
  for (int column = 0; headingOf(list, column, heading); ++column) {
    SIZE size = {};
    ::GetTextExtentPoint32(screen, heading.text, heading.text.GetLength(), &size);
    if (size.cx + around > heading.width) {
      return false;
    }
  }
  return true;
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
  const LONG least = static_cast<LONG>(description.lfHeight * smallest);
  const HDC screen = ::GetDC(nullptr);
  HFONT font = ::CreateFontIndirect(&description);
  while (!allFit(list, screen, font) && description.lfHeight < least) {
    ++description.lfHeight;  // heights of characters are negative
    ::DeleteObject(font);
    font = ::CreateFontIndirect(&description);
  }
  ::ReleaseDC(nullptr, screen);
  const auto headings = reinterpret_cast<HWND>(list.SendMessage(LVM_GETHEADER));
  ::SendMessage(headings, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  take(font);
}
