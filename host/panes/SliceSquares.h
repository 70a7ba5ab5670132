// The squares of dipoles on a slice: the module draws them, the host says which, how large and in which
// colours, and lays an edge below them.
#pragma once

#include <vector>

#include "host/paint/Image.h"
#include "host/panes/PaneGrid.h"
#include "module/dipole.h"

namespace host {

struct SliceSquare {
  int slot = 0;
  PixelPoint at;  // of the pane
  Rgb colour;
};

// How far a square of that size reaches to the left of and above its pixel.
constexpr int pixelsBefore(int size) {
  return (size - 1) / 2;
}

// Over the picture of a pane with that grid: squares of `size` pixels, centred on their pixels, with a border
// of `edge` pixels that is seen over anything. The current dipole is over all others. Members of the dipoles
// change while this lasts and are as before afterwards. Throws std::runtime_error when the drawing surface
// cannot be had.
void drawSquares(Image& image, CDipoleFace9File& dipoles, const PaneGrid& grid,
                 const std::vector<SliceSquare>& squares, int size, int edge);

}  // namespace host
