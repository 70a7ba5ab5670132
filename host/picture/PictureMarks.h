// The marks that pictures of slices and 3D pictures have in common. All of them have a dark border and are
// legible over any picture; `scale` is that of host/paint/PictureText.h.
#pragma once

#include <array>
#include <string>

#include "host/head/Vector3.h"
#include "host/paint/Image.h"
#include "host/paint/SceneCamera.h"
#include "host/picture/View.h"

namespace host {

constexpr int markMargin = 6;  // pixels between marks and the border of a picture

// The patient's sides towards which a direction of the head frame points, the closest first: "L" to the left,
// "LP" to the left and back. R and L right and left, A and P front and back, S and I up and down. Sides more
// than 75 degrees away are left out.
std::string sidesOf(const Vector3& direction);

// What stands at the edges of a picture.
struct SideLetters {
  std::string left;
  std::string right;
  std::string top;
  std::string bottom;
};
SideLetters sideLetters(const Vector3& right, const Vector3& up);  // directions in the picture
SideLetters sideLetters(View view);

// Where they stand, left, right, top and bottom: in the middle of each border.
std::array<PixelBox, 4> sideBoxes(const Image& image, const SideLetters& letters, double scale = 1.0);
void drawSides(Image& image, const SideLetters& letters, double scale = 1.0);

// The longest of 1, 2, 5, 10, 20, 50, 100, ... mm that takes no more than that many pixels.
double scaleBarMm(double pixelsPerMm, double mostPixels);
// In the lower left corner; nothing where there is no room.
void drawScaleBar(Image& image, double pixelsPerMm, double scale = 1.0);
// What a text beside the letters at the top or the bottom may take, pixels.
int roomBesideLetters(const Image& image, double scale = 1.0);

// A line or ring of that colour in a dark one.
void drawEdgedLine(Image& image, const ScreenPoint& from, const ScreenPoint& to, Rgb colour,
                   double scale = 1.0);
void drawEdgedRing(Image& image, const ScreenPoint& centre, double radius, Rgb colour, double scale = 1.0);

}  // namespace host
