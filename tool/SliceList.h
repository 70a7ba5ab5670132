// The slices to draw, as a user writes them: "axial:58,coronal:12,sagittal:52".
#pragma once

#include <string>
#include <vector>

#include "host/picture/View.h"

namespace tool {

// One view or more, each with its position in mm in the head frame (axial y, coronal z, sagittal x), no
// farther from the origin than host::headReach. Throws std::invalid_argument that names the part and the
// cause.
std::vector<host::SliceRequest> parseSlices(const std::string& text);

}  // namespace tool
