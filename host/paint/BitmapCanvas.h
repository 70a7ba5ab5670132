// A picture as a surface that the module draws on with a device context: a bitmap of 32 bits in memory.
#pragma once

#include <afxwin.h>

#include <cstdint>
#include <vector>

#include "host/paint/Image.h"

namespace host {

class BitmapCanvas {
 public:
  // Begins with the picture. Throws std::runtime_error when the surface cannot be had.
  explicit BitmapCanvas(const Image& picture);
  ~BitmapCanvas();
  BitmapCanvas(const BitmapCanvas&) = delete;
  BitmapCanvas& operator=(const BitmapCanvas&) = delete;

  CDC& dc() { return m_dc; }
  // What was drawn; the picture must have the size of the one that it began with.
  void copyTo(Image& picture);

 private:
  std::vector<std::uint8_t> m_bytes;  // blue, green, red, 0
  CBitmap m_bitmap;
  CDC m_dc;
  CBitmap* m_previous = nullptr;
};

}  // namespace host
