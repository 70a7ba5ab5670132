// What the file of a head says about itself, beside its picture.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/head/HeadFrame.h"
#include "host/head/MriSpace.h"
#include "host/head/Vector3.h"

namespace host {

enum class Doubt {
  note,      // nothing that is used is in doubt
  doubtful,  // what is used may be wrong
  unusual    // the points are no head's: they are used only by those who say that they know
};

struct HeadRemark {
  Doubt doubt = Doubt::note;
  std::string text;  // UTF-8, a whole sentence without its full stop
};

// Fiducial points as numbers of a CTF MRI: sagittal, coronal and axial voxel number, in stored order,
// whatever the number of the first voxel is.
struct SliceNumbers {
  Fiducials numbers;
  Vector3 spacing;  // sagittal, coronal, axial mm
};

struct HeadSource {
  std::string format;            // "NIfTI-1", "CTF MRI 2.2", "MGZ"; empty: no file
  std::string sides;             // where the knowledge of left and right comes from
  std::string matrix;            // what the file's own head matrix is worth; empty: such files have none
  bool hasSurfaceFrame = false;  // an MRI that surfaces are made from (host/head/HeadPlacement.h)
  MriSpace space = MriSpace::scanner;  // what "scanner mm" are of it
  std::string spaceCode;               // where its file says so: "sform code 4"; empty: nowhere
  std::string unplaceable;             // why no dipole may be placed in it; empty: they may
  std::vector<HeadRemark> remarks;
  std::optional<SliceNumbers> slices;  // of a CTF MRI whose points are usable
};

}  // namespace host
