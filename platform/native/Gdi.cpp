#include "platform/portable/Gdi.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "platform/LeastPromise.h"
#include "platform/portable/Exceptions.h"

namespace {

// 0x00BBGGRR to and from the pixel's 0x00RRGGBB.
constexpr DWORD swapped(COLORREF color) {
  return DWORD{GetBValue(color)} | DWORD{GetGValue(color)} << 8 | DWORD{GetRValue(color)} << 16;
}

constexpr LONGLONG largestBitmap = 0x7FFFFFFF;  // bytes

// The part of [start, start + length) that lies in [0, limit).
struct Span {
  int first;
  int last;  // just outside
};

Span clipped(LONGLONG start, LONGLONG end, int limit) {
  return {static_cast<int>(std::clamp<LONGLONG>(start, 0, limit)),
          static_cast<int>(std::clamp<LONGLONG>(end, 0, limit))};
}

}  // namespace

CGdiObject::~CGdiObject() = default;

CBitmap::CBitmap() = default;

CBitmap::~CBitmap() {
  CBitmap::DeleteObject();
}

BOOL CBitmap::CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits) {
  if (m_pixels != nullptr || width <= 0 || height <= 0 || planes != 1 || bitCount != 32) {
    return FALSE;
  }
  if (LONGLONG{width} * height > largestBitmap / LONGLONG{sizeof(DWORD)}) {
    return FALSE;
  }
  try {
    auto pixels = std::make_shared<Pixels>();
    pixels->width = width;
    pixels->height = height;
    pixels->rows.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    m_pixels = std::move(pixels);
  } catch (const std::bad_alloc&) {
    return FALSE;
  } catch (CMemoryException* exception) {
    exception->Delete();
    return FALSE;
  }
  const std::size_t bytes = m_pixels->rows.size() * sizeof(DWORD);
  if (bits != nullptr) {
    std::memcpy(m_pixels->rows.data(), bits, bytes);
  } else {
    spoil(m_pixels->rows.data(), bytes);
  }
  return TRUE;
}

BOOL CBitmap::DeleteObject() {
  const bool there = m_pixels != nullptr;
  if (there && m_pixels->owner != nullptr && isLeastPromised()) {
    endUnpromised("a bitmap is deleted while a context draws into it");
  }
  m_pixels.reset();
  return there ? TRUE : FALSE;
}

DWORD CBitmap::GetBitmapBits(DWORD count, LPVOID bits) const {
  if (m_pixels == nullptr || bits == nullptr) {
    return 0;
  }
  const auto copied = (std::min)(std::size_t{count}, m_pixels->rows.size() * sizeof(DWORD));
  std::memcpy(bits, m_pixels->rows.data(), copied);
  return static_cast<DWORD>(copied);
}

DWORD CBitmap::SetBitmapBits(DWORD count, const void* bits) {
  if (m_pixels == nullptr || bits == nullptr) {
    return 0;
  }
  const auto copied = (std::min)(std::size_t{count}, m_pixels->rows.size() * sizeof(DWORD));
  std::memcpy(m_pixels->rows.data(), bits, copied);
  return static_cast<DWORD>(copied);
}

CDC::CDC() = default;

CDC::~CDC() {
  CDC::DeleteDC();
}

BOOL CDC::CreateCompatibleDC(CDC* /*like*/) {
  if (m_default != nullptr) {
    return FALSE;
  }
  m_default = std::make_unique<CBitmap>();
  m_default->CreateBitmap(1, 1, 1, 32, nullptr);
  SelectObject(m_default.get());
  return TRUE;
}

BOOL CDC::DeleteDC() {
  if (m_default == nullptr) {
    return FALSE;
  }
  m_target->owner = nullptr;
  m_target.reset();
  m_default.reset();
  for (const std::unique_ptr<CBitmap>& temporary : m_temporary) {
    temporary->m_pixels.reset();
  }
  m_temporary.clear();
  m_selected = nullptr;
  m_background = RGB(255, 255, 255);
  m_origin = CPoint();
  return TRUE;
}

CBitmap* CDC::SelectObject(CBitmap* bitmap) {
  if (m_default == nullptr || bitmap == nullptr || bitmap->m_pixels == nullptr) {
    return nullptr;
  }
  const CDC* owner = bitmap->m_pixels->owner;
  if (owner != nullptr && owner != this) {
    return nullptr;
  }
  CBitmap* const before = isLeastPromised() ? temporaryOf(m_target) : m_selected;
  if (m_target != nullptr) {
    m_target->owner = nullptr;
  }
  m_target = bitmap->m_pixels;
  m_target->owner = this;
  m_selected = bitmap;
  return before;
}

CBitmap* CDC::temporaryOf(const std::shared_ptr<CBitmap::Pixels>& pixels) {
  m_temporary.push_back(std::make_unique<CBitmap>());
  m_temporary.back()->m_pixels = pixels;
  return m_temporary.back().get();
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF color) {
  m_background = color;
  if (m_target == nullptr) {
    return;
  }
  const LONGLONG left = LONGLONG{x} + m_origin.x;
  const LONGLONG top = LONGLONG{y} + m_origin.y;
  const Span columns = clipped(left, left + width, m_target->width);
  const Span rows = clipped(top, top + height, m_target->height);
  if (columns.first >= columns.last) {
    return;
  }
  for (int row = rows.first; row < rows.last; ++row) {
    DWORD* start = m_target->at(0, row);
    std::fill(start + columns.first, start + columns.last, swapped(color));
  }
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF color) {
  // Width and height may not fit an int: what is cut off lies outside of every bitmap.
  const LONGLONG most = 0x7FFFFFFF;
  FillSolidRect(rect->left, rect->top, static_cast<int>((std::min)(LONGLONG{rect->right} - rect->left, most)),
                static_cast<int>((std::min)(LONGLONG{rect->bottom} - rect->top, most)), color);
}

DWORD* CDC::pixel(int x, int y) const {
  const LONGLONG column = LONGLONG{x} + m_origin.x;
  const LONGLONG row = LONGLONG{y} + m_origin.y;
  const bool inside =
      m_target != nullptr && column >= 0 && row >= 0 && column < m_target->width && row < m_target->height;
  return inside ? m_target->at(static_cast<int>(column), static_cast<int>(row)) : nullptr;
}

COLORREF CDC::SetPixel(int x, int y, COLORREF color) {
  DWORD* const target = pixel(x, y);
  if (target == nullptr) {
    return CLR_INVALID;
  }
  *target = swapped(color);
  return swapped(*target);
}

COLORREF CDC::GetPixel(int x, int y) const {
  const DWORD* const source = pixel(x, y);
  return source == nullptr ? CLR_INVALID : swapped(*source);
}

COLORREF CDC::SetBkColor(COLORREF color) {
  return std::exchange(m_background, color);
}

COLORREF CDC::GetBkColor() const {
  return m_background;
}

CPoint CDC::SetViewportOrg(int x, int y) {
  return std::exchange(m_origin, CPoint(x, y));
}

CPoint CDC::GetViewportOrg() const {
  return m_origin;
}
