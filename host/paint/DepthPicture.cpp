#include "host/paint/DepthPicture.h"

#include <algorithm>
#include <limits>

namespace host {

namespace {

constexpr float endless = std::numeric_limits<float>::infinity();

// The tile of a place, cut to 0 .. tiles - 1.
int tileOf(double place, int tileSide, int tiles) {
  return static_cast<int>(std::clamp(place, 0.0, static_cast<double>(tiles * tileSide - 1))) / tileSide;
}

float farthestOf(const float* depths, int count) {
  float farthest = depths[0];
  for (int i = 1; i < count; ++i) {
    farthest = (std::max)(farthest, depths[i]);
  }
  return farthest;
}

}  // namespace

DepthPicture::DepthPicture(int width, int height, Rgb background)
    : m_image(width, height, background),
      m_depths(m_image.pixels().size(), endless),
      m_tileColumns((width + tileSide - 1) / tileSide),
      m_tileRows((height + tileSide - 1) / tileSide),
      m_farthest(toSize(m_tileColumns) * toSize(m_tileRows), endless) {}

void DepthPicture::clear(Rgb background) {
  m_image.fill({0, 0, width(), height()}, background);
  std::fill(m_depths.begin(), m_depths.end(), endless);
  std::fill(m_farthest.begin(), m_farthest.end(), endless);
}

void DepthPicture::summarise() {
  std::fill(m_farthest.begin(), m_farthest.end(), -endless);
  for (int row = 0; row < height(); ++row) {
    float* tile = m_farthest.data() + toSize(row / tileSide) * toSize(m_tileColumns);
    for (int left = 0; left < width(); left += tileSide, ++tile) {
      *tile = (std::max)(*tile, farthestOf(depths(row) + left, (std::min)(tileSide, width() - left)));
    }
  }
}

bool DepthPicture::hides(double left, double top, double right, double bottom, double nearest) const {
  if (!(right > 0.0 && left < width() && bottom > 0.0 && top < height())) {
    return true;
  }
  const int lastRow = tileOf(bottom, tileSide, m_tileRows);
  const int lastColumn = tileOf(right, tileSide, m_tileColumns);
  const int firstColumn = tileOf(left, tileSide, m_tileColumns);
  for (int row = tileOf(top, tileSide, m_tileRows); row <= lastRow; ++row) {
    const float* tiles = m_farthest.data() + toSize(row) * toSize(m_tileColumns);
    for (int column = firstColumn; column <= lastColumn; ++column) {
      if (static_cast<double>(tiles[column]) > nearest) {
        return false;
      }
    }
  }
  return true;
}

bool hidesAll(std::span<const float> depths, float nearest) {
  // Counted to the end, without a way out of the loop: so the compiler looks at several at once.
  int open = 0;
  for (const float depth : depths) {
    open += nearest < depth ? 1 : 0;
  }
  return open == 0;
}

}  // namespace host
