#include "ui/ColorButton.h"

#include "ui/WindowTools.h"

namespace {

// After these the system has drawn the button.
bool drawsTheButton(UINT message) {
  return message == WM_PAINT || message == WM_SETFOCUS || message == WM_KILLFOCUS || message == WM_ENABLE ||
         message == BM_SETSTATE || message == BM_SETSTYLE || message == WM_UPDATEUISTATE;
}

// A frame around the inside of a rectangle, which is smaller by it afterwards.
void drawFrame(CDC& context, CRect& inside, int width, COLORREF color) {
  const CRect outside = inside;
  inside = CRect(outside.left + width, outside.top + width, outside.right - width, outside.bottom - width);
  context.FillSolidRect(CRect(outside.left, outside.top, outside.right, inside.top), color);
  context.FillSolidRect(CRect(outside.left, inside.bottom, outside.right, outside.bottom), color);
  context.FillSolidRect(CRect(outside.left, inside.top, inside.left, inside.bottom), color);
  context.FillSolidRect(CRect(inside.right, inside.top, outside.right, inside.bottom), color);
}

}  // namespace

ColorButton::ColorButton() = default;

ColorButton::~ColorButton() = default;

void ColorButton::show(COLORREF color) {
  UpdateWindow();  // what is still to be drawn must not cover the colour
  m_color = color;
  m_hasColor = true;
  paint();
}

LRESULT ColorButton::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  const LRESULT result = Guarded::WindowProc(message, wParam, lParam);
  if (m_hasColor && drawsTheButton(message)) {
    tellWithoutMemory([this] { paint(); });
  }
  return result;
}

void ColorButton::paint() {
  CRect face;
  GetClientRect(&face);
  if (CDC* const context = GetDC()) {
    context->FillSolidRect(&face, m_color);
    if (showsFocus()) {
      const int width = scaledToScreen(1);
      drawFrame(*context, face, 2 * width, m_color);
      drawFrame(*context, face, width, RGB(0, 0, 0));  // one of the two stands out on any colour
      drawFrame(*context, face, width, RGB(255, 255, 255));
    }
    ReleaseDC(context);
  }
}

// Buttons hide it from users who use the mouse alone.
bool ColorButton::showsFocus() const {
  return ::GetFocus() == m_hWnd && (::SendMessage(m_hWnd, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) == 0;
}
