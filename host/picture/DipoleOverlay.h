// The module's dipoles over one slice picture, and the account of which of them can be seen there. Lengths
// are mm in the head frame (x left, y up, z front).
#pragma once

#include <optional>

#include "host/paint/Image.h"
#include "host/picture/SliceGeometry.h"
#include "host/picture/View.h"
#include "module/dipole.h"

namespace host {

struct OverlayReport {
  View view = View::axial;
  double position = 0.0;  // of the slice that was drawn, mm along the view's slab axis
  // The depths from which dipoles were drawn, mm along the same axis; nothing when the slice shows none by
  // rule.
  std::optional<Slab> shown;
  int total = 0;    // dipoles in the set
  int drawn = 0;    // dipoles with a square in the picture
  int outside = 0;  // of those drawn: beyond the grid, their square stands at its border and not in its place
  int switchedOff = 0;  // in the depths shown, but hidden by their display state, their size or their set
  int nowhere = 0;      // with a coordinate that is not a number
  // No farther from the slice than the overlap, yet not drawn, though switched on: on axial slices the
  // dipoles below the origin.
  int withheld = 0;
  // All squares drawn, cut to the picture; nothing when there are none.
  std::optional<PixelBox> squares;
};

// Lets the module draw its dipoles on the picture of one slice, which must have the geometry's columns and
// rows. While the set's overlap switch is on, the dipoles of all slices within overlapMm are drawn too. An
// axial slice shows, by the module's rule, all dipoles from the origin plane up to it, and a slice below the
// origin none. When all squares are of one size they are
// centred on their pixel, else they hang to the right of and below it, as the module draws them. Throws
// std::invalid_argument for an overlap that is negative or above 1000 mm, std::runtime_error when the drawing
// surface cannot be had.
OverlayReport drawDipoles(CDipoleFace8Import01_CTF& dipoles, const SliceGeometry& geometry, View view,
                          double position, double overlapMm, Image& picture);

// Lets the module draw the dipoles of one slice of its volume, a pixel for each cell of it.
void drawSlice(CDipoleFace2On2DView& dipoles, CDC& dc, View view, int slice);

}  // namespace host
