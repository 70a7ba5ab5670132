// Where a head on the screen comes from: an MRI file, with its fiducial points beside it, or the phantom.
#pragma once

#include <afx.h>

#include <string>

#include "host/head/Head.h"

namespace host {

// How far outside of a volume a fiducial point may lie, mm: ears are often cut off at its border.
inline constexpr double fiducialMargin = 25.0;

struct OpenedHead {
  Head head;
  std::string notice;  // UTF-8: what the user should know about it; empty when there is nothing
};

// Reads an MRI (NIfTI) and the fiducial points in the file of the same name with the ending ".fiducials"
// (head.fiducials for head.nii.gz), when there is one. Points that cannot be read or do not fit leave the
// head unregistered, and the notice says why. Throws std::runtime_error that names the file and the cause.
OpenedHead openHead(const CString& path);

// "Phantom", registered.
Head phantomHead();

// For dipoles without an MRI: absent, not registered, and not to be drawn.
Head noHead();

// Around the middle of a volume, its directions those of the scanner: for a head without fiducial points.
HeadFrame provisionalFrame(const Volume& volume);

// The head frame of points in a volume. Throws std::invalid_argument with the cause: HeadFrame's, or a point
// that lies farther outside of the volume than fiducialMargin.
HeadFrame frameIn(const Volume& volume, const Fiducials& points);

}  // namespace host
