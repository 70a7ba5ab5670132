// Text in a picture, drawn with smooth strokes at any size. Texts are UTF-8; accented Latin letters are put
// together from a letter and its mark, and any other character that is not in the font becomes an empty box,
// so that a name with unknown letters still shows its length.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/paint/Image.h"

namespace host {

class StrokeFont {
 public:
  // lineHeight: pixels from the top of the tallest to the foot of the deepest character, at least 8.
  explicit StrokeFont(int lineHeight);

  int lineHeight() const { return m_lineHeight; }
  // Pixels that the text takes in a row.
  int width(std::string_view text) const;
  // Draws the text with its upper left corner at (left, top); nothing is drawn outside of
  // [left, left + width) x [top, top + lineHeight).
  void draw(Image& image, int left, int top, std::string_view text, Rgb colour) const;
  // Breaks the text into lines no wider than that many pixels, at spaces where there are any, else anywhere.
  std::vector<std::string> wrap(std::string_view text, int widest) const;

 private:
  int m_lineHeight;
  double m_halfWidth;  // of a stroke, in pixels
  double m_margin;     // above the tallest and below the deepest character, in pixels
  double m_scale;      // pixels per unit of the drawings
};

}  // namespace host
