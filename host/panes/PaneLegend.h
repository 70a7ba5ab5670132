// The legend of the dipoles' colours in a pane: a strip of its own at the right border, over nothing.
#pragma once

#include "host/paint/Image.h"
#include "host/panes/PaneContents.h"

namespace host {

// For a pane of that size, pixels; empty when there are no colours by value, no legend is wished for, or it
// would take more than a third of the width.
Image legendOf(const PaneContents& contents, int width, int height);

// The picture with a legend at its right; without one just the picture.
Image withLegend(Image picture, const Image& legend);

}  // namespace host
