#include "host/panes/PaneMarks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "host/paint/PictureText.h"
#include "host/paint/SceneLine.h"
#include "host/picture/SceneMarks.h"
#include "host/picture/ScenePainter.h"
#include "host/picture/SliceCaption.h"

namespace host {

namespace {

constexpr int margin = 6;  // pixels between the texts and the border
constexpr Rgb crosshairColour{90, 200, 130};

ScreenPoint centreOf(const PixelPoint& pixel) {
  return {pixel.column + 0.5, pixel.row + 0.5, 0.0};
}

void drawFineArrow(Image& image, const SliceArrow& arrow) {
  constexpr double longestHead = 9.0;
  constexpr double headSlope = 0.45;  // half its width to its length
  const double size = std::hypot(arrow.columns, arrow.rows);
  const ScreenPoint from = centreOf(arrow.from);
  const ScreenPoint tip{from.column + arrow.columns, from.row + arrow.rows, 0.0};
  const double along = arrow.columns / size;
  const double down = arrow.rows / size;
  const double head = (std::min)(longestHead, size * 0.5);
  const auto barb = [&](double side) -> ScreenPoint {
    return {tip.column - head * (along - side * headSlope * down),
            tip.row - head * (down + side * headSlope * along), 0.0};
  };
  for (const LineStyle& line : {LineStyle{edgeInk, 4.0, 0.7}, LineStyle{arrow.colour, 2.0}}) {
    drawLine(image, from, tip, line);
    drawLine(image, barb(1.0), tip, line);
    drawLine(image, barb(-1.0), tip, line);
  }
}

void drawThinArrow(Image& image, const SliceArrow& arrow) {
  const int steps = static_cast<int>(std::ceil((std::max)(std::abs(arrow.columns), std::abs(arrow.rows))));
  for (int step = 0; step <= steps; ++step) {
    const int column = static_cast<int>(std::floor(arrow.from.column + 0.5 + arrow.columns * step / steps));
    const int row = static_cast<int>(std::floor(arrow.from.row + 0.5 + arrow.rows * step / steps));
    if (column >= 0 && row >= 0 && column < image.width() && row < image.height())
      image.setPixel(column, row, arrow.colour);
  }
}

// Beside the point, off the lines of a crosshair through it.
void drawFiducialLetter(Image& image, const PixelPoint& at, char letter) {
  constexpr int beside = 7;
  const StrokeFont& font = noteFont();
  drawEdged(image, font, at.column + beside, at.row - beside - font.lineHeight(), std::string(1, letter),
            fiducialColour(letter));
}

// What a text beside the letters at the top or the bottom may take; up to three stand there in 3D.
int roomBesideLetter(const Image& image) {
  return image.width() / 2 - 2 * margin - letterFont().lineHeight();
}

// Returns the first row that the warnings take, or that of the letter below them.
int drawWarnings(Image& image, const std::vector<CaptionLine>& warnings) {
  const StrokeFont& font = noteFont();
  std::vector<CaptionLine> lines;
  for (const CaptionLine& warning : warnings)
    for (std::string& line : font.wrap(warning.text, (std::max)(image.width() - 2 * margin, 1)))
      lines.push_back({std::move(line), warning.colour});
  const int lowest = image.height() - 2 * margin - letterFont().lineHeight();
  int top = lowest - static_cast<int>(lines.size()) * font.lineHeight();
  const int first = top;
  for (const CaptionLine& line : lines) {
    drawEdged(image, font, margin, top, line.text, line.colour);
    top += font.lineHeight();
  }
  return first;
}

// The title and the lines below it, above the row that is taken and in no more than the upper part of the
// picture: the head is worth more than its caption.
void drawCaption(Image& image, const PaneTexts& texts, int takenRow) {
  constexpr double upperPart = 0.3;
  constexpr int small = 300;  // pixels
  const int letterFoot = 2 * margin + letterFont().lineHeight();
  const int lowest = (std::min)(takenRow, static_cast<int>(image.height() * upperPart));
  const bool isSmall = (std::min)(image.width(), image.height()) < small;
  const StrokeFont& titleFont = isSmall ? textFont() : headFont();
  const StrokeFont& font = isSmall ? noteFont() : textFont();
  int top = margin;
  if (titleFont.width(texts.title) > roomBesideLetter(image) || top + titleFont.lineHeight() > lowest)
    return;
  drawEdged(image, titleFont, margin, top, texts.title, ink);
  top += titleFont.lineHeight() + margin;
  for (const CaptionLine& line : texts.lines) {
    const int width = font.width(line.text);
    if (width > roomBesideLetter(image))
      top = (std::max)(top, letterFoot);
    if (width > image.width() - 2 * margin || top + font.lineHeight() > lowest)
      return;
    drawEdged(image, font, margin, top, line.text, line.colour);
    top += font.lineHeight() + 1;
  }
}

}  // namespace

void drawCrosshair(Image& image, const PixelPoint& at) {
  constexpr int gap = 14;
  constexpr double strength = 0.75;
  if (at.row >= 0 && at.row < image.height())
    for (int column = 0; column < image.width(); ++column)
      if (std::abs(column - at.column) > gap)
        image.blendPixel(column, at.row, crosshairColour, strength);
  if (at.column >= 0 && at.column < image.width())
    for (int row = 0; row < image.height(); ++row)
      if (std::abs(row - at.row) > gap)
        image.blendPixel(at.column, row, crosshairColour, strength);
}

void drawArrows(Image& image, const std::vector<SliceArrow>& arrows) {
  constexpr std::size_t mostFine = 400;
  constexpr double shortest = 1.0;
  for (const SliceArrow& arrow : arrows) {
    if (std::hypot(arrow.columns, arrow.rows) < shortest)
      continue;
    if (arrows.size() <= mostFine)
      drawFineArrow(image, arrow);
    else
      drawThinArrow(image, arrow);
  }
}

void drawCurrentRing(Image& image, const PixelPoint& at, int glyphPixels) {
  const double radius = glyphPixels * 0.71 + 4.0;
  drawRing(image, centreOf(at), radius, {edgeInk, 4.0});
  drawRing(image, centreOf(at), radius, {letterInk, 2.0});
}

void drawFiducialRing(Image& image, const PixelPoint& at, char letter) {
  constexpr double radius = 6.0;
  drawRing(image, centreOf(at), radius, {edgeInk, 4.0});
  drawRing(image, centreOf(at), radius, {fiducialColour(letter), 2.0});
  drawFiducialLetter(image, at, letter);
}

void drawFiducialCross(Image& image, const PixelPoint& at, char letter) {
  constexpr double from = 3.0;  // pixels from the point
  constexpr double to = 9.0;
  const ScreenPoint centre = centreOf(at);
  for (const LineStyle& line : {LineStyle{edgeInk, 4.0}, LineStyle{fiducialColour(letter), 2.0}})
    for (const auto& [columns, rows] : {std::pair{1.0, 0.0}, {-1.0, 0.0}, {0.0, 1.0}, {0.0, -1.0}})
      drawLine(image, {centre.column + columns * from, centre.row + rows * from},
               {centre.column + columns * to, centre.row + rows * to}, line);
  drawFiducialLetter(image, at, letter);
}

int letterBorder(int width, int height) {
  // In small panes the letters stand over the picture: the head is worth more than the border then.
  return std::clamp((std::min)(width, height) / 10, margin, margin + letterFont().lineHeight());
}

void drawSides(Image& image, View view) {
  const StrokeFont& font = letterFont();
  const SideLetters letters = sideLetters(view);
  const auto draw = [&](char letter, int left, int top) {
    drawEdged(image, font, left, top, std::string(1, letter), letterInk);
  };
  const auto widthOf = [&](char letter) { return font.width(std::string(1, letter)); };
  const int middleRow = (image.height() - font.lineHeight()) / 2;
  const auto middleColumn = [&](char letter) { return (image.width() - widthOf(letter)) / 2; };
  draw(letters.left, margin, middleRow);
  draw(letters.right, image.width() - margin - widthOf(letters.right), middleRow);
  draw(letters.top, middleColumn(letters.top), margin);
  draw(letters.bottom, middleColumn(letters.bottom), image.height() - margin - font.lineHeight());
}

void drawScaleBar(Image& image, double mmPerPixel) {
  constexpr int gap = 6;
  constexpr double leastBar = 12.0;
  constexpr double tick = 4.0;
  const StrokeFont& font = noteFont();
  const double room = roomBesideLetter(image) - font.width("100 mm") - gap;
  const double mm = scaleBarMm(1.0 / mmPerPixel, (std::min)(room, image.width() * 0.25));
  const double pixels = mm / mmPerPixel;
  if (pixels < leastBar || pixels > room)
    return;
  const double left = margin + 1.5;
  const double right = left + pixels;
  const double y = image.height() - margin - font.lineHeight() * 0.5;
  for (const LineStyle& line : {LineStyle{edgeInk, 4.0}, LineStyle{ink, 2.0}}) {
    drawLine(image, {left, y}, {right, y}, line);
    drawLine(image, {left, y - tick}, {left, y + tick}, line);
    drawLine(image, {right, y - tick}, {right, y + tick}, line);
  }
  drawEdged(image, font, static_cast<int>(right) + gap, image.height() - margin - font.lineHeight(),
            std::to_string(static_cast<int>(mm)) + " mm", ink);
}

void drawPaneTexts(Image& image, const PaneTexts& texts) {
  drawCaption(image, texts, drawWarnings(image, texts.warnings));
}

}  // namespace host
