// The dipoles of a set as text for other programs: a table of columns, or JSON with the same names. Empty
// slots are left out.
//
// Names carry their units: mm in the host's head frame (x to the left ear, y up, z to the nose), ms, percent.
// Numbers are the shortest text that reads back to the same number, with a point in every locale. What is not
// a number is nan, inf or -inf in a table and null in JSON. Texts are UTF-8; a half of a surrogate pair that
// stands alone becomes U+FFFD.
#pragma once

#include <string>

#include "module/dipole.h"
#include "tool/Output.h"

namespace tool {

// Quoted as RFC 4180 says, whatever the separator; lines end with a line feed alone.
std::string dipoleTable(const CDipoleFace& set, bool isMomentInNAm, char separator);

// A list with an object per dipole.
Json dipoleList(const CDipoleFace& set, bool isMomentInNAm);

}  // namespace tool
