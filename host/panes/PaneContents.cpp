#include "host/panes/PaneContents.h"

#include <cmath>
#include <stdexcept>

#include "host/dipoles/DipoleScene.h"
#include "host/head/Limits.h"

namespace host {

Rgb colourOf(const PaneContents& contents, const CDipoles& dipole) {
  return contents.colours != nullptr ? colorOf(*contents.colours, dipole) : ownColour(dipole);
}

void checkCrosshair(const PaneContents& contents) {
  for (int axis = 0; axis < 3; ++axis) {
    if (!(std::abs(contents.crosshair[axis]) <= longestLength)) {
      throw std::invalid_argument("the crosshair must lie within 1000 mm of the head's origin");
    }
  }
}

}  // namespace host
