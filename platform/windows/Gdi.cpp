#include "platform/portable/Gdi.h"

#include <algorithm>

#include "platform/LeastPromise.h"

namespace {

// No bitmap reaches this far, and the system's own arithmetic does not overflow before it.
constexpr LONGLONG farthest = 1 << 26;

// A logical coordinate, moved no further than just outside of what the context can show.
LONG kept(LONGLONG logical, LONG origin) {
  const LONGLONG device = std::clamp(logical + origin, -farthest, farthest);
  return static_cast<LONG>(std::clamp<LONGLONG>(device - origin, LONG_MIN, LONG_MAX));
}

}  // namespace

CGdiObject::~CGdiObject() {
  CGdiObject::DeleteObject();
}

BOOL CGdiObject::DeleteObject() {
  if (m_hObject == nullptr) {
    return FALSE;
  }
  const HGDIOBJ object = m_hObject;
  m_hObject = nullptr;
  return ::DeleteObject(object);
}

CBitmap::CBitmap() = default;

BOOL CBitmap::CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits) {
  if (m_hObject != nullptr || width <= 0 || height <= 0 || planes != 1 || bitCount != 32) {
    return FALSE;
  }
  if (LONGLONG{width} * height > 0x7FFFFFFF / LONGLONG{sizeof(DWORD)}) {
    return FALSE;
  }
  m_hObject = ::CreateBitmap(width, height, planes, bitCount, bits);
  if (bits == nullptr && isLeastPromised()) {
    std::vector<DWORD> open(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const std::size_t bytes = open.size() * sizeof(DWORD);
    spoil(open.data(), bytes);
    SetBitmapBits(static_cast<DWORD>(bytes), open.data());
  }
  return m_hObject != nullptr;
}

DWORD CBitmap::GetBitmapBits(DWORD count, LPVOID bits) const {
  if (m_hObject == nullptr || bits == nullptr) {
    return 0;
  }
  return static_cast<DWORD>(::GetBitmapBits(static_cast<HBITMAP>(m_hObject), static_cast<LONG>(count), bits));
}

DWORD CBitmap::SetBitmapBits(DWORD count, const void* bits) {
  if (m_hObject == nullptr || bits == nullptr) {
    return 0;
  }
  return static_cast<DWORD>(::SetBitmapBits(static_cast<HBITMAP>(m_hObject), count, bits));
}

CDC::CDC() = default;

CDC::~CDC() {
  CDC::DeleteDC();
}

BOOL CDC::CreateCompatibleDC(CDC* like) {
  if (m_hDC != nullptr) {
    return FALSE;
  }
  m_hDC = ::CreateCompatibleDC(like == nullptr ? nullptr : like->m_hDC);
  return m_hDC != nullptr;
}

BOOL CDC::DeleteDC() {
  if (m_hDC == nullptr) {
    return FALSE;
  }
  if (m_default.m_hObject != nullptr) {
    ::SelectObject(m_hDC, m_default.m_hObject);
    m_default.m_hObject = nullptr;  // the system's, and gone with the context
  }
  for (const std::unique_ptr<CBitmap>& temporary : m_temporary) {
    temporary->m_hObject = nullptr;  // somebody else's
  }
  m_temporary.clear();
  m_selected = nullptr;
  const HDC context = m_hDC;
  m_hDC = nullptr;
  return ::DeleteDC(context);
}

CBitmap* CDC::SelectObject(CBitmap* bitmap) {
  if (m_hDC == nullptr || bitmap == nullptr || bitmap->m_hObject == nullptr) {
    return nullptr;
  }
  const HGDIOBJ before = ::SelectObject(m_hDC, bitmap->m_hObject);
  if (before == nullptr) {
    return nullptr;
  }
  if (m_selected == nullptr) {
    m_default.m_hObject = before;
    m_selected = &m_default;
  }
  CBitmap* const result = m_selected;
  m_selected = bitmap;
  if (!isLeastPromised()) {
    return result;
  }
  m_temporary.push_back(std::make_unique<CBitmap>());
  m_temporary.back()->m_hObject = before;
  return m_temporary.back().get();
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF color) {
  if (m_hDC == nullptr) {
    return;
  }
  ::SetBkColor(m_hDC, color);
  const CPoint origin = GetViewportOrg();
  const RECT rect = {kept(x, origin.x), kept(y, origin.y), kept(LONGLONG{x} + width, origin.x),
                     kept(LONGLONG{y} + height, origin.y)};
  if (rect.left < rect.right && rect.top < rect.bottom) {
    ::ExtTextOutW(m_hDC, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
  }
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF color) {
  // Width and height may not fit an int: what is cut off lies outside of every bitmap.
  const LONGLONG most = 0x7FFFFFFF;
  FillSolidRect(rect->left, rect->top, static_cast<int>((std::min)(LONGLONG{rect->right} - rect->left, most)),
                static_cast<int>((std::min)(LONGLONG{rect->bottom} - rect->top, most)), color);
}

COLORREF CDC::SetPixel(int x, int y, COLORREF color) {
  // Outside, not every system answers CLR_INVALID as it is documented to; reading does.
  return GetPixel(x, y) == CLR_INVALID ? CLR_INVALID : ::SetPixel(m_hDC, x, y, color);
}

COLORREF CDC::GetPixel(int x, int y) const {
  return m_hDC == nullptr ? CLR_INVALID : ::GetPixel(m_hDC, x, y);
}

COLORREF CDC::SetBkColor(COLORREF color) {
  return ::SetBkColor(m_hDC, color);
}

COLORREF CDC::GetBkColor() const {
  return ::GetBkColor(m_hDC);
}

CPoint CDC::SetViewportOrg(int x, int y) {
  CPoint before;
  ::SetViewportOrgEx(m_hDC, x, y, &before);
  return before;
}

CPoint CDC::GetViewportOrg() const {
  CPoint origin;
  ::GetViewportOrgEx(m_hDC, &origin);
  return origin;
}
