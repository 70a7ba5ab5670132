// A picture of red, green, blue pixels of 8 bits each; rows from the top, columns from the left.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host {

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend bool operator==(const Rgb&, const Rgb&) = default;
};

struct PixelPoint {
  int column = 0;
  int row = 0;

  friend bool operator==(const PixelPoint&, const PixelPoint&) = default;
};

// Columns left <= column < right and rows top <= row < bottom.
struct PixelBox {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  int width() const { return right - left; }
  int height() const { return bottom - top; }
};

class Image {
 public:
  Image() = default;
  // Throws std::invalid_argument when an extent is negative or above 32767.
  Image(int width, int height, Rgb fill);

  int width() const { return m_width; }
  int height() const { return m_height; }
  const std::vector<Rgb>& pixels() const { return m_pixels; }

  // The pixel must lie inside.
  Rgb pixel(int column, int row) const { return m_pixels[offset(column, row)]; }
  void setPixel(int column, int row, Rgb colour) { m_pixels[offset(column, row)] = colour; }

  // The pixels of a row that lies inside, from the left.
  Rgb* row(int row) { return m_pixels.data() + offset(0, row); }

  // Mixes the colour over a pixel; coverage runs from 0 (nothing) to 1. Pixels outside are left out.
  void blendPixel(int column, int row, Rgb colour, double coverage);
  // What lies outside of the picture is left out.
  void fill(const PixelBox& box, Rgb colour);
  // Lays another picture over this one; what lies outside is left out.
  void paste(const Image& other, int left, int top);
  // The part of the picture inside the box, which is cut to the picture first.
  Image cropped(const PixelBox& box) const;

 private:
  std::size_t offset(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_width) +
           static_cast<std::size_t>(column);
  }
  PixelBox cut(const PixelBox& box) const;

  int m_width = 0;
  int m_height = 0;
  std::vector<Rgb> m_pixels;
};

}  // namespace host
