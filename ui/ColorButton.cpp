#include "ui/ColorButton.h"

namespace {

// After these the system has drawn the button.
bool drawsTheButton(UINT message) {
  return message == WM_PAINT || message == WM_SETFOCUS || message == WM_KILLFOCUS || message == WM_ENABLE ||
         message == BM_SETSTATE || message == BM_SETSTYLE;
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
  const LRESULT result = CButton::WindowProc(message, wParam, lParam);
  if (m_hasColor && drawsTheButton(message)) {
    paint();
  }
  return result;
}

void ColorButton::paint() {
  CRect face;
  GetClientRect(&face);
  if (CDC* const context = GetDC()) {
    context->FillSolidRect(&face, m_color);
    ReleaseDC(context);
  }
}
