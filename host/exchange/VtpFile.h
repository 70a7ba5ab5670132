// A set as points of VTK's XML format (.vtp) for ParaView, PyVista and 3D Slicer: a vertex per dipole, its
// moment and orientation as vectors, numbers and texts as arrays. In single precision; nan is a value that is
// unknown.
#pragma once

#include <string>

#include "host/dipoles/UnknownValues.h"
#include "host/exchange/Losses.h"
#include "host/exchange/SetFrame.h"
#include "host/exchange/SetPlaces.h"
#include "module/dipole.h"

namespace host {

struct VtpFile {
  std::string xml;
  Losses losses;
};

// The frame, its unit and the fiducial points that it was made with stand in the file's field data; so does,
// for frames that are right, front, up, the word that tells 3D Slicer so. `places` are two arrays more, a
// dipole without one having an empty text and nan.
VtpFile vtpFile(const CDipoleFace9File& set, const UnknownValues& unknown, const SetFrame& frame,
                const SetPlaces* places = nullptr);

}  // namespace host
