// A picture with the depth of every pixel: what is drawn nearer to the viewer hides what is farther. Depths
// are mm away from the viewer, as SceneCamera gives them; empty pixels are infinitely far.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "host/paint/Image.h"

namespace host {

class DepthPicture {
 public:
  // All pixels of one colour. Throws std::invalid_argument when Image does.
  DepthPicture(int width, int height, Rgb background);

  // Empties the picture.
  void clear(Rgb background);

  int width() const { return m_image.width(); }
  int height() const { return m_image.height(); }
  const Image& image() const { return m_image; }
  Image& image() { return m_image; }

  // The pixel must lie inside.
  float depth(int column, int row) const { return m_depths[offset(row) + toSize(column)]; }

  // Takes stock of how far each part of the picture is covered, for hides().
  void summarise();
  // Whether anything inside of a box (pixels) at that depth or farther away would be hidden, as far as the
  // last summary since the picture was cleared tells. What lies outside of the picture counts as hidden.
  bool hides(double left, double top, double right, double bottom, double nearest) const;

  // A row that lies inside, from its first pixel.
  Rgb* colours(int row) { return m_image.row(row); }
  float* depths(int row) { return m_depths.data() + offset(row); }

 private:
  static std::size_t toSize(int count) { return static_cast<std::size_t>(count); }
  std::size_t offset(int row) const { return toSize(row) * toSize(m_image.width()); }

  static constexpr int tileSide = 16;  // pixels

  Image m_image;
  std::vector<float> m_depths;
  int m_tileColumns;
  int m_tileRows;
  std::vector<float> m_farthest;  // in each tile
};

// Whether anything at that depth or farther away would be hidden in all of these pixels.
bool hidesAll(std::span<const float> depths, float nearest);

}  // namespace host
