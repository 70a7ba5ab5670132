// The texts of the pictures: fonts, colours, and lines below each other.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/paint/Image.h"
#include "host/paint/StrokeFont.h"

namespace host {

constexpr Rgb pictureBackground{14, 17, 22};
constexpr Rgb ink{226, 230, 236};
constexpr Rgb quietInk{150, 158, 170};
constexpr Rgb warningInk{255, 190, 70};
constexpr Rgb letterInk{255, 255, 255};
constexpr Rgb edgeInk{0, 0, 0};  // around what stands over a picture

// `scale` makes texts and marks larger than they are on a screen of 96 dots per inch; 0.6 to 8, beyond the
// nearer end.
StrokeFont headFont(double scale = 1.0);
StrokeFont textFont(double scale = 1.0);
StrokeFont noteFont(double scale = 1.0);
StrokeFont letterFont(double scale = 1.0);  // of the side letters
// That many pixels in a picture of that scale, at least 1.
int scaledPixels(double pixels, double scale);

// Text over anything: a dark border keeps it legible over bright skin.
void drawEdged(Image& image, const StrokeFont& font, int left, int top, std::string_view text, Rgb colour);

constexpr int lineGap = 4;  // pixels between two lines

// Lines of text from the top down, broken where they would be too wide.
class TextBlock {
 public:
  explicit TextBlock(int widest) : m_widest(widest) {}

  void add(const StrokeFont& font, std::string_view text, Rgb colour);
  int height() const;
  void draw(Image& image, int left, int top) const;

 private:
  struct Line {
    StrokeFont font;
    std::string text;
    Rgb colour;
  };

  int m_widest;
  std::vector<Line> m_lines;
};

}  // namespace host
