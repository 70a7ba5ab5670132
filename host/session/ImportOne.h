// The import of one file of dipoles, whole or not at all.
#pragma once

#include <afxwin.h>

#include <filesystem>

#include "module/dipole.h"

namespace host {

// Adds the dipoles of a file to a set as the module does, by the ending of its name, and returns how many
// came. 0: the file is not there, has another ending, holds none, or could not be read to its end; the set
// has nothing of it then. Throws what an allocation throws; the set may then hold a part of it.
int importOne(CDipoleFace9File& set, const CString& path);

// An import makes the file's folder the current one; it is what it was after a scope.
class CurrentFolderKept {
 public:
  CurrentFolderKept();
  ~CurrentFolderKept();
  CurrentFolderKept(const CurrentFolderKept&) = delete;
  CurrentFolderKept& operator=(const CurrentFolderKept&) = delete;

 private:
  std::filesystem::path m_folder;
};

}  // namespace host
