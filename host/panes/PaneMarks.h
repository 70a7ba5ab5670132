// What stands over the picture of a slice pane: crosshair, arrows, the ring around the current dipole, side
// letters, captions, scale bar. All of it has a dark border and is legible over any picture.
#pragma once

#include <string>
#include <vector>

#include "host/paint/Image.h"
#include "host/picture/View.h"

namespace host {

// Thin lines through a pixel, open around it; lines beyond the picture are left out.
void drawCrosshair(Image& image, const PixelPoint& at);

struct SliceArrow {
  PixelPoint from;
  double columns = 0.0;  // from the centre of the pixel to the tip, pixels to the right and down
  double rows = 0.0;
  Rgb colour;
};
// More than a few hundred become thin lines, so that a full set does not take seconds.
void drawArrows(Image& image, const std::vector<SliceArrow>& arrows);

// Around a square of that many pixels.
void drawCurrentRing(Image& image, const PixelPoint& at, int glyphPixels);

// A fiducial point with its letter (see SceneFiducial) in its colour: a ring around one that the head is
// registered by, a cross, open in its middle, at one that is only placed.
void drawFiducialRing(Image& image, const PixelPoint& at, char letter);
void drawFiducialCross(Image& image, const PixelPoint& at, char letter);

struct CaptionLine {
  std::string text;
  Rgb colour;
};
struct PaneTexts {
  std::string title;                  // the view, beside the letter at the top
  std::vector<CaptionLine> lines;     // below it; the last ones are left out where there is no room
  std::vector<CaptionLine> warnings;  // above the letter at the bottom, broken where they are too wide
};

// Pixels that the letters take at each border of a pane of that size.
[[nodiscard]] int letterBorder(int width, int height);

// Warnings above the letter at the bottom, title and lines above the one at the left, as far as there is
// room.
void drawPaneTexts(Image& image, const PaneTexts& texts);
// The letters at the borders, always, and the scale bar where there is room.
void drawSides(Image& image, View view);
void drawScaleBar(Image& image, double mmPerPixel);

}  // namespace host
