#include "tests/ui/screens/Picture.h"

#include <fstream>
#include <memory>
#include <type_traits>
#include <vector>

namespace {

struct ContextEnd {
  void operator()(HDC context) const { ::DeleteDC(context); }
};
struct BitmapEnd {
  void operator()(HBITMAP bitmap) const { ::DeleteObject(bitmap); }
};
using Context = std::unique_ptr<std::remove_pointer_t<HDC>, ContextEnd>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapEnd>;

class Screen {
 public:
  Screen() : m_context(::GetDC(nullptr)) {}
  ~Screen() { ::ReleaseDC(nullptr, m_context); }
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  HDC context() const { return m_context; }

 private:
  HDC m_context;
};

template <class Struct>
void write(std::ofstream& file, const Struct& bytes) {
  file.write(reinterpret_cast<const char*>(&bytes), sizeof bytes);
}

// What the system itself draws last, over everything, and leaves out of copies of the screen.
void drawPointer(HDC context, const RECT& place) {
  CURSORINFO pointer = {};
  pointer.cbSize = sizeof pointer;
  ICONINFO shape = {};
  if (::GetCursorInfo(&pointer) == FALSE || ::GetIconInfo(pointer.hCursor, &shape) == FALSE) {
    return;
  }
  const int x = pointer.ptScreenPos.x - place.left - static_cast<int>(shape.xHotspot);
  const int y = pointer.ptScreenPos.y - place.top - static_cast<int>(shape.yHotspot);
  ::DrawIconEx(context, x, y, pointer.hCursor, 0, 0, 0, nullptr, DI_NORMAL);
  ::DeleteObject(shape.hbmMask);
  ::DeleteObject(shape.hbmColor);
}

}  // namespace

bool savePicture(const RECT& place, const std::string& path, bool withPointer) {
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  if (width <= 0 || height <= 0) {
    return false;
  }
  const Screen screen;
  const Bitmap bitmap(::CreateCompatibleBitmap(screen.context(), width, height));
  {
    const Context memory(::CreateCompatibleDC(screen.context()));
    const HGDIOBJ before = ::SelectObject(memory.get(), bitmap.get());
    ::BitBlt(memory.get(), 0, 0, width, height, screen.context(), place.left, place.top, SRCCOPY);
    if (withPointer) {
      drawPointer(memory.get(), place);
    }
    ::SelectObject(memory.get(), before);
  }

  const int bytesOfRow = (width * 3 + 3) / 4 * 4;
  std::vector<char> bits(static_cast<std::size_t>(bytesOfRow) * static_cast<std::size_t>(height));
  BITMAPINFOHEADER description = {};
  description.biSize = sizeof description;
  description.biWidth = width;
  description.biHeight = height;
  description.biPlanes = 1;
  description.biBitCount = 24;
  description.biCompression = BI_RGB;
  BITMAPINFO wanted = {};
  wanted.bmiHeader = description;
  if (::GetDIBits(screen.context(), bitmap.get(), 0, static_cast<UINT>(height), bits.data(), &wanted,
                  DIB_RGB_COLORS) != height) {
    return false;
  }
  BITMAPFILEHEADER start = {};
  start.bfType = 0x4D42;  // "BM"
  start.bfOffBits = sizeof start + sizeof description;
  start.bfSize = start.bfOffBits + static_cast<DWORD>(bits.size());

  std::ofstream file(path, std::ios::binary);
  write(file, start);
  write(file, description);
  file.write(bits.data(), static_cast<std::streamsize>(bits.size()));
  file.close();
  return !file.fail();
}
