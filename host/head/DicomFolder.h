// A series of DICOM files as a head, by way of the program dcm2niix.
#pragma once

#include <filesystem>

#include "host/head/HeadReader.h"

namespace host {

// The folder, with those in it, has to hold one series, which becomes a NIfTI file in a temporary folder;
// that is gone in the end, however this ends. Throws std::runtime_error with the cause: the program is not
// there, or fails; there is no picture, or more than one; the program doubts where the pictures lie.
ReadHead readDicomFolder(const std::filesystem::path& folder);

}  // namespace host
