// The dipoles of a set as values with names, and as a table for other programs. Empty slots are left out.
//
// Names carry their units: mm in the host's head frame (x to the left ear, y up, z to the nose), ms, percent.
// Texts are UTF-8; a half of a surrogate pair that stands alone becomes U+FFFD.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "module/dipole.h"

namespace host {

struct DipoleField {
  const char* name;
  std::variant<bool, int, double, std::string> value;
};

// All fields of a dipole, always the same ones in the same order; a moment's name says nAm only when it is.
[[nodiscard]] std::vector<DipoleField> fieldsOf(const CDipoleszq& dipole, bool isMomentInNAm);

// Quoted as RFC 4180 says, whatever the separator; lines end with a line feed alone. Numbers are the shortest
// text that reads back to the same number, with a point in every locale; nan, inf or -inf for what is none.
[[nodiscard]] std::string dipoleTable(const CDipoleFace& set, bool isMomentInNAm, char separator);

}  // namespace host
