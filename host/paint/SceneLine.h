// A smooth line of some thickness in a picture with depth, such as a circle of the head sphere. Lines are
// drawn after everything solid: they mix with what is there and hide nothing themselves.
#pragma once

#include "host/paint/DepthPicture.h"
#include "host/paint/SceneCamera.h"

namespace host {

struct LineStyle {
  Rgb colour;
  double width = 1.5;    // pixels
  double visible = 1.0;  // how much of the colour covers the picture, 0 to 1
  double hidden = 0.0;   // the same where something nearer hides the line
};

void drawLine(DepthPicture& picture, const ScreenPoint& from, const ScreenPoint& to, const LineStyle& style);
// In a picture without depth; nothing hides the line.
void drawLine(Image& image, const ScreenPoint& from, const ScreenPoint& to, const LineStyle& style);
// The radius is pixels.
void drawRing(Image& image, const ScreenPoint& centre, double radius, const LineStyle& style);

}  // namespace host
