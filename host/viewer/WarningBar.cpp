#include "host/viewer/WarningBar.h"

namespace host {

namespace {

constexpr COLORREF warningColour = RGB(168, 24, 32);  // as on pictures
constexpr COLORREF letterColour = RGB(255, 255, 255);
constexpr LPCTSTR invitation = _T("Click for all findings");

}  // namespace

BEGIN_MESSAGE_MAP(WarningBar, CWnd)
ON_WM_PAINT()
ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

BOOL WarningBar::createIn(CWnd* frame, UINT id, const CWnd& like) {
  m_font = reinterpret_cast<HFONT>(like.SendMessage(WM_GETFONT));
  const LPCTSTR windowClass = AfxRegisterWndClass(
      CS_HREDRAW | CS_VREDRAW, ::LoadCursorW(nullptr, reinterpret_cast<LPCTSTR>(IDC_HAND)));
  const RECT nowhere = {0, 0, 1, 1};
  return Create(windowClass, _T(""), WS_CHILD | WS_CLIPSIBLINGS, nowhere, frame, id);
}

bool WarningBar::show(const CString& text) {
  const bool isShownOtherwise = text.IsEmpty() != m_text.IsEmpty();
  if (text != m_text) {
    m_text = text;
    SetWindowText(text);
    Invalidate(TRUE);
  }
  if (isShownOtherwise) {
    ShowWindow(text.IsEmpty() ? SW_HIDE : SW_SHOW);
  }
  return isShownOtherwise;
}

int WarningBar::height() const {
  if (m_text.IsEmpty()) {
    return 0;
  }
  const HDC screen = ::GetDC(m_hWnd);
  const HGDIOBJ before = ::SelectObject(screen, m_font);
  TEXTMETRICW metrics = {};
  ::GetTextMetricsW(screen, &metrics);
  ::SelectObject(screen, before);
  ::ReleaseDC(m_hWnd, screen);
  return static_cast<int>(metrics.tmHeight) * 2;
}

void WarningBar::OnPaint() {
  CPaintDC context(this);
  CRect area;
  GetClientRect(&area);
  context.FillSolidRect(area, warningColour);
  const HGDIOBJ before = ::SelectObject(context.m_hDC, m_font);
  ::SetBkMode(context.m_hDC, TRANSPARENT);
  ::SetTextColor(context.m_hDC, letterColour);
  const int margin = area.Height() / 3;
  area.left += margin;
  area.right -= margin;
  CRect right = area;
  ::DrawTextW(context.m_hDC, invitation, -1, &right, DT_CALCRECT | DT_SINGLELINE);
  const int width = right.Width();
  right = area;
  right.left = right.right - width;
  ::DrawTextW(context.m_hDC, invitation, -1, &right, DT_SINGLELINE | DT_VCENTER | DT_RIGHT);
  area.right = right.left - area.Height();
  ::DrawTextW(context.m_hDC, m_text, m_text.GetLength(), &area,
              DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
  ::SelectObject(context.m_hDC, before);
}

void WarningBar::OnLButtonUp(UINT /*flags*/, CPoint /*at*/) {
  m_onClick();
}

}  // namespace host
