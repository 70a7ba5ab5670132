// Pictures of dipoles for a page, made by the panes of a window: slices beside each other at one scale, or
// one view in 3D.
#pragma once

#include <string>
#include <vector>

#include "host/paint/Image.h"
#include "host/paint/SceneCamera.h"
#include "host/panes/PaneContents.h"
#include "host/panes/PaneMarks.h"
#include "host/panes/PicturePage.h"
#include "host/picture/View.h"

namespace host {

struct SliceRow {
  std::string heading;  // UTF-8; may be empty
  std::vector<SliceRequest> slices;
};

struct DipolePicture {
  Image image;
  std::vector<PaneTexts> panes;  // of each pane, in the order of the rows
};

// The slices through a place.
std::vector<SliceRequest> slicesThrough(const Vector3& place);
// The three slices through a dipole, under what is known of it.
SliceRow rowThrough(const PaneContents& contents, int slot);

// How much larger than on a screen texts and marks are in a picture of that scale, so that they keep their
// size against the head.
double textScale(double mmPerPixel);
// The side of a dipole's square there that has `usual` pixels on a screen: as large against the head, but
// never so small that it is not seen.
int glyphPixels(int usual, double mmPerPixel);

// The contents' crosshair counts for nothing. The page gets the contents' scale, and notes on how to read it.
// Throws std::invalid_argument when mmPerPixel or a position is out of its range (see host/head/Limits.h) or
// there is no slice, std::runtime_error when the picture would be too large.
DipolePicture slicesPicture(const PaneContents& contents, const std::vector<SliceRow>& rows,
                            double mmPerPixel, PageTexts texts);

// With these slices; without any those through the crosshair, as far as the head is registered.
DipolePicture scenePicture(const PaneContents& contents, const ViewAngles& angles,
                           const std::vector<SliceRequest>& slices, double mmPerPixel, PageTexts texts);

}  // namespace host
