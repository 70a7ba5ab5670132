// What the header of a dipole file says, as the module keeps it in the set.
#pragma once

#include <string>
#include <string_view>

#include "module/dipole.h"

namespace host {

// A text that the module took from the line of a keyword ("PATIENT:") in a file's header, UTF-8. The module
// cuts as many characters off the line's front as the keyword has, so an indented keyword leaves its end
// there; that goes, and blanks around. Empty when the file gave none (the module then says "non").
std::string headerText(const CString& text, std::string_view keyword);

// The patient's name or number, whatever kind of file it came from; empty when there is none.
std::string patientOf(const CDipoleFace& set);

// The version of the file, likewise.
std::string versionOf(const CDipoleFace& set);

}  // namespace host
