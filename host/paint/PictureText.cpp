#include "host/paint/PictureText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace host {

namespace {

StrokeFont fontOf(double lineHeight, double scale) {
  constexpr double smallest = 0.6;
  constexpr double largest = 8.0;
  return StrokeFont(scaledPixels(lineHeight, std::clamp(scale, smallest, largest)));
}

}  // namespace

int scaledPixels(double pixels, double scale) {
  return (std::max)(static_cast<int>(std::lround(pixels * scale)), 1);
}

StrokeFont headFont(double scale) {
  return fontOf(20.0, scale);
}

StrokeFont textFont(double scale) {
  return fontOf(17.0, scale);
}

StrokeFont noteFont(double scale) {
  return fontOf(15.0, scale);
}

StrokeFont letterFont(double scale) {
  return fontOf(26.0, scale);
}

void drawEdged(Image& image, const StrokeFont& font, int left, int top, std::string_view text, Rgb colour) {
  constexpr int edge = 1;
  constexpr double full = 255.0;
  // The strokes once, as white on black with room for the edge; the edge is the same four pixels around.
  Image mask(font.width(text) + 4 * edge, font.lineHeight() + 4 * edge, {});
  font.draw(mask, 2 * edge, 2 * edge, text, {255, 255, 255});
  const auto strokeAt = [&](int column, int row) { return mask.pixel(column, row).red / full; };
  for (int row = edge; row < mask.height() - edge; ++row) {
    for (int column = edge; column < mask.width() - edge; ++column) {
      const double open = (1.0 - strokeAt(column - edge, row)) * (1.0 - strokeAt(column + edge, row)) *
                          (1.0 - strokeAt(column, row - edge)) * (1.0 - strokeAt(column, row + edge));
      const int x = left + column - 2 * edge;
      const int y = top + row - 2 * edge;
      if (open < 1.0) {
        image.blendPixel(x, y, edgeInk, 1.0 - open);
      }
      if (const double stroke = strokeAt(column, row); stroke > 0.0) {
        image.blendPixel(x, y, colour, stroke);
      }
    }
  }
}

void TextBlock::add(const StrokeFont& font, std::string_view text, Rgb colour) {
  for (std::string& line : font.wrap(text, m_widest)) {
    m_lines.push_back({font, std::move(line), colour});
  }
}

int TextBlock::height() const {
  int height = 0;
  for (const Line& line : m_lines) {
    height += line.font.lineHeight() + lineGap;
  }
  return height;
}

void TextBlock::draw(Image& image, int left, int top) const {
  for (const Line& line : m_lines) {
    line.font.draw(image, left, top, line.text, line.colour);
    top += line.font.lineHeight() + lineGap;
  }
}

}  // namespace host
