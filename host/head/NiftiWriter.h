// Writes a volume as a NIfTI-1 file.
#pragma once

#include <afx.h>

#include "host/head/MriSpace.h"
#include "host/head/Volume.h"

namespace host {

// Whole numbers from 0 to 65535, or from -32768 to 32767, are written with two bytes, others as floats.
// The map stands there as the sform and, when its axes stand at right angles, as the qform;
// each with the code of the space; those around its middle get code 2, and the description says so. A volume
// whose sides are not stated gets neither. Packed with gzip when
// the name ends in .gz. Throws std::runtime_error as writeSafely does (host/text/SafeFile.h).
void writeNifti(const CString& path, const Volume& volume, MriSpace space);

}  // namespace host
