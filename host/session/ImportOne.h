// The import of one file of dipoles, whole or not at all.
#pragma once

#include <afxwin.h>

#include <string>

#include "module/dipole.h"

namespace host {

struct ImportedFile {
  int dipoles = 0;    // that came
  std::string cause;  // UTF-8: why none came, such as "it holds no dipoles"; else empty
};

// Adds the dipoles of a file to a set as the module does, by the ending of its name. When none came the file
// is not there, has another ending, holds none, or could not be read to its end; the set has nothing of it
// then. The current folder stays. Throws what an allocation throws; the set may then hold a part of it.
[[nodiscard]] ImportedFile importOne(CDipoleFace9File& set, const CString& path);

}  // namespace host
