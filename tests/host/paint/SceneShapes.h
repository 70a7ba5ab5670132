// What the tests of 3D pictures share: a second opinion on balls by lines of sight, and searching pictures.
#pragma once

#include <cmath>
#include <limits>

#include "host/paint/DepthPicture.h"
#include "host/paint/SceneCamera.h"

// Where the line of sight through a pixel's centre meets a ball first: mm away from the viewer, counted from
// the plane through the camera's centre; infinite where it misses.
inline double depthOfBall(const host::SceneCamera& camera, const host::Vector3& centre, double radius,
                          int column, int row) {
  const host::Vector3 origin = camera.unproject(column + 0.5, row + 0.5);
  const host::Vector3 toCentre = centre - origin;
  const host::Vector3 forward = camera.toViewer() * -1.0;
  const double along = dot(toCentre, forward);
  const double beside = dot(toCentre, toCentre) - along * along;
  if (beside > radius * radius) {
    return std::numeric_limits<double>::infinity();
  }
  return along - std::sqrt(radius * radius - beside);
}

// How many pixels pass a test, and where their middle is.
struct Drawn {
  int pixels = 0;
  double column = 0.0;
  double row = 0.0;
};

template <typename Test>
Drawn drawnWhere(const host::Image& image, const Test& test) {
  Drawn drawn;
  for (int row = 0; row < image.height(); ++row) {
    for (int column = 0; column < image.width(); ++column) {
      if (test(image.pixel(column, row))) {
        ++drawn.pixels;
        drawn.column += column + 0.5;
        drawn.row += row + 0.5;
      }
    }
  }
  if (drawn.pixels > 0) {
    drawn.column /= drawn.pixels;
    drawn.row /= drawn.pixels;
  }
  return drawn;
}

// How many pixels of a box have not the colour of the ground.
inline int changed(const host::Image& image, host::Rgb ground, const host::PixelBox& box) {
  return drawnWhere(image.cropped(box), [&](const host::Rgb& pixel) { return pixel != ground; }).pixels;
}

// The colours of the tests' dipoles, lit and faded; no mark, fiducial or gloss has them.
inline bool isReddish(const host::Rgb& pixel) {
  return pixel.red > 60 && pixel.red > 4 * pixel.green && pixel.red > 4 * pixel.blue;
}
inline bool isBluish(const host::Rgb& pixel) {
  return pixel.blue > 60 && pixel.blue > 4 * pixel.green && pixel.blue > 4 * pixel.red;
}
