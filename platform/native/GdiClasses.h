// CBitmap and CDC over plain memory. See platform/portable/Gdi.h for layout and coordinates.
#pragma once

#include <memory>
#include <vector>

#include "platform/portable/Geometry.h"
#include "platform/portable/Object.h"

class CDC;

class CGdiObject : public CObject {
 public:
  ~CGdiObject() override;
  virtual BOOL DeleteObject() = 0;  // FALSE when there is nothing to delete

 protected:
  CGdiObject() = default;
};

class CBitmap : public CGdiObject {
 public:
  CBitmap();
  ~CBitmap() override;

  // A bitmap of width x height pixels, `bits` its content or null for black. Only planes 1 and bitCount 32.
  // FALSE when a size is not positive, the memory is not to be had, or the object already has a bitmap.
  BOOL CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits);
  BOOL DeleteObject() override;

  // Copies up to `count` bytes out or in and returns how many.
  DWORD GetBitmapBits(DWORD count, LPVOID bits) const;
  DWORD SetBitmapBits(DWORD count, const void* bits);

 private:
  friend class CDC;
  struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<DWORD> rows;     // 0x00RRGGBB
    const CDC* owner = nullptr;  // the context that it is selected into
    DWORD* at(int column, int row) {
      return rows.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(width) + column;
    }
  };

  std::shared_ptr<Pixels> m_pixels;
};

class CDC : public CObject {
 public:
  CDC();
  ~CDC() override;

  virtual BOOL CreateCompatibleDC(CDC* like);  // FALSE when the object already has a context
  virtual BOOL DeleteDC();

  // Returns the bitmap before, to be selected again at the end; null when nothing was selected: `bitmap` is
  // empty or selected into another context, or the context was not created. Where the least is promised
  // (platform/LeastPromise.h) it is a temporary object for it, which ends with the context.
  CBitmap* SelectObject(CBitmap* bitmap);

  // Both fill, and make `color` the background colour. Empty and negative sizes draw nothing.
  void FillSolidRect(int x, int y, int width, int height, COLORREF color);
  void FillSolidRect(LPCRECT rect, COLORREF color);

  COLORREF SetPixel(int x, int y, COLORREF color);  // the colour set, CLR_INVALID outside
  COLORREF SetPixel(POINT point, COLORREF color) { return SetPixel(point.x, point.y, color); }
  COLORREF GetPixel(int x, int y) const;  // CLR_INVALID outside
  COLORREF GetPixel(POINT point) const { return GetPixel(point.x, point.y); }

  virtual COLORREF SetBkColor(COLORREF color);  // returns the one before; white at first
  COLORREF GetBkColor() const;

  virtual CPoint SetViewportOrg(int x, int y);  // returns the one before; (0, 0) at first
  CPoint SetViewportOrg(POINT point) { return SetViewportOrg(point.x, point.y); }
  CPoint GetViewportOrg() const;

 private:
  DWORD* pixel(int x, int y) const;  // null outside
  CBitmap* temporaryOf(const std::shared_ptr<CBitmap::Pixels>& pixels);

  std::shared_ptr<CBitmap::Pixels> m_target;
  std::unique_ptr<CBitmap> m_default;  // the one pixel that every new context has
  CBitmap* m_selected = nullptr;
  std::vector<std::unique_ptr<CBitmap>> m_temporary;
  COLORREF m_background = RGB(255, 255, 255);
  CPoint m_origin;
};
