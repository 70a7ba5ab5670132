// The small files that MNE-Python and its kin keep beside the MRI of a head, and that register it: fiducial
// points (*-fiducials.fif), and the way from the Neuromag head frame to the MRI (*-trans.fif).
//
// A .fif file is a row of tags, each with a header of four big-endian numbers of 32 bits (kind, type, bytes,
// where the next one stands) and its bytes. Lengths in it are metres. A number names the frame of a point.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "host/head/Affine.h"
#include "host/head/FramedPoints.h"

namespace host {

// By its first tag.
bool isFif(std::string_view bytes);

// The three cardinal points, in mm of the frame that the file names: 5 is the surface's, 4 the Neuromag head
// frame, 2002 the scanner's. Throws std::invalid_argument with the cause, also for points of other frames.
FramedPoints fifPoints(std::string_view bytes);

// From the Neuromag head frame to the MRI's surface frame (host/head/HeadPlacement.h), mm. The file may hold
// either way. Throws std::invalid_argument with the cause: another pair of frames, or no turn and shift of a
// rigid body. The inverse that also stands in the file is not looked at: it is made of the other.
Affine fifHeadToSurface(std::string_view bytes);

// Of a file. Throws std::runtime_error that names it.
Affine readHeadToSurface(const std::filesystem::path& path);

}  // namespace host
