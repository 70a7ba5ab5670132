// The head of a page: its volume as a packed NIfTI-1 file, whose millimetres are the page's, and what is to
// be said of it. No text of the head's own file is in it.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "host/exchange/Json.h"
#include "host/head/Head.h"
#include "host/page/PageSource.h"

namespace host {

// A part of a volume: voxel indices from `first` up to, but without, `end`.
struct VoxelBox {
  std::array<int, 3> first{};
  std::array<int, 3> end{};

  friend bool operator==(const VoxelBox&, const VoxelBox&) = default;
};

// Where the head is, with a margin of 10 mm, and the voxels around the places as far as the volume has them,
// likewise. Places are mm in the head frame; those that are no numbers count for nothing.
VoxelBox headVoxels(const Head& head, const std::vector<Vector3>& places);

// Grey values as numbers from 0 to 255: value = slope * stored + intercept. Values beyond low and high are
// stored as these.
struct GreySteps {
  float slope = 1.0F;
  float intercept = 0.0F;
  bool isExact = true;  // every voxel keeps its value

  double low() const { return static_cast<double>(intercept); }
  double high() const { return low() + 255.0 * static_cast<double>(slope); }
};
// Whole numbers that are at most 255 apart stay what they are. Else the steps divide the values that are
// there, but at most from a tenth of the grey window below it to four tenths above.
GreySteps greyStepsOf(const Volume& volume, const VoxelBox& box);

struct PageHead {
  Json json;          // HeadData; null without a head
  std::string nifti;  // empty without a head
  std::string about;  // what was done to it, a sentence with its full stop; empty: nothing
};
// Without a head when the source's is absent or not registered. Throws std::runtime_error when it is too
// large.
PageHead pageHead(const PageSource& source);

// The grid of an atlas' labels in its own mm, as a packed NIfTI-1 file.
std::string atlasNifti(const Atlas& atlas);

}  // namespace host
