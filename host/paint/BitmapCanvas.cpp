#include "host/paint/BitmapCanvas.h"

#include <cstddef>
#include <stdexcept>

namespace host {

BitmapCanvas::BitmapCanvas(const Image& picture) : m_bytes(picture.pixels().size() * 4) {
  std::uint8_t* byte = m_bytes.data();
  for (const Rgb& pixel : picture.pixels()) {
    *byte++ = pixel.blue;
    *byte++ = pixel.green;
    *byte++ = pixel.red;
    *byte++ = 0;
  }
  if (!m_bitmap.CreateBitmap(picture.width(), picture.height(), 1, 32, m_bytes.data()) ||
      !m_dc.CreateCompatibleDC(nullptr)) {
    throw std::runtime_error("there is no surface to draw the dipoles on");
  }
  m_previous = m_dc.SelectObject(&m_bitmap);
  if (m_previous == nullptr) {
    throw std::runtime_error("there is no surface to draw the dipoles on");
  }
}

BitmapCanvas::~BitmapCanvas() {
  if (m_previous != nullptr) {
    m_dc.SelectObject(m_previous);
  }
}

void BitmapCanvas::copyTo(Image& picture) {
  m_bitmap.GetBitmapBits(static_cast<DWORD>(m_bytes.size()), m_bytes.data());
  const std::uint8_t* byte = m_bytes.data();
  for (int row = 0; row < picture.height(); ++row) {
    Rgb* pixels = picture.row(row);
    for (int column = 0; column < picture.width(); ++column, byte += 4) {
      pixels[column] = {byte[2], byte[1], byte[0]};
    }
  }
}

}  // namespace host
