#include "host/picture/PictureMarks.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/paint/PictureText.h"
#include "host/paint/SceneLine.h"

namespace host {

namespace {

constexpr double edgeWidth = 4.0;  // pixels, at scale 1
constexpr double lineWidth = 2.0;

Vector3 axis(int number) {
  Vector3 direction;
  direction[number] = 1.0;
  return direction;
}

}  // namespace

std::string sidesOf(const Vector3& direction) {
  constexpr double leastPart = 0.2588;  // the cosine of 75 degrees
  struct Side {
    double part;
    char letter;
  };
  std::array<Side, 3> sides{{{direction.x, direction.x > 0.0 ? 'L' : 'R'},
                             {direction.y, direction.y > 0.0 ? 'S' : 'I'},
                             {direction.z, direction.z > 0.0 ? 'A' : 'P'}}};
  // Rounded, so that directions halfway between two sides always name the same first.
  const auto closeness = [](const Side& side) { return std::lround(std::abs(side.part) * 1e6); };
  std::stable_sort(sides.begin(), sides.end(),
                   [&](const Side& one, const Side& other) { return closeness(one) > closeness(other); });
  std::string text;
  for (const Side& side : sides) {
    if (std::abs(side.part) > leastPart * length(direction)) {
      text += side.letter;
    }
  }
  return text;
}

SideLetters sideLetters(const Vector3& right, const Vector3& up) {
  return {sidesOf(right * -1.0), sidesOf(right), sidesOf(up), sidesOf(up * -1.0)};
}

SideLetters sideLetters(View view) {
  const ViewAxes axes = axesOf(view);
  return sideLetters(axis(axes.column), axis(axes.row));
}

std::array<PixelBox, 4> sideBoxes(const Image& image, const SideLetters& letters, double scale) {
  const StrokeFont font = letterFont(scale);
  const int margin = scaledPixels(markMargin, scale);
  const int middleRow = (image.height() - font.lineHeight()) / 2;
  const auto middleColumn = [&](const std::string& text) { return (image.width() - font.width(text)) / 2; };
  const auto boxAt = [&](const std::string& text, int left, int top) {
    return PixelBox{left, top, left + font.width(text), top + font.lineHeight()};
  };
  return {boxAt(letters.left, margin, middleRow),
          boxAt(letters.right, image.width() - margin - font.width(letters.right), middleRow),
          boxAt(letters.top, middleColumn(letters.top), margin),
          boxAt(letters.bottom, middleColumn(letters.bottom), image.height() - margin - font.lineHeight())};
}

void drawSides(Image& image, const SideLetters& letters, double scale) {
  const std::array<const std::string*, 4> texts = {&letters.left, &letters.right, &letters.top,
                                                   &letters.bottom};
  const std::array<PixelBox, 4> boxes = sideBoxes(image, letters, scale);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    drawEdged(image, letterFont(scale), boxes[i].left, boxes[i].top, *texts[i], letterInk);
  }
}

double scaleBarMm(double pixelsPerMm, double mostPixels) {
  double best = 1.0;
  for (const double mm : {2.0, 5.0, 10.0, 20.0, 50.0, 100.0, 200.0, 500.0, 1000.0}) {
    if (mm * pixelsPerMm <= mostPixels) {
      best = mm;
    }
  }
  return best;
}

int roomBesideLetters(const Image& image, double scale) {
  // Up to three letters stand there in 3D.
  return image.width() / 2 - 2 * scaledPixels(markMargin, scale) - letterFont(scale).lineHeight();
}

void drawScaleBar(Image& image, double pixelsPerMm, double scale) {
  constexpr double share = 0.25;  // of the picture's width that it may take
  const double leastBar = 12.0 * scale;
  const double tick = 4.0 * scale;
  const int gap = scaledPixels(6.0, scale);
  const int margin = scaledPixels(markMargin, scale);
  const StrokeFont font = noteFont(scale);
  const double room = roomBesideLetters(image, scale) - font.width("100 mm") - gap;
  const double mm = scaleBarMm(pixelsPerMm, (std::min)(room, image.width() * share));
  const double pixels = mm * pixelsPerMm;
  if (pixels < leastBar || pixels > room) {
    return;
  }
  const double left = margin + 1.5;
  const double right = left + pixels;
  const double y = image.height() - margin - font.lineHeight() * 0.5;
  for (const LineStyle& line : {LineStyle{edgeInk, edgeWidth * scale}, LineStyle{ink, lineWidth * scale}}) {
    drawLine(image, {left, y}, {right, y}, line);
    drawLine(image, {left, y - tick}, {left, y + tick}, line);
    drawLine(image, {right, y - tick}, {right, y + tick}, line);
  }
  drawEdged(image, font, static_cast<int>(right) + gap, image.height() - margin - font.lineHeight(),
            std::to_string(static_cast<int>(mm)) + " mm", ink);
}

void drawEdgedLine(Image& image, const ScreenPoint& from, const ScreenPoint& to, Rgb colour, double scale) {
  drawLine(image, from, to, {edgeInk, edgeWidth * scale});
  drawLine(image, from, to, {colour, lineWidth * scale});
}

void drawEdgedRing(Image& image, const ScreenPoint& centre, double radius, Rgb colour, double scale) {
  drawRing(image, centre, radius, {edgeInk, edgeWidth * scale});
  drawRing(image, centre, radius, {colour, lineWidth * scale});
}

}  // namespace host
