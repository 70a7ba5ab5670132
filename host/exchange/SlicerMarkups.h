// A set as markups of 3D Slicer (.mrk.json, schema 1.0.3): as lists of points, one for each color of the
// dipoles, or as a line per dipole from its place along its orientation, for Slicer does not show the
// orientation of a point.
//
// Slicer takes all places as mm to the right, front and above; so the frame has to be one of these, and the
// name of each list says which.
#pragma once

#include <string>

#include "host/dipoles/UnknownValues.h"
#include "host/exchange/Losses.h"
#include "host/exchange/SetFrame.h"
#include "host/exchange/SetPlaces.h"
#include "module/dipole.h"

namespace host {

struct SlicerMarkups {
  std::string json;
  Losses losses;
};

enum class SlicerKind { points, arrows };

// Dipoles whose place is no number are left out, arrows also without an orientation, and told. `places` stand
// in the descriptions of the points.
SlicerMarkups slicerMarkups(const CDipoleFace9File& set, const UnknownValues& unknown, const SetFrame& frame,
                            SlicerKind kind, const SetPlaces* places = nullptr);

}  // namespace host
