#include "host/paint/Image.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "host/paint/Rounding.h"

namespace host {

namespace {

constexpr int largestExtent = 32767;

}  // namespace

Image::Image(int width, int height, Rgb fill) : m_width(width), m_height(height) {
  if (width < 0 || height < 0 || width > largestExtent || height > largestExtent) {
    throw std::invalid_argument("a picture cannot be wider or higher than " + std::to_string(largestExtent) +
                                " pixels");
  }
  m_pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), fill);
}

void Image::blendPixel(int column, int row, Rgb colour, double coverage) {
  if (column < 0 || row < 0 || column >= m_width || row >= m_height) {
    return;
  }
  const double part = std::clamp(coverage, 0.0, 1.0);
  Rgb& under = m_pixels[offset(column, row)];
  under = {mixed(under.red, colour.red, part), mixed(under.green, colour.green, part),
           mixed(under.blue, colour.blue, part)};
}

PixelBox Image::cut(const PixelBox& box) const {
  return {std::clamp(box.left, 0, m_width), std::clamp(box.top, 0, m_height),
          std::clamp(box.right, 0, m_width), std::clamp(box.bottom, 0, m_height)};
}

void Image::fill(const PixelBox& box, Rgb colour) {
  const PixelBox inside = cut(box);
  for (int row = inside.top; row < inside.bottom; ++row) {
    for (int column = inside.left; column < inside.right; ++column) {
      setPixel(column, row, colour);
    }
  }
}

void Image::paste(const Image& other, int left, int top) {
  for (int row = 0; row < other.m_height; ++row) {
    for (int column = 0; column < other.m_width; ++column) {
      blendPixel(left + column, top + row, other.pixel(column, row), 1.0);
    }
  }
}

Image Image::cropped(const PixelBox& box) const {
  const PixelBox inside = cut(box);
  Image result((std::max)(inside.width(), 0), (std::max)(inside.height(), 0), {});
  for (int row = 0; row < result.m_height; ++row) {
    for (int column = 0; column < result.m_width; ++column) {
      result.setPixel(column, row, pixel(inside.left + column, inside.top + row));
    }
  }
  return result;
}

}  // namespace host
