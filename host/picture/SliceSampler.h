// Grey values of a volume on a flat grid of places, row by row: what a picture of a slice is made of.
#pragma once

#include <span>
#include <vector>

#include "host/head/HeadFrame.h"
#include "host/head/Vector3.h"
#include "host/head/Volume.h"
#include "host/paint/Image.h"

namespace host {

// mm in the head frame (x left, y up, z front): the place of the first sample, and the steps from one sample
// to the next in a row and from one row to the next.
struct SampleGrid {
  Vector3 first;
  Vector3 perColumn;
  Vector3 perRow;
  int columns = 0;
  int rows = 0;

  friend bool operator==(const SampleGrid&, const SampleGrid&) = default;
};

// The values of Volume::sampleIndex at the places of the grid, in single precision.
std::vector<float> sampleSlice(const Volume& volume, const HeadFrame& frame, const SampleGrid& grid);

// The values as GreyWindow::grey shows them. Their number must be that of the pixels.
Image greyPicture(std::span<const float> values, int columns, int rows, const GreyWindow& window);

}  // namespace host
