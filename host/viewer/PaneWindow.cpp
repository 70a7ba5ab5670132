#include "host/viewer/PaneWindow.h"

#include <cstddef>
#include <cstdlib>
#include <exception>

#include "host/text/Utf8.h"
#include "host/viewer/ScreenScale.h"

namespace host {

namespace {

constexpr COLORREF focusEdge = RGB(90, 150, 230);
constexpr int clickReach = 3;  // that a hand may tremble, pixels at 96 dots per inch

bool isDown(int key) {
  return ::GetKeyState(key) < 0;
}

}  // namespace

BEGIN_MESSAGE_MAP(PaneWindow, CWnd)
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_SIZE()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_RBUTTONDOWN()
ON_WM_RBUTTONUP()
ON_WM_MBUTTONDOWN()
ON_WM_MBUTTONUP()
ON_WM_MOUSEMOVE()
ON_MESSAGE(WM_MOUSELEAVE, &PaneWindow::OnMouseLeave)
ON_WM_MOUSEWHEEL()
ON_WM_CAPTURECHANGED()
ON_WM_KEYDOWN()
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_MESSAGE(WM_GETDLGCODE, &PaneWindow::OnGetDlgCode)
END_MESSAGE_MAP()

BOOL PaneWindow::createIn(CWnd* frame, UINT id) {
  const LPCTSTR windowClass =
      AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, reinterpret_cast<LPCTSTR>(IDC_CROSS)));
  const RECT nowhere = {0, 0, 1, 1};
  return Create(windowClass, _T(""), WS_CHILD | WS_VISIBLE | WS_TABSTOP, nowhere, frame, id);
}

// The system's pictures have blue, green, red, and rows of whole double words.
void PaneWindow::copyRows(const Image& image) {
  const std::size_t stride = (static_cast<std::size_t>(image.width()) * 3 + 3) / 4 * 4;
  m_rows.resize(stride * static_cast<std::size_t>(image.height()));
  const Rgb* pixel = image.pixels().data();
  for (int row = 0; row < image.height(); ++row) {
    std::uint8_t* byte = m_rows.data() + stride * static_cast<std::size_t>(row);
    for (int column = 0; column < image.width(); ++column, ++pixel) {
      *byte++ = pixel->blue;
      *byte++ = pixel->green;
      *byte++ = pixel->red;
    }
  }
}

void PaneWindow::OnPaint() {
  CPaintDC context(this);
  try {
    paintPicture(context);
  } catch (const std::exception& problem) {
    // No message box: closing it would paint anew.
    CRect area;
    GetClientRect(&area);
    context.FillSolidRect(area, RGB(0, 0, 0));
    const CString text = _T("This picture cannot be drawn: ") + fromUtf8(problem.what());
    ::TextOutW(context.m_hDC, 8, 8, text, text.GetLength());
  }
}

void PaneWindow::paintPicture(CDC& context) {
  const Image& image = picture();
  copyRows(image);
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = image.width();
  info.bmiHeader.biHeight = -image.height();  // the first row is the upper one
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 24;
  info.bmiHeader.biCompression = BI_RGB;
  ::SetDIBitsToDevice(context.m_hDC, 0, 0, static_cast<DWORD>(image.width()),
                      static_cast<DWORD>(image.height()), 0, 0, 0, static_cast<UINT>(image.height()),
                      m_rows.data(), &info, DIB_RGB_COLORS);
  if (GetFocus() == this) {
    const int right = image.width() - 1;
    const int bottom = image.height() - 1;
    context.FillSolidRect(0, 0, right, 1, focusEdge);
    context.FillSolidRect(0, bottom, right, 1, focusEdge);
    context.FillSolidRect(0, 0, 1, bottom, focusEdge);
    context.FillSolidRect(right, 0, 1, bottom + 1, focusEdge);
  }
}

BOOL PaneWindow::OnEraseBkgnd(CDC* /*context*/) {
  return TRUE;  // the picture covers everything
}

void PaneWindow::OnSize(UINT /*type*/, int width, int height) {
  if (width > 0 && height > 0) {
    resize(width, height);
  }
  Invalidate(FALSE);
}

void PaneWindow::begin(Drag drag, CPoint at) {
  SetFocus();
  SetCapture();
  m_drag = drag;
  m_from = at;
  m_last = at;
  m_isMoved = false;
}

void PaneWindow::end() {
  m_drag = Drag::none;
  if (GetCapture() == this) {
    ::ReleaseCapture();
  }
}

void PaneWindow::OnLButtonDown(UINT flags, CPoint at) {
  const bool isPan = (flags & MK_SHIFT) != 0;
  begin(isPan ? Drag::pan : Drag::left, at);
  if (!isPan) {
    press(at);
  }
}

void PaneWindow::OnLButtonUp(UINT /*flags*/, CPoint at) {
  const bool isClick = m_drag == Drag::left && !m_isMoved;
  end();
  if (isClick) {
    click(at);
  }
}

void PaneWindow::OnLButtonDblClk(UINT /*flags*/, CPoint /*at*/) {
  m_owner.toggleSinglePane(m_number);
}

void PaneWindow::OnRButtonDown(UINT /*flags*/, CPoint at) {
  begin(Drag::right, at);
}

void PaneWindow::OnRButtonUp(UINT /*flags*/, CPoint /*at*/) {
  end();
}

void PaneWindow::OnMButtonDown(UINT /*flags*/, CPoint at) {
  begin(Drag::pan, at);
}

void PaneWindow::OnMButtonUp(UINT /*flags*/, CPoint /*at*/) {
  end();
}

void PaneWindow::OnMouseMove(UINT /*flags*/, CPoint at) {
  TRACKMOUSEEVENT leaving = {sizeof leaving, TME_LEAVE, m_hWnd, 0};
  ::TrackMouseEvent(&leaving);
  point(at);
  const CPoint by(at.x - m_last.x, at.y - m_last.y);
  if (m_drag == Drag::none || (by.x == 0 && by.y == 0)) {
    return;
  }
  const int reach = onScreen(clickReach);
  m_isMoved = m_isMoved || std::abs(at.x - m_from.x) > reach || std::abs(at.y - m_from.y) > reach;
  if (!m_isMoved) {
    return;
  }
  m_last = at;
  if (m_drag == Drag::left) {
    dragLeft(at, by);
  } else if (m_drag == Drag::right) {
    dragRight(by);
  } else {
    pan(by.x, by.y);
    Invalidate(FALSE);
  }
}

LRESULT PaneWindow::OnMouseLeave(WPARAM /*wParam*/, LPARAM /*lParam*/) {
  m_owner.hidePointer();
  return 0;
}

// It turns what the pointer is over, so a wheel turned elsewhere goes on to the main window.
BOOL PaneWindow::OnMouseWheel(UINT flags, short delta, CPoint at) {
  CRect place;
  GetWindowRect(&place);
  if (place.PtInRect(at) == FALSE) {
    return CWnd::OnMouseWheel(flags, delta, at);
  }
  m_wheel += delta;
  const int notches = m_wheel / WHEEL_DELTA;
  m_wheel -= notches * WHEEL_DELTA;
  if (notches == 0) {
    return TRUE;
  }
  ScreenToClient(&at);
  if ((flags & MK_CONTROL) != 0) {
    constexpr double perNotch = 1.2;
    for (int notch = 0; notch != std::abs(notches); ++notch) {
      zoom(notches > 0 ? perNotch : 1.0 / perNotch, at);
    }
    Invalidate(FALSE);
  } else {
    turnWheel(notches);
  }
  return TRUE;
}

void PaneWindow::OnCaptureChanged(CWnd* next) {
  if (next != this) {
    m_drag = Drag::none;
  }
}

void PaneWindow::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  CRect area;
  GetClientRect(&area);
  const CPoint middle(area.Width() / 2, area.Height() / 2);
  constexpr double perKey = 1.2;
  if (key == VK_ADD || key == VK_OEM_PLUS) {
    zoom(perKey, middle);
  } else if (key == VK_SUBTRACT || key == VK_OEM_MINUS) {
    zoom(1.0 / perKey, middle);
  } else if (key == VK_HOME) {
    fit();
  } else if (key == VK_SPACE) {
    m_owner.toggleSinglePane(m_number);
  } else if (!handleKey(key, isDown(VK_SHIFT))) {
    CWnd::OnKeyDown(key, repeat, flags);
    return;
  }
  Invalidate(FALSE);
}

void PaneWindow::OnSetFocus(CWnd* /*before*/) {
  Invalidate(FALSE);
}

void PaneWindow::OnKillFocus(CWnd* /*next*/) {
  Invalidate(FALSE);
}

LRESULT PaneWindow::OnGetDlgCode(WPARAM /*wParam*/, LPARAM /*lParam*/) {
  return DLGC_WANTARROWS;
}

}  // namespace host
