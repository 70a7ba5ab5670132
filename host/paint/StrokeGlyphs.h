// The drawings of the stroke font's characters. Coordinates count from the left end of the base line, y
// upwards: capitals are 20 high, small letters 14, descenders reach down to -6. A drawing is a list of
// commands, each a letter and whole numbers: M x y begins a stroke, L x y draws a line, Q cx cy x y draws a
// quadratic curve.
#pragma once

#include <string_view>

namespace host {

struct StrokeGlyph {
  int width = 0;  // of the drawing, without the gap to the next character
  std::string_view strokes;
};

constexpr int glyphCapHeight = 20;
constexpr int glyphAscent = 22;
constexpr int glyphDescent = 6;
constexpr int glyphGap = 5;

// The drawing of a character; an empty box for one that the font does not have (it has U+0020 to U+007E and a
// few signs of measurement).
StrokeGlyph strokeGlyph(char32_t character);

}  // namespace host
