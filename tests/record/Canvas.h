// A bitmap of 32 bits per pixel with a device context on it, for looking at what was drawn.
#pragma once

#include <afxwin.h>

#include <gtest/gtest.h>
#include <vector>

class Canvas {
 public:
  static constexpr DWORD background = 0x00102030;  // as GetBitmapBits gives it, 0x00RRGGBB

  Canvas(int width, int height) : m_width(width), m_height(height) {
    EXPECT_TRUE(m_dc.CreateCompatibleDC(nullptr));
    EXPECT_TRUE(m_bitmap.CreateBitmap(width, height, 1, 32, nullptr));
    m_before = m_dc.SelectObject(&m_bitmap);
    EXPECT_NE(m_before, nullptr);
    clear();
  }
  ~Canvas() { m_dc.SelectObject(m_before); }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  CDC* dc() { return &m_dc; }

  void clear() {
    const std::vector<DWORD> bits(pixelCount(), background);
    m_bitmap.SetBitmapBits(byteCount(), bits.data());
  }

  // Rows from the top, 0x00RRGGBB.
  std::vector<DWORD> pixels() const {
    std::vector<DWORD> bits(pixelCount());
    EXPECT_EQ(m_bitmap.GetBitmapBits(byteCount(), bits.data()), byteCount());
    for (DWORD& pixel : bits) {
      pixel &= 0x00FFFFFFU;
    }
    return bits;
  }

  // What differs from the background; empty when nothing does.
  struct Drawn {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int count = 0;    // pixels: width * height when it is a filled rectangle
    DWORD color = 0;  // of the last pixel
    bool operator==(const Drawn&) const = default;
  };

  Drawn drawn() const {
    const std::vector<DWORD> bits = pixels();
    int left = m_width;
    int top = m_height;
    int right = -1;
    int bottom = -1;
    Drawn result;
    for (int y = 0; y < m_height; ++y) {
      for (int x = 0; x < m_width; ++x) {
        const DWORD pixel = bits[indexOf(x, y)];
        if (pixel != background) {
          left = x < left ? x : left;
          top = y < top ? y : top;
          right = x > right ? x : right;
          bottom = y > bottom ? y : bottom;
          result.color = pixel;
          ++result.count;
        }
      }
    }
    if (result.count > 0) {
      result.left = left;
      result.top = top;
      result.width = right - left + 1;
      result.height = bottom - top + 1;
    }
    return result;
  }

  bool isEmpty() const { return drawn() == Drawn(); }

  // The picture of one square with clipping at the borders.
  std::vector<DWORD> pictureOf(long long left, long long top, long long size, DWORD color) const {
    std::vector<DWORD> bits(pixelCount(), background);
    for (int y = 0; y < m_height; ++y) {
      for (int x = 0; x < m_width; ++x) {
        if (x >= left && x < left + size && y >= top && y < top + size) {
          bits[indexOf(x, y)] = color;
        }
      }
    }
    return bits;
  }

 private:
  std::size_t indexOf(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x);
  }
  std::size_t pixelCount() const {
    return static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height);
  }
  DWORD byteCount() const { return static_cast<DWORD>(pixelCount() * sizeof(DWORD)); }

  int m_width;
  int m_height;
  CBitmap m_bitmap;
  CDC m_dc;
  CBitmap* m_before = nullptr;
};

inline void PrintTo(const Canvas::Drawn& drawn, std::ostream* out) {
  *out << drawn.width << " x " << drawn.height << " at " << drawn.left << ", " << drawn.top << ", "
       << drawn.count << " pixels of " << std::hex << drawn.color << std::dec;
}
