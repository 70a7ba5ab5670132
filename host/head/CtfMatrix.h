// The head matrix of a CTF MRI against its fiducial points.
#pragma once

#include <string>

#include "host/head/CtfMri.h"

namespace host {

struct CtfMatrixVerdict {
  bool agrees = true;
  bool sidesDiffer = false;  // its left is the right of the points
  std::string text;          // without a full stop
};

// The mri has points. They are taken as stored; the matrix says where the head's nasion and ears lie among
// the voxel numbers, which has to be within 1.5 voxels of the points.
CtfMatrixVerdict judgeCtfMatrix(const CtfMri& mri);

}  // namespace host
