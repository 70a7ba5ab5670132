#include "host/panes/PaneMarks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "host/paint/PictureText.h"
#include "host/paint/Rounding.h"
#include "host/paint/SceneLine.h"
#include "host/picture/PictureMarks.h"
#include "host/picture/ScenePainter.h"

namespace host {

namespace {

constexpr Rgb crosshairColour{90, 200, 130};

ScreenPoint centreOf(const PixelPoint& pixel) {
  return {pixel.column + 0.5, pixel.row + 0.5, 0.0};
}

void drawFineArrow(Image& image, const SliceArrow& arrow, double scale) {
  const double longestHead = 9.0 * scale;
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
  for (const LineStyle& line : {LineStyle{edgeInk, 4.0 * scale, 0.7}, LineStyle{arrow.colour, 2.0 * scale}}) {
    drawLine(image, from, tip, line);
    drawLine(image, barb(1.0), tip, line);
    drawLine(image, barb(-1.0), tip, line);
  }
}

void drawThinArrow(Image& image, const SliceArrow& arrow) {
  const int steps = static_cast<int>(std::ceil((std::max)(std::abs(arrow.columns), std::abs(arrow.rows))));
  for (int step = 0; step <= steps; ++step) {
    const int column = roundedDown(arrow.from.column + 0.5 + arrow.columns * step / steps);
    const int row = roundedDown(arrow.from.row + 0.5 + arrow.rows * step / steps);
    if (column >= 0 && row >= 0 && column < image.width() && row < image.height()) {
      image.setPixel(column, row, arrow.colour);
    }
  }
}

// Beside the point, off the lines of a crosshair through it.
void drawFiducialLetter(Image& image, const PixelPoint& at, char letter, double scale) {
  const int beside = scaledPixels(7.0, scale);
  const StrokeFont font = noteFont(scale);
  drawEdged(image, font, at.column + beside, at.row - beside - font.lineHeight(), std::string(1, letter),
            fiducialColour(letter));
}

// On the left, so that both can be read where the two points are near each other.
void drawFileLetter(Image& image, const PixelPoint& at, char letter, double scale) {
  const int beside = scaledPixels(11.0, scale);
  const StrokeFont font = noteFont(scale);
  const std::string text = std::string(1, letter) + " file";
  drawEdged(image, font, at.column - beside - font.width(text), at.row - font.lineHeight() / 2, text,
            fiducialColour(letter));
}

// Returns the first row that the warnings take, or that of the letter below them.
int drawWarnings(Image& image, const std::vector<CaptionLine>& warnings, double scale) {
  const StrokeFont font = noteFont(scale);
  const int margin = scaledPixels(markMargin, scale);
  std::vector<CaptionLine> lines;
  for (const CaptionLine& warning : warnings) {
    for (std::string& line : font.wrap(warning.text, (std::max)(image.width() - 2 * margin, 1))) {
      lines.push_back({std::move(line), warning.colour});
    }
  }
  const int lowest = image.height() - 2 * margin - letterFont(scale).lineHeight();
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
void drawCaption(Image& image, const PaneTexts& texts, int takenRow, double scale) {
  constexpr double upperPart = 0.3;
  const double small = 300.0 * scale;  // pixels
  const int margin = scaledPixels(markMargin, scale);
  const int letterFoot = 2 * margin + letterFont(scale).lineHeight();
  const int lowest = (std::min)(takenRow, static_cast<int>(image.height() * upperPart));
  const bool isSmall = (std::min)(image.width(), image.height()) < small;
  const StrokeFont titleFont = isSmall ? textFont(scale) : headFont(scale);
  const StrokeFont font = isSmall ? noteFont(scale) : textFont(scale);
  const int beside = roomBesideLetters(image, scale);
  int top = margin;
  if (titleFont.width(texts.title) > beside || top + titleFont.lineHeight() > lowest) {
    return;
  }
  drawEdged(image, titleFont, margin, top, texts.title, ink);
  top += titleFont.lineHeight() + margin;
  std::vector<CaptionLine> lines = texts.lines;
  if (!texts.place.empty()) {
    lines.insert(lines.begin(), {texts.place, ink});
  }
  for (const CaptionLine& line : lines) {
    const int width = font.width(line.text);
    if (width > beside) {
      top = (std::max)(top, letterFoot);
    }
    if (width > image.width() - 2 * margin || top + font.lineHeight() > lowest) {
      return;
    }
    drawEdged(image, font, margin, top, line.text, line.colour);
    top += font.lineHeight() + 1;
  }
}

}  // namespace

void drawCrosshair(Image& image, const PixelPoint& at) {
  constexpr int gap = 14;
  constexpr double strength = 0.75;
  if (at.row >= 0 && at.row < image.height()) {
    for (int column = 0; column < image.width(); ++column) {
      if (std::abs(column - at.column) > gap) {
        image.blendPixel(column, at.row, crosshairColour, strength);
      }
    }
  }
  if (at.column >= 0 && at.column < image.width()) {
    for (int row = 0; row < image.height(); ++row) {
      if (std::abs(row - at.row) > gap) {
        image.blendPixel(at.column, row, crosshairColour, strength);
      }
    }
  }
}

void drawArrows(Image& image, const std::vector<SliceArrow>& arrows, double scale) {
  constexpr std::size_t mostFine = 400;
  constexpr double shortest = 1.0;
  for (const SliceArrow& arrow : arrows) {
    if (std::hypot(arrow.columns, arrow.rows) < shortest) {
      continue;
    }
    if (arrows.size() <= mostFine) {
      drawFineArrow(image, arrow, scale);
    } else {
      drawThinArrow(image, arrow);
    }
  }
}

void drawCurrentRing(Image& image, const PixelPoint& at, int glyphPixels, double scale) {
  drawEdgedRing(image, centreOf(at), glyphPixels * 0.71 + 4.0 * scale, letterInk, scale);
}

void drawFiducialRing(Image& image, const PixelPoint& at, char letter, double scale) {
  drawEdgedRing(image, centreOf(at), 6.0 * scale, fiducialColour(letter), scale);
  drawFiducialLetter(image, at, letter, scale);
}

void drawFiducialDiamond(Image& image, const PixelPoint& at, char letter, double scale) {
  const double reach = 8.0 * scale;
  const ScreenPoint centre = centreOf(at);
  const ScreenPoint corners[4] = {{centre.column + reach, centre.row},
                                  {centre.column, centre.row + reach},
                                  {centre.column - reach, centre.row},
                                  {centre.column, centre.row - reach}};
  for (std::size_t i = 0; i < std::size(corners); ++i) {
    drawEdgedLine(image, corners[i], corners[(i + 1) % std::size(corners)], fiducialColour(letter), scale);
  }
  drawFileLetter(image, at, letter, scale);
}

void drawFiducialCross(Image& image, const PixelPoint& at, char letter, double scale) {
  const double from = 3.0 * scale;  // pixels from the point
  const double to = 9.0 * scale;
  const ScreenPoint centre = centreOf(at);
  for (const auto& [columns, rows] : {std::pair{1.0, 0.0}, {-1.0, 0.0}, {0.0, 1.0}, {0.0, -1.0}}) {
    drawEdgedLine(image, {centre.column + columns * from, centre.row + rows * from},
                  {centre.column + columns * to, centre.row + rows * to}, fiducialColour(letter), scale);
  }
  drawFiducialLetter(image, at, letter, scale);
}

int letterBorder(int width, int height, double scale) {
  // In small panes the letters stand over the picture: the head is worth more than the border then.
  const int margin = scaledPixels(markMargin, scale);
  return std::clamp((std::min)(width, height) / 10, margin, margin + letterFont(scale).lineHeight());
}

void drawPaneTexts(Image& image, const PaneTexts& texts, double scale) {
  drawCaption(image, texts, drawWarnings(image, texts.warnings, scale), scale);
}

}  // namespace host
