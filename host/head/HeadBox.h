// The part of the head frame (mm; x left, y up, z front) that holds the head in a volume.
#pragma once

#include "host/head/HeadFrame.h"
#include "host/head/Vector3.h"
#include "host/head/Volume.h"

namespace host {

struct HeadBox {
  Vector3 low;
  Vector3 high;
};

// The box around what is brighter than the dark tenth of the grey window. Scattered bright voxels in the air
// do not count. Both corners are the origin when nothing is bright. What lies farther from the origin than
// headReach is left out.
HeadBox findHead(const Volume& volume, const HeadFrame& frame);

}  // namespace host
