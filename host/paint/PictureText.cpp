#include "host/paint/PictureText.h"

#include <utility>

namespace host {

const StrokeFont& headFont() {
  static const StrokeFont font(20);
  return font;
}

const StrokeFont& textFont() {
  static const StrokeFont font(17);
  return font;
}

const StrokeFont& noteFont() {
  static const StrokeFont font(15);
  return font;
}

const StrokeFont& letterFont() {
  static const StrokeFont font(26);
  return font;
}

void drawEdged(Image& image, const StrokeFont& font, int left, int top, std::string_view text, Rgb colour) {
  constexpr int edge = 1;
  constexpr double full = 255.0;
  // The strokes once, as white on black with room for the edge; the edge is the same four pixels around.
  Image mask(font.width(text) + 4 * edge, font.lineHeight() + 4 * edge, {});
  font.draw(mask, 2 * edge, 2 * edge, text, {255, 255, 255});
  const auto strokeAt = [&](int column, int row) { return mask.pixel(column, row).red / full; };
  for (int row = edge; row < mask.height() - edge; ++row)
    for (int column = edge; column < mask.width() - edge; ++column) {
      const double open = (1.0 - strokeAt(column - edge, row)) * (1.0 - strokeAt(column + edge, row)) *
                          (1.0 - strokeAt(column, row - edge)) * (1.0 - strokeAt(column, row + edge));
      const int x = left + column - 2 * edge;
      const int y = top + row - 2 * edge;
      if (open < 1.0)
        image.blendPixel(x, y, edgeInk, 1.0 - open);
      if (const double stroke = strokeAt(column, row); stroke > 0.0)
        image.blendPixel(x, y, colour, stroke);
    }
}

void TextBlock::add(const StrokeFont& font, std::string_view text, Rgb colour) {
  for (std::string& line : font.wrap(text, m_widest))
    m_lines.push_back({&font, std::move(line), colour});
}

int TextBlock::height() const {
  int height = 0;
  for (const Line& line : m_lines)
    height += line.font->lineHeight() + lineGap;
  return height;
}

void TextBlock::draw(Image& image, int left, int top) const {
  for (const Line& line : m_lines) {
    line.font->draw(image, left, top, line.text, line.colour);
    top += line.font->lineHeight() + lineGap;
  }
}

}  // namespace host
