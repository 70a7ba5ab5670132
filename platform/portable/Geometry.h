// CPoint and CRect: POINT and RECT with constructors and the few operations in use. Pixels, y down.
#pragma once

#include "platform/portable/Types.h"

class CPoint : public POINT {
 public:
  CPoint() : POINT{0, 0} {}
  CPoint(int pointX, int pointY) : POINT{pointX, pointY} {}
  CPoint(POINT point) : POINT(point) {}  // implicit, as in MFC

  friend bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
};

class CRect : public RECT {
 public:
  CRect() : RECT{0, 0, 0, 0} {}
  CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
  CRect(const RECT& rect) : RECT(rect) {}  // implicit, as in MFC

  int Width() const { return static_cast<int>(right - left); }
  int Height() const { return static_cast<int>(bottom - top); }
  BOOL IsRectEmpty() const { return right <= left || bottom <= top ? TRUE : FALSE; }
  BOOL PtInRect(POINT point) const {
    return point.x >= left && point.x < right && point.y >= top && point.y < bottom ? TRUE : FALSE;
  }
  void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }

  operator LPRECT() { return this; }         // implicit, as in MFC
  operator LPCRECT() const { return this; }  // implicit, as in MFC

  friend bool operator==(const CRect& a, const CRect& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
  }
};
