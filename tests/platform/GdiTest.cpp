// Fills and pixels land where they should, in the documented bytes, whatever the coordinates.
#include <afxwin.h>

#include <array>
#include <climits>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "tests/support/Promising.h"

namespace {

constexpr COLORREF red = RGB(255, 0, 0);
constexpr COLORREF blue = RGB(0, 0, 255);
constexpr COLORREF black = RGB(0, 0, 0);

// A context over a black bitmap.
class Canvas {
 public:
  Canvas(int width, int height) : m_width(width), m_height(height) {
    const std::vector<BYTE> zeros(static_cast<std::size_t>(width * height) * 4);
    EXPECT_TRUE(dc.CreateCompatibleDC(nullptr));
    EXPECT_TRUE(bitmap.CreateBitmap(width, height, 1, 32, zeros.data()));
    m_before = dc.SelectObject(&bitmap);
    EXPECT_NE(m_before, nullptr);
  }
  ~Canvas() { dc.SelectObject(m_before); }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  std::vector<BYTE> bytes() {
    std::vector<BYTE> all(static_cast<std::size_t>(m_width * m_height) * 4, 0xAA);
    EXPECT_EQ(bitmap.GetBitmapBits(static_cast<DWORD>(all.size()), all.data()), all.size());
    return all;
  }
  // One character per pixel: R, B, . for black, ? for anything else.
  std::vector<std::string> picture() {
    const std::vector<BYTE> all = bytes();
    std::vector<std::string> rows(static_cast<std::size_t>(m_height));
    for (std::size_t i = 0; i < all.size(); i += 4) {
      const COLORREF color = RGB(all[i + 2], all[i + 1], all[i]);
      const char letter = color == red ? 'R' : color == blue ? 'B' : color == black ? '.' : '?';
      rows[i / 4 / static_cast<std::size_t>(m_width)] += letter;
    }
    return rows;
  }

  CDC dc;
  CBitmap bitmap;

 private:
  int m_width;
  int m_height;
  CBitmap* m_before = nullptr;
};

using Rows = std::vector<std::string>;

TEST(Gdi, BytesAreBlueGreenRedZeroFromTheTop) {
  Canvas canvas(2, 2);
  canvas.dc.FillSolidRect(0, 0, 1, 1, RGB(1, 2, 3));
  canvas.dc.FillSolidRect(1, 1, 1, 1, RGB(4, 5, 6));
  EXPECT_EQ(canvas.bytes(), (std::vector<BYTE>{3, 2, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 6, 5, 4, 0}));
}

TEST(Gdi, FillsARectangle) {
  Canvas canvas(5, 4);
  canvas.dc.FillSolidRect(1, 1, 3, 2, red);
  EXPECT_EQ(canvas.picture(), (Rows{".....", ".RRR.", ".RRR.", "....."}));
  const CRect rect(4, 0, 5, 4);
  canvas.dc.FillSolidRect(rect, blue);
  EXPECT_EQ(canvas.picture(), (Rows{"....B", ".RRRB", ".RRRB", "....B"}));
}

TEST(Gdi, FillsAreClipped) {
  Canvas canvas(4, 3);
  canvas.dc.FillSolidRect(-2, -2, 3, 3, red);
  canvas.dc.FillSolidRect(3, 2, 100, 100, blue);
  EXPECT_EQ(canvas.picture(), (Rows{"R...", "....", "...B"}));
  canvas.dc.FillSolidRect(4, 0, 1, 3, red);
  canvas.dc.FillSolidRect(0, 3, 4, 1, red);
  canvas.dc.FillSolidRect(-1, 0, 1, 3, red);
  EXPECT_EQ(canvas.picture(), (Rows{"R...", "....", "...B"}));
}

TEST(Gdi, EmptyAndNegativeSizesDrawNothing) {
  Canvas canvas(4, 3);
  canvas.dc.FillSolidRect(1, 1, 0, 2, red);
  canvas.dc.FillSolidRect(1, 1, 2, 0, red);
  canvas.dc.FillSolidRect(3, 2, -2, -2, red);
  canvas.dc.FillSolidRect(3, 0, -2, 3, red);
  const CRect turned(3, 3, 1, 1);
  canvas.dc.FillSolidRect(turned, red);
  EXPECT_EQ(canvas.picture(), (Rows{"....", "....", "...."}));
}

TEST(Gdi, AnyIntIsASafeCoordinate) {
  Canvas canvas(3, 2);
  for (const int x : {INT_MIN, INT_MAX}) {
    for (const int size : {INT_MIN, -1, 0, 1}) {
      canvas.dc.FillSolidRect(x, 0, size, 2, red);
      canvas.dc.FillSolidRect(0, x, 3, size, red);
      EXPECT_EQ(canvas.dc.SetPixel(x, 0, red), CLR_INVALID);
      EXPECT_EQ(canvas.dc.GetPixel(0, x), CLR_INVALID);
    }
  }
  canvas.dc.FillSolidRect(INT_MIN, 0, INT_MAX, 2, red);  // ends at -1
  EXPECT_EQ(canvas.picture(), (Rows{"...", "..."}));
  canvas.dc.FillSolidRect(-1000000, -1000000, INT_MAX, INT_MAX, red);
  EXPECT_EQ(canvas.picture(), (Rows{"RRR", "RRR"}));
  const CRect all(INT_MIN, INT_MIN, INT_MAX, INT_MAX);  // its width does not fit an int
  canvas.dc.FillSolidRect(all, blue);
  EXPECT_EQ(canvas.dc.GetBkColor(), blue);
}

TEST(Gdi, FillsSetTheBackgroundColor) {
  Canvas canvas(2, 2);
  EXPECT_EQ(canvas.dc.GetBkColor(), RGB(255, 255, 255));
  canvas.dc.FillSolidRect(0, 0, 1, 1, red);
  EXPECT_EQ(canvas.dc.GetBkColor(), red);
  canvas.dc.FillSolidRect(0, 0, 0, 0, blue);
  EXPECT_EQ(canvas.dc.GetBkColor(), blue);
  EXPECT_EQ(canvas.dc.SetBkColor(black), blue);
  EXPECT_EQ(canvas.dc.GetBkColor(), black);
}

TEST(Gdi, PixelsAreSetAndRead) {
  Canvas canvas(3, 2);
  EXPECT_EQ(canvas.dc.SetPixel(2, 1, red), red);
  EXPECT_EQ(canvas.dc.GetPixel(2, 1), red);
  EXPECT_EQ(canvas.dc.GetPixel(CPoint(0, 0)), black);
  EXPECT_EQ(canvas.dc.SetPixel(CPoint(0, 0), blue), blue);
  EXPECT_EQ(canvas.picture(), (Rows{"B..", "..R"}));
  EXPECT_EQ(canvas.dc.SetPixel(3, 0, red), CLR_INVALID);
  EXPECT_EQ(canvas.dc.SetPixel(0, -1, red), CLR_INVALID);
  EXPECT_EQ(canvas.dc.GetPixel(-1, 0), CLR_INVALID);
  EXPECT_EQ(canvas.dc.GetPixel(0, 2), CLR_INVALID);
}

TEST(Gdi, ViewportOriginMovesWhatIsDrawn) {
  Canvas canvas(4, 3);
  EXPECT_EQ(canvas.dc.SetViewportOrg(1, -1), CPoint(0, 0));
  EXPECT_EQ(canvas.dc.GetViewportOrg(), CPoint(1, -1));
  canvas.dc.FillSolidRect(0, 1, 2, 1, red);
  canvas.dc.SetPixel(-1, 3, blue);
  EXPECT_EQ(canvas.dc.GetPixel(0, 1), red);
  EXPECT_EQ(canvas.dc.GetPixel(3, 1), CLR_INVALID);
  EXPECT_EQ(canvas.picture(), (Rows{".RR.", "....", "B..."}));
  EXPECT_EQ(canvas.dc.SetViewportOrg(CPoint(0, 0)), CPoint(1, -1));
}

// Random rectangles against one pixel at a time.
TEST(Gdi, RandomFillsMatchTheDefinition) {
  constexpr int width = 17;
  constexpr int height = 11;
  std::mt19937 random(3);
  const auto anywhere = [&] { return static_cast<int>(random() % 60) - 25; };
  for (int round = 0; round < 200; ++round) {
    Canvas canvas(width, height);
    const CPoint origin(anywhere(), anywhere());
    canvas.dc.SetViewportOrg(origin);
    const int x = anywhere();
    const int y = anywhere();
    const int cx = anywhere();
    const int cy = anywhere();
    canvas.dc.FillSolidRect(x, y, cx, cy, red);
    Rows expected;
    for (int row = 0; row < height; ++row) {
      std::string line;
      for (int column = 0; column < width; ++column) {
        const bool inside = column - origin.x >= x && column - origin.x < x + cx && row - origin.y >= y &&
                            row - origin.y < y + cy;
        line += inside ? 'R' : '.';
      }
      expected.push_back(line);
    }
    ASSERT_EQ(canvas.picture(), expected) << x << ' ' << y << ' ' << cx << ' ' << cy;
  }
}

TEST(Gdi, BitmapTakesAndGivesItsBytes) {
  CBitmap bitmap;
  const std::array<BYTE, 8> bits = {1, 2, 3, 0, 5, 6, 7, 0};
  ASSERT_TRUE(bitmap.CreateBitmap(2, 1, 1, 32, bits.data()));
  std::array<BYTE, 8> read = {};
  EXPECT_EQ(bitmap.GetBitmapBits(8, read.data()), 8U);
  EXPECT_EQ(read, bits);
  const std::array<BYTE, 8> other = {9, 8, 7, 0, 6, 5, 4, 0};
  EXPECT_EQ(bitmap.SetBitmapBits(8, other.data()), 8U);
  EXPECT_EQ(bitmap.GetBitmapBits(8, read.data()), 8U);
  EXPECT_EQ(read, other);
  std::array<BYTE, 12> larger = {};
  larger[8] = 0xAA;
  EXPECT_EQ(bitmap.GetBitmapBits(12, larger.data()), 8U);
  EXPECT_EQ(larger[8], 0xAA);
}

TEST(Gdi, BadBitmapsAreRefused) {
  CBitmap bitmap;
  EXPECT_FALSE(bitmap.CreateBitmap(0, 1, 1, 32, nullptr));
  EXPECT_FALSE(bitmap.CreateBitmap(1, -1, 1, 32, nullptr));
  EXPECT_FALSE(bitmap.CreateBitmap(INT_MAX, INT_MAX, 1, 32, nullptr));
  EXPECT_FALSE(bitmap.CreateBitmap(1, 1, 1, 24, nullptr));
  EXPECT_FALSE(bitmap.CreateBitmap(1, 1, 2, 32, nullptr));
  BYTE byte = 0;
  EXPECT_EQ(bitmap.GetBitmapBits(1, &byte), 0U);
  EXPECT_EQ(bitmap.SetBitmapBits(1, &byte), 0U);
  EXPECT_FALSE(bitmap.DeleteObject());
  EXPECT_TRUE(bitmap.CreateBitmap(1, 1, 1, 32, nullptr));
  EXPECT_FALSE(bitmap.CreateBitmap(1, 1, 1, 32, nullptr));
  EXPECT_TRUE(bitmap.DeleteObject());
  EXPECT_TRUE(bitmap.CreateBitmap(2, 2, 1, 32, nullptr));
}

TEST(Gdi, SelectingReturnsTheBitmapBefore) {
  const Promising promising(Promising::more);
  CDC dc;
  CBitmap first;
  CBitmap second;
  CBitmap empty;
  ASSERT_TRUE(first.CreateBitmap(1, 1, 1, 32, nullptr));
  ASSERT_TRUE(second.CreateBitmap(1, 1, 1, 32, nullptr));
  EXPECT_EQ(dc.SelectObject(&first), nullptr);  // no context yet
  ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
  EXPECT_FALSE(dc.CreateCompatibleDC(nullptr));
  CBitmap* original = dc.SelectObject(&first);
  ASSERT_NE(original, nullptr);
  EXPECT_EQ(dc.SelectObject(&empty), nullptr);
  EXPECT_EQ(dc.SelectObject(&second), &first);
  CDC other;
  ASSERT_TRUE(other.CreateCompatibleDC(&dc));
  EXPECT_EQ(other.SelectObject(&second), nullptr);  // one context at a time
  EXPECT_NE(other.SelectObject(&first), nullptr);
  EXPECT_EQ(dc.SelectObject(original), &second);
  EXPECT_TRUE(dc.DeleteDC());
  EXPECT_FALSE(dc.DeleteDC());
  EXPECT_TRUE(dc.CreateCompatibleDC(nullptr));
}

TEST(Gdi, WithoutAContextNothingIsDrawn) {
  CDC dc;
  dc.FillSolidRect(0, 0, 1, 1, red);
  EXPECT_EQ(dc.SetPixel(0, 0, red), CLR_INVALID);
  EXPECT_EQ(dc.GetPixel(0, 0), CLR_INVALID);
}

TEST(Geometry, RectanglesAndPoints) {
  const CRect rect(1, 2, 4, 8);
  EXPECT_EQ(rect.Width(), 3);
  EXPECT_EQ(rect.Height(), 6);
  EXPECT_FALSE(rect.IsRectEmpty());
  EXPECT_TRUE(rect.PtInRect(CPoint(1, 2)));
  EXPECT_FALSE(rect.PtInRect(CPoint(4, 2)));
  EXPECT_FALSE(rect.PtInRect(CPoint(1, 8)));
  EXPECT_TRUE(CRect(1, 1, 1, 5).IsRectEmpty());
  CRect other;
  other.SetRect(1, 2, 4, 8);
  EXPECT_TRUE(other == rect);
  EXPECT_TRUE(CRect() != rect);
  EXPECT_TRUE(CPoint(1, 2) != CPoint(2, 1));
}

}  // namespace
