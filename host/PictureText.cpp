#include "host/PictureText.h"

#include <array>
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
  for (const auto& [x, y] : {std::array{-1, 0}, {1, 0}, {0, -1}, {0, 1}})
    font.draw(image, left + x, top + y, text, edgeInk);
  font.draw(image, left, top, text, colour);
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
