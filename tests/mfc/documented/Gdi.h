// Pens, brushes, fonts, bitmaps.
#pragma once

#include "documented/Geometry.h"
#include "documented/Object.h"

class CDC;

class CGdiObject : public CObject {
 public:
  BOOL Attach(HGDIOBJ);
  CGdiObject();
  BOOL CreateStockObject(int);
  BOOL DeleteObject();
  static void PASCAL DeleteTempMap();
  HGDIOBJ Detach();
  static CGdiObject* PASCAL FromHandle(HGDIOBJ);
  int GetObject(int, LPVOID) const;
  UINT GetObjectType() const;
  HGDIOBJ GetSafeHandle() const;
  HGDIOBJ m_hObject;
  BOOL operator!=(const CGdiObject&) const;
  BOOL operator==(const CGdiObject&) const;
  operator HGDIOBJ() const;
  BOOL UnrealizeObject();
};

class CBitmap : public CGdiObject {
 public:
  CBitmap();
  BOOL CreateBitmap(int, int, UINT, UINT, const void*);
  BOOL CreateBitmapIndirect(LPBITMAP);
  BOOL CreateCompatibleBitmap(CDC*, int, int);
  BOOL CreateDiscardableBitmap(CDC*, int, int);
  static CBitmap* PASCAL FromHandle(HBITMAP);
  int GetBitmap(BITMAP*);
  DWORD GetBitmapBits(DWORD, LPVOID) const;
  CSize GetBitmapDimension() const;
  BOOL LoadBitmap(LPCTSTR);
  BOOL LoadBitmap(UINT);
  BOOL LoadOEMBitmap(UINT);
  operator HBITMAP() const;
  DWORD SetBitmapBits(DWORD, const void*);
  CSize SetBitmapDimension(int, int);
};

class CBrush : public CGdiObject {
 public:
  CBrush();
  CBrush(COLORREF);
  CBrush(int, COLORREF);
  explicit CBrush(CBitmap*);
  BOOL CreateBrushIndirect(const LOGBRUSH*);
  BOOL CreateDIBPatternBrush(HGLOBAL, UINT);
  BOOL CreateDIBPatternBrush(const void*, UINT);
  BOOL CreateHatchBrush(int, COLORREF);
  BOOL CreatePatternBrush(CBitmap*);
  BOOL CreateSolidBrush(COLORREF);
  BOOL CreateSysColorBrush(int);
  static CBrush* PASCAL FromHandle(HBRUSH);
  int GetLogBrush(LOGBRUSH*);
  operator HBRUSH() const;
};

class CFont : public CGdiObject {
 public:
  CFont();
  BOOL CreateFont(int, int, int, int, int, BYTE, BYTE, BYTE, BYTE, BYTE, BYTE, BYTE, BYTE, LPCTSTR);
  BOOL CreateFontIndirect(const LOGFONT*);
  BOOL CreatePointFont(int, LPCTSTR, CDC* = nullptr);
  BOOL CreatePointFontIndirect(const LOGFONT*, CDC* = nullptr);
  static CFont* PASCAL FromHandle(HFONT);
  int GetLogFont(LOGFONT*);
  operator HFONT() const;
};

class CPen : public CGdiObject {
 public:
  CPen();
  CPen(int, int, COLORREF);
  CPen(int, int, const LOGBRUSH*, int = 0, const DWORD* = nullptr);
  BOOL CreatePen(int, int, COLORREF);
  BOOL CreatePen(int, int, const LOGBRUSH*, int = 0, const DWORD* = nullptr);
  BOOL CreatePenIndirect(LPLOGPEN);
  static CPen* PASCAL FromHandle(HPEN);
  int GetExtLogPen(EXTLOGPEN*);
  int GetLogPen(LOGPEN*);
  operator HPEN() const;
};
