// What a file is, by the ending of its name.
#pragma once

#include <afx.h>

namespace host {

// In the order in which a viewer opens files: dipoles come to a head and a set that are there already.
enum class FileKind {
  mri,     // .nii, .nii.gz
  set,     // .dipset
  dipoles  // everything else: the importers look into it
};

[[nodiscard]] FileKind kindOf(const CString& path);

}  // namespace host
