// CBitmap and CDC over the system's own. See platform/portable/Gdi.h for layout and coordinates, and
// platform/native/GdiClasses.h for the contracts, which are the same.
#pragma once

#include <memory>
#include <vector>

#include "platform/portable/Geometry.h"
#include "platform/portable/Object.h"

class CGdiObject : public CObject {
 public:
  ~CGdiObject() override;
  virtual BOOL DeleteObject();
  HGDIOBJ GetSafeHandle() const { return m_hObject; }

  HGDIOBJ m_hObject = nullptr;

 protected:
  CGdiObject() = default;
};

class CBitmap : public CGdiObject {
 public:
  CBitmap();

  BOOL CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits);
  DWORD GetBitmapBits(DWORD count, LPVOID bits) const;
  DWORD SetBitmapBits(DWORD count, const void* bits);
};

class CDC : public CObject {
 public:
  CDC();
  ~CDC() override;

  virtual BOOL CreateCompatibleDC(CDC* like);
  virtual BOOL DeleteDC();
  CBitmap* SelectObject(CBitmap* bitmap);

  void FillSolidRect(int x, int y, int width, int height, COLORREF color);
  void FillSolidRect(LPCRECT rect, COLORREF color);
  COLORREF SetPixel(int x, int y, COLORREF color);
  COLORREF SetPixel(POINT point, COLORREF color) { return SetPixel(point.x, point.y, color); }
  COLORREF GetPixel(int x, int y) const;
  COLORREF GetPixel(POINT point) const { return GetPixel(point.x, point.y); }
  virtual COLORREF SetBkColor(COLORREF color);
  COLORREF GetBkColor() const;
  virtual CPoint SetViewportOrg(int x, int y);
  CPoint SetViewportOrg(POINT point) { return SetViewportOrg(point.x, point.y); }
  CPoint GetViewportOrg() const;

  HDC m_hDC = nullptr;

 private:
  CBitmap m_default;  // holds the bitmap that the system put into the context
  CBitmap* m_selected = nullptr;
  std::vector<std::unique_ptr<CBitmap>> m_temporary;  // where the least is promised
};
