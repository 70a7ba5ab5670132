// The stroke font draws every printable character, distinctly, and within its line.
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include "host/paint/StrokeFont.h"

namespace {

using host::Image;
using host::Rgb;
using host::StrokeFont;

constexpr Rgb black{0, 0, 0};
constexpr Rgb white{255, 255, 255};

// The text's pixels in a picture of exactly its own size.
std::vector<int> greys(const StrokeFont& font, const std::string& text) {
  Image image(font.width(text), font.lineHeight(), black);
  font.draw(image, 0, 0, text, white);
  std::vector<int> values;
  for (const Rgb& pixel : image.pixels()) {
    values.push_back(pixel.green);
  }
  return values;
}

int inkOf(const StrokeFont& font, const std::string& text) {
  int sum = 0;
  for (const int grey : greys(font, text)) {
    sum += grey;
  }
  return sum;
}

}  // namespace

TEST(StrokeFont, DrawsEveryPrintableCharacterDistinctly) {
  for (const int height : {12, 16, 20}) {
    const StrokeFont font(height);
    std::map<std::vector<int>, char> seen;
    for (char c = ' '; c <= '~'; ++c) {
      const std::string text(1, c);
      EXPECT_EQ(inkOf(font, text) > 0, c != ' ') << c;
      const auto [place, fresh] = seen.emplace(greys(font, text), c);
      EXPECT_TRUE(fresh) << c << " looks like " << place->second << " at " << height;
    }
  }
}

TEST(StrokeFont, KeepsWithinItsLine) {
  const StrokeFont font(17);
  const std::string text = "jgyQ@[](){}|$%W_^`ÄÅÇ~";
  constexpr int border = 40;
  Image image(font.width(text) + 2 * border, font.lineHeight() + 2 * border, black);
  font.draw(image, border, border, text, white);
  Image inside = image.cropped({border, border, image.width() - border, image.height() - border});
  image.fill({border, border, image.width() - border, image.height() - border}, black);
  for (const Rgb& pixel : image.pixels()) {
    ASSERT_EQ(pixel, black);
  }
  // Nothing is cut off either: at the line's own edges the strokes fade out.
  for (int column = 0; column < inside.width(); ++column) {
    EXPECT_LT(inside.pixel(column, 0).green, 128) << column;
    EXPECT_LT(inside.pixel(column, inside.height() - 1).green, 128) << column;
  }
}

TEST(StrokeFont, IsSmoothAtItsEdges) {
  int between = 0;
  for (const int grey : greys(StrokeFont(20), "O")) {
    between += grey > 0 && grey < 255 ? 1 : 0;
  }
  EXPECT_GT(between, 20);
}

TEST(StrokeFont, AddsUpTheWidthsOfItsCharacters) {
  const StrokeFont font(28);
  EXPECT_EQ(font.width(""), 0);
  EXPECT_GT(font.width("m"), font.width("i"));
  EXPECT_NEAR(font.width("mmmmmmmmmm"), 10 * font.width("m"), 10);
}

TEST(StrokeFont, GivesAllDigitsOneWidth) {
  const StrokeFont font(17);
  for (char c = '0'; c <= '9'; ++c) {
    EXPECT_EQ(font.width(std::string(1, c)), font.width("0"));
  }
}

TEST(StrokeFont, PutsAccentedLettersTogether) {
  const StrokeFont font(20);
  EXPECT_EQ(font.width("ü"), font.width("u"));
  EXPECT_GT(inkOf(font, "ü"), inkOf(font, "u"));
  EXPECT_NE(greys(font, "é"), greys(font, "è"));
  EXPECT_EQ(font.width("Müller"), font.width("Muller"));
}

TEST(StrokeFont, DrawsABoxForWhatItDoesNotHave) {
  const StrokeFont font(20);
  EXPECT_EQ(greys(font, "漢"), greys(font, "\x01"));
  EXPECT_GT(inkOf(font, "漢"), 0);
  EXPECT_EQ(greys(font, "\xFC"), greys(font, "ü"));         // a lone byte stands for itself
  EXPECT_EQ(greys(font, "\xE6\xBC"), greys(font, "漢漢"));  // a sequence that is cut off
}

TEST(StrokeFont, BreaksLinesAtSpaces) {
  const StrokeFont font(17);
  const int widest = font.width("one two three");
  EXPECT_EQ(font.wrap("one two three", widest), (std::vector<std::string>{"one two three"}));
  EXPECT_EQ(font.wrap("one two three", widest - 1), (std::vector<std::string>{"one two", "three"}));
  EXPECT_EQ(font.wrap("", widest), std::vector<std::string>{});
}

TEST(StrokeFont, BreaksLongWordsAnywhereAndLosesNothing) {
  const StrokeFont font(17);
  const std::string word = "aLongFileNameWithoutAnySpace_0123456789_Müller.dip";
  std::string together;
  for (const std::string& line : font.wrap(word, 100)) {
    EXPECT_LE(font.width(line), 100);
    together += line;
  }
  EXPECT_EQ(together, word);
  EXPECT_EQ(font.wrap("abc", 0), (std::vector<std::string>{"a", "b", "c"}));
}
