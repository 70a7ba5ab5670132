// The colours for numbers: a scale from 0 to 1 whose steps look alike, over grey pictures and to eyes that do
// not tell red from green.
//
// The scale is a helix in the colour space Oklab (B. Ottosson, "A perceptual color space for image
// processing", 2020): from dark violet over red and orange to light yellow, lightness and hue each grow at a
// constant rate while the chroma stays. So equal steps are equal distances; lightness alone tells the order;
// and every colour is as far from the nearest grey as the chroma is.
#pragma once

#include "host/paint/Image.h"

namespace host {

// A colour in Oklab: lightness 0 (black) to 1 (white), a from green to red, b from blue to yellow.
struct Oklab {
  double lightness = 0.0;
  double a = 0.0;
  double b = 0.0;
};

Oklab oklabOf(Rgb colour);

// The colour of a place on the scale; below 0 that of 0, above 1 that of 1, and what is not a number has
// noValueColor.
Rgb scaleColor(double place);

// Light cyan, whose hue is not on the scale.
inline constexpr Rgb noValueColor{70, 225, 235};

}  // namespace host
