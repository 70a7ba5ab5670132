// The words of a slice picture.
#pragma once

#include <string>

#include "host/picture/View.h"

namespace host {

// mm with one decimal, or two where the second is not 0; never "-0.0".
std::string formatMm(double mm);
// Such as "y = 58.0 mm (up)"; the word says on which side of the origin the slice lies.
std::string positionText(View view, double position);

}  // namespace host
