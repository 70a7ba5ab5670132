// The three fiducial points of a head, as a user gives them to the program.
#pragma once

#include <string>

#include "host/head/HeadFrame.h"

namespace tool {

// Scanner mm (right, anterior, superior positive), from either
//   - three triples "nx,ny,nz lx,ly,lz rx,ry,rz": nasion, left ear, right ear; or
//   - the name of a fiducial file, see host/head/FiducialFile.h.
// Throws std::runtime_error that names the file, the line and the cause.
host::Fiducials readFiducials(const std::string& argument);

}  // namespace tool
