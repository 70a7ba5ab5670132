#include "host/dipoles/ColorScale.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace host {

namespace {

constexpr double chroma = 0.15;  // just what fits into the colours of a screen along the whole scale
constexpr double firstLightness = 0.42;
constexpr double lastLightness = 0.9;
constexpr double firstHue = 292.0;  // degrees: violet
constexpr double lastHue = 465.0;   // 105 degrees after a full turn: yellow

// Both between linear light and the values of sRGB, 0 to 1 (IEC 61966-2-1).
double encoded(double linear) {
  return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1.0 / 2.4) - 0.055;
}

double decoded(std::uint8_t value) {
  const double part = value / 255.0;
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

std::uint8_t byteOf(double linear) {
  return static_cast<std::uint8_t>(std::lround(255.0 * encoded(std::clamp(linear, 0.0, 1.0))));
}

double cube(double value) {
  return value * value * value;
}

Rgb rgbOf(const Oklab& colour) {
  const double l = cube(colour.lightness + 0.3963377774 * colour.a + 0.2158037573 * colour.b);
  const double m = cube(colour.lightness - 0.1055613458 * colour.a - 0.0638541728 * colour.b);
  const double s = cube(colour.lightness - 0.0894841775 * colour.a - 1.2914855480 * colour.b);
  return {byteOf(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s),
          byteOf(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s),
          byteOf(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s)};
}

}  // namespace

Oklab oklabOf(Rgb colour) {
  const double red = decoded(colour.red);
  const double green = decoded(colour.green);
  const double blue = decoded(colour.blue);
  const double l = std::cbrt(0.4122214708 * red + 0.5363325363 * green + 0.0514459929 * blue);
  const double m = std::cbrt(0.2119034982 * red + 0.6806995451 * green + 0.1073969566 * blue);
  const double s = std::cbrt(0.0883024619 * red + 0.2817188376 * green + 0.6299787005 * blue);
  return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
          1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
          0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

Rgb scaleColor(double place) {
  if (std::isnan(place)) {
    return noValueColor;
  }
  const double part = std::clamp(place, 0.0, 1.0);
  const double hue = std::lerp(firstHue, lastHue, part) * std::numbers::pi / 180.0;
  return rgbOf(
      {std::lerp(firstLightness, lastLightness, part), chroma * std::cos(hue), chroma * std::sin(hue)});
}

}  // namespace host
