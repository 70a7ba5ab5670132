// CPoint, CSize, CRect.
#pragma once

#include "documented/Win32.h"

class CPoint;
class CRect;
class CSize;

class CSize : public tagSIZE {
 public:
  CSize() noexcept;
  CSize(int, int) noexcept;
  CSize(SIZE) noexcept;
  CSize(POINT) noexcept;
  CSize(DWORD) noexcept;
  BOOL operator==(SIZE) const noexcept;
  BOOL operator!=(SIZE) const noexcept;
  void operator+=(SIZE) noexcept;
  void operator-=(SIZE) noexcept;
  CSize operator+(SIZE) const noexcept;
  CPoint operator+(POINT) const noexcept;
  CRect operator+(const RECT*) const noexcept;
  CSize operator-(SIZE) const noexcept;
  CPoint operator-(POINT) const noexcept;
  CRect operator-(const RECT*) const noexcept;
  CSize operator-() const noexcept;
};

class CPoint : public tagPOINT {
 public:
  CPoint() noexcept;
  CPoint(int, int) noexcept;
  CPoint(POINT) noexcept;
  CPoint(SIZE) noexcept;
  CPoint(LPARAM) noexcept;
  void Offset(int, int) noexcept;
  void Offset(POINT) noexcept;
  void Offset(SIZE) noexcept;
  BOOL operator==(POINT) const noexcept;
  BOOL operator!=(POINT) const noexcept;
  void operator+=(SIZE) noexcept;
  void operator+=(POINT) noexcept;
  void operator-=(SIZE) noexcept;
  void operator-=(POINT) noexcept;
  CPoint operator+(SIZE) const noexcept;
  CPoint operator+(POINT) const noexcept;
  CRect operator+(const RECT*) const noexcept;
  CSize operator-(POINT) const noexcept;
  CPoint operator-(SIZE) const noexcept;
  CRect operator-(const RECT*) const noexcept;
  CPoint operator-() const noexcept;
};

class CRect : public tagRECT {
 public:
  CPoint& BottomRight() noexcept;
  const CPoint& BottomRight() const noexcept;
  CPoint CenterPoint() const noexcept;
  void CopyRect(LPCRECT) noexcept;
  CRect() noexcept;
  CRect(int, int, int, int) noexcept;
  CRect(const RECT&) noexcept;
  CRect(LPCRECT) noexcept;
  CRect(POINT, SIZE) noexcept;
  CRect(POINT, POINT) noexcept;
  void DeflateRect(int, int) noexcept;
  void DeflateRect(SIZE) noexcept;
  void DeflateRect(LPCRECT) noexcept;
  void DeflateRect(int, int, int, int) noexcept;
  BOOL EqualRect(LPCRECT) const noexcept;
  int Height() const noexcept;
  void InflateRect(int, int) noexcept;
  void InflateRect(SIZE) noexcept;
  void InflateRect(LPCRECT) noexcept;
  void InflateRect(int, int, int, int) noexcept;
  BOOL IntersectRect(LPCRECT, LPCRECT) noexcept;
  BOOL IsRectEmpty() const noexcept;
  BOOL IsRectNull() const noexcept;
  void MoveToX(int) noexcept;
  void MoveToXY(int, int) noexcept;
  void MoveToXY(POINT) noexcept;
  void MoveToY(int) noexcept;
  void NormalizeRect() noexcept;
  void OffsetRect(int, int) noexcept;
  void OffsetRect(POINT) noexcept;
  void OffsetRect(SIZE) noexcept;
  operator LPCRECT() const noexcept;
  operator LPRECT() noexcept;
  void operator=(const RECT&) noexcept;
  BOOL operator==(const RECT&) const noexcept;
  BOOL operator!=(const RECT&) const noexcept;
  void operator+=(POINT) noexcept;
  void operator+=(SIZE) noexcept;
  void operator+=(LPCRECT) noexcept;
  void operator-=(POINT) noexcept;
  void operator-=(SIZE) noexcept;
  void operator-=(LPCRECT) noexcept;
  void operator&=(const RECT&) noexcept;
  void operator|=(const RECT&) noexcept;
  CRect operator+(POINT) const noexcept;
  CRect operator+(LPCRECT) const noexcept;
  CRect operator+(SIZE) const noexcept;
  CRect operator-(POINT) const noexcept;
  CRect operator-(SIZE) const noexcept;
  CRect operator-(LPCRECT) const noexcept;
  CRect operator&(const RECT&) const noexcept;
  CRect operator|(const RECT&) const noexcept;
  BOOL PtInRect(POINT) const noexcept;
  void SetRect(int, int, int, int) noexcept;
  void SetRectEmpty() noexcept;
  CSize Size() const noexcept;
  BOOL SubtractRect(LPCRECT, LPCRECT) noexcept;
  CPoint& TopLeft() noexcept;
  const CPoint& TopLeft() const noexcept;
  BOOL UnionRect(LPCRECT, LPCRECT) noexcept;
  int Width() const noexcept;
};
