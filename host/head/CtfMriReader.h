// Reads CTF MRI files.
#pragma once

#include "host/head/ByteSource.h"
#include "host/head/HeadReader.h"

namespace host {

// Version 2.2 (2.1 when `reading` takes it): a header of 1028 bytes, then the voxels. Throws
// std::runtime_error with the cause.
ReadHead readCtfMri2(ByteSource& source, const HeadReading& reading);

// Version 4.x: tags by name, in any order. At most 256 MiB of slices are held. Throws std::runtime_error with
// the cause.
ReadHead readCtfMri4(ByteSource& source);

}  // namespace host
