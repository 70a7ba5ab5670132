// The three fiducial points of a head, as a user gives them to the program.
#pragma once

#include <optional>
#include <string>

#include "host/head/HeadFrame.h"

namespace tool {

// Scanner mm (right, anterior, superior positive), from either
//   - three triples "nx,ny,nz lx,ly,lz rx,ry,rz": nasion, left ear, right ear; or
//   - the name of a fiducial file, see host/head/FiducialFile.h.
// Throws std::runtime_error that names the file, the line and the cause.
host::Fiducials readFiducials(const std::string& argument);

// Those of the argument, or, when it is empty, those that come with an MRI; nothing when that has none, or
// there is no MRI. Throws std::runtime_error as readFiducials, and when the points are no head.
std::optional<host::Fiducials> givenFiducials(const std::string& argument, const std::string& mri);

}  // namespace tool
