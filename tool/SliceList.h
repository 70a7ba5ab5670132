// The slices to draw, as a user writes them: "axial:58,coronal:12,sagittal:52".
#pragma once

#include <string>
#include <vector>

#include "host/picture/SlicePicture.h"

namespace tool {

// One to three views, each with its position in mm in the head frame (axial y, coronal z, sagittal x), no
// farther than 300 mm from the origin. Throws std::invalid_argument that names the part and the cause.
std::vector<host::SliceRequest> parseSlices(const std::string& text);

}  // namespace tool
