// The MRI that a dipole file names.
#pragma once

#include <afx.h>

#include <filesystem>

namespace host {

// Looks for it in the dipole file's own folder and nowhere else, whatever folders the name has before it: the
// name as it is, then one that differs in large and small letters only. Empty when no file of the name is
// there, or several are that differ in their letters.
std::filesystem::path findNamedMri(const std::filesystem::path& dipoleFile, const CString& name);

// The last part of such a name, behind / or \, without the blanks around it and what the module leaves of an
// indented keyword before it (host/dipoles/HeaderText.h); empty when it names none.
CString lastPartOf(const CString& name);

}  // namespace host
