// Shaded balls and arrows in a picture with depth. Places are screen points of SceneCamera (pixels, depth in
// mm); every pixel gets the depth of the surface that it shows.
#pragma once

#include "host/paint/DepthPicture.h"
#include "host/paint/SceneCamera.h"

namespace host {

// A ball of that many pixels and mm. A pixel shows it when its centre lies inside of the circle.
void drawBall(DepthPicture& picture, const ScreenPoint& centre, double radiusPixels, double radiusMm,
              Rgb colour);

// All mm.
struct ArrowShape {
  double shaftRadius = 0.8;
  double headRadius = 2.0;
  double headLength = 6.0;  // never more than half of the arrow
};

// An arrow from one head point to another: a cylinder and a cone whose tip is the end. Points at one place
// draw nothing.
void drawArrow(DepthPicture& picture, const SceneCamera& camera, const Vector3& from, const Vector3& to,
               const ArrowShape& shape, Rgb colour);

}  // namespace host
