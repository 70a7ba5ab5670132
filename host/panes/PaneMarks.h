// What stands over the picture of a slice pane: crosshair, arrows, the ring around the current dipole,
// captions. All of it has a dark border and is legible over any picture. `scale`: see
// host/paint/PictureText.h.
#pragma once

#include <string>
#include <vector>

#include "host/paint/Image.h"

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
void drawArrows(Image& image, const std::vector<SliceArrow>& arrows, double scale = 1.0);

// Around a square of that many pixels.
void drawCurrentRing(Image& image, const PixelPoint& at, int glyphPixels, double scale = 1.0);

// A fiducial point with its letter (see SceneFiducial) in its colour: a ring around one that the head is
// registered by, a diamond around one that the dipole file has elsewhere, with the word "file", a cross, open
// in its middle, at one that is only placed.
void drawFiducialRing(Image& image, const PixelPoint& at, char letter, double scale = 1.0);
void drawFiducialDiamond(Image& image, const PixelPoint& at, char letter, double scale = 1.0);
void drawFiducialCross(Image& image, const PixelPoint& at, char letter, double scale = 1.0);

struct CaptionLine {
  std::string text;
  Rgb colour;
};
struct PaneTexts {
  std::string title;                  // the view, beside the letter at the top
  std::string place;                  // where it lies, or from where it is seen; below the title
  std::vector<CaptionLine> lines;     // below that; the last ones are left out where there is no room
  std::vector<CaptionLine> warnings;  // above the letter at the bottom, broken where they are too wide
};

// Pixels that the letters take at each border of a pane of that size.
int letterBorder(int width, int height, double scale = 1.0);

// Warnings above the letter at the bottom, title and lines above the one at the left, as far as there is
// room.
void drawPaneTexts(Image& image, const PaneTexts& texts, double scale = 1.0);

}  // namespace host
