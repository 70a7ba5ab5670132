// A head that is always at hand: to learn the viewer on, and to look at dipoles before their MRI is opened.
//
// Its grey values are those of a T1 picture: bright scalp and white matter, dark skull and fluid, eyes and
// nose in front. It is the same on both sides but for a bright capsule that lies on the skin of the
// patient's left temple, as one is taped there in a scanner to tell the sides.
#pragma once

#include "host/head/HeadFrame.h"
#include "host/head/Volume.h"

namespace host {

struct Phantom {
  Volume volume;  // voxels of 2 mm, the sides stated
  Fiducials fiducials;
  Vector3 capsule;  // its centre, scanner mm
};

// Throws what an allocation throws.
Phantom makePhantom();

}  // namespace host
