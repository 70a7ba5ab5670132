// A set as a CTF dipole file, in the layout of CTF's own programs (docs/formats.md): File_Info, Model,
// MEG_Sphere, Fid_Points, Dipoles, Dipole_Flags and Dipole_FitInfo, each with what the set has for it.
// Positions in cm and latencies in s; 8-bit text in the system's code page.
//
// The import reads numbers in single precision and multiplies by 10 and 1000: a number is written as the one
// that the import makes the member of, so a set that was imported comes back bit by bit. A member that no
// number gives gets the nearest.
#pragma once

#include <string>

#include "host/dipoles/UnknownValues.h"
#include "host/exchange/Losses.h"
#include "module/dipole.h"

namespace host {

struct CtfText {
  std::string text;
  Losses losses;
};

CtfText ctfText(const CDipoleFace9File& set, const UnknownValues& unknown);

}  // namespace host
