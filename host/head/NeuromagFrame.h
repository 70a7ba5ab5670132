// The Neuromag head frame, in mm: the origin is the foot of the perpendicular from the nasion on the line of
// the ears, x runs from there through the right ear, y through the nasion, z up. It differs from the head
// frame of the dipoles (host/head/HeadFrame.h) by a turn about the vertical and a shift along the ears,
// unless the ears lie symmetric to the nasion.
#pragma once

#include "host/head/Affine.h"
#include "host/head/HeadFrame.h"

namespace host {

// From the Neuromag frame of these points to the scanner's. The points have to be those of a head, as
// HeadFrame asks for them.
Affine neuromagToScanner(const Fiducials& points);

// Between the two head frames of the same points. Throws what HeadFrame throws.
Affine neuromagToHead(const Fiducials& points);
Affine headToNeuromag(const Fiducials& points);

// The same where nobody knows the points: as if the ears lay symmetric.
Affine symmetricNeuromagToHead();
Affine headToSymmetricNeuromag();

// A direction under a map of points.
inline Vector3 turned(const Affine& map, const Vector3& direction) {
  return map.column(0) * direction.x + map.column(1) * direction.y + map.column(2) * direction.z;
}

}  // namespace host
