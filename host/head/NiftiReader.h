// Reads NIfTI-1 and NIfTI-2 files (.nii, or a pair of .hdr and .img), of either byte order.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "host/head/HeadReader.h"
#include "host/head/NiftiHeader.h"

namespace host {

struct NiftiImage {
  NiftiHeader header;
  std::vector<float> voxels;  // of the first volume, scaled as the file says; what is not finite becomes 0
};

// What refuses a file by its header, before memory is taken for voxels: it throws std::runtime_error.
using NiftiCheck = std::function<void(const NiftiHeader&)>;
// Of readNifti, for what is not a head.
NiftiImage readNiftiImage(const std::filesystem::path& path, const NiftiCheck& check = {});

// The first volume of the file, its values scaled as the file says, its map in scanner mm: from the sform,
// else from the qform, else from the voxel size alone (then Volume::sidesStated() is false). Voxels that are
// not finite become 0. The path is that of the header; the voxels of a pair stand beside it. Colours and
// complex numbers are refused. Throws std::runtime_error with the cause. No memory is taken for voxels that
// are not there.
ReadHead readNifti(const std::filesystem::path& path);

// The header of a pair that belongs to a file of voxels: head.hdr for head.img, packed or not; empty when the
// name is none of such a file, or there is no header.
std::filesystem::path niftiHeaderBeside(const std::filesystem::path& voxels);

}  // namespace host
