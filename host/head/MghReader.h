// Reads MGH volumes; MGZ is the same packed with gzip.
#pragma once

#include "host/head/ByteSource.h"
#include "host/head/HeadReader.h"

namespace host {

// The first frame. The file's map leads to scanner mm; one that says that it has none gives a picture in
// which no dipole may be placed. What stands behind the voxels is left out. Throws std::runtime_error with
// the cause.
ReadHead readMgh(ByteSource& source);

}  // namespace host
