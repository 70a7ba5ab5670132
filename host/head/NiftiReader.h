// Reads a volume from a NIfTI-1 or NIfTI-2 file (.nii, or .nii.gz packed with gzip), of either byte order.
#pragma once

#include <filesystem>

#include "host/head/Volume.h"

namespace host {

// The first volume of the file, its values scaled as the file says, its map in scanner mm: from the sform,
// else from the qform, else from the voxel size alone (then Volume::sidesStated() is false). Voxels that are
// not finite become 0. Pairs of .hdr and .img, colours and complex numbers are refused. Throws
// std::runtime_error, whose text (UTF-8) names the file and the cause. No memory is taken for voxels that are
// not there.
Volume readNifti(const std::filesystem::path& path);

}  // namespace host
