// Reads the MRI of a head from a file of any format that is known, which its content tells, not its name.
#pragma once

#include <filesystem>
#include <optional>

#include "host/head/HeadSource.h"
#include "host/head/Volume.h"

namespace host {

struct HeadReading {
  bool takesCtf21 = false;  // CTF MRI 2.1, whose layout only one source tells
};

struct ReadHead {
  Volume volume;
  HeadSource source;
  std::optional<Fiducials> fiducials;  // the file's own, scanner mm
};

// NIfTI (also as a pair of .hdr and .img, by either of their names), CTF MRI 2.2 and 4.x, MGH and MGZ; each
// also packed with gzip; a folder with a series of DICOM files (host/head/DicomFolder.h). Throws
// std::runtime_error, whose text (UTF-8) names the file and the cause. No memory is taken for voxels that are
// not there.
ReadHead readHead(const std::filesystem::path& path, const HeadReading& reading = {});

// Whether a file begins as one of these; false also when it cannot be read.
bool isHead(const std::filesystem::path& path);

// Whether it is a CTF MRI of version 2.1, which readHead takes only when asked for.
bool isCtf21(const std::filesystem::path& path);

}  // namespace host
