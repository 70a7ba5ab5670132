// What something looks like when it is drawn on a grey ground: its pixels, row by row from the top.
#pragma once

#include <functional>
#include <vector>
#include <windows.h>

// `draw` gets a context of `size` x `size` pixels.
inline std::vector<COLORREF> drawnPixels(int size, const std::function<void(HDC context)>& draw) {
  const HDC screen = ::GetDC(nullptr);
  const HDC context = ::CreateCompatibleDC(screen);
  const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, size, size);
  const HGDIOBJ before = ::SelectObject(context, bitmap);
  const RECT all = {0, 0, size, size};
  ::FillRect(context, &all, static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH)));
  draw(context);
  std::vector<COLORREF> colors;
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      colors.push_back(::GetPixel(context, x, y));
    }
  }
  ::SelectObject(context, before);
  ::DeleteObject(bitmap);
  ::DeleteDC(context);
  ::ReleaseDC(nullptr, screen);
  return colors;
}
