// Atlases from files: an image of labels (NIfTI) and a text of their names. None comes with this program.
#pragma once

#include <filesystem>
#include <string>

#include "host/head/Atlas.h"

namespace host {

// Where Debian's package mricron-data has its atlases.
inline constexpr const char* atlasFolder = "/usr/share/mricron/templates";

struct AtlasFiles {
  std::filesystem::path image;
  std::filesystem::path names;  // empty: the text beside the image (aal.nii.txt for aal.nii.gz), if there
};

// What an argument names: "aal" and "brodmann" those of Debian's package, else "FILE" or "FILE,NAMES", UTF-8.
// Throws std::runtime_error, with what to do, when the package is not there.
AtlasFiles atlasFilesOf(const std::string& argument, const std::filesystem::path& folder = atlasFolder);

// One volume of whole numbers from 0 to 65535, 0 being no label, whose sform leads to MNI mm. Refused are:
// images without an sform, or with one that leads to Talairach's space; voxels below 0.1 or above 10 mm;
// more than 2^26 voxels, or none with a label; what is a picture rather than labels; atlases of the wrong
// side or of no human (host/head/KnownAtlases.h). Throws std::runtime_error that names the file and the
// cause. No memory is taken for voxels that are not there.
Atlas readAtlas(const AtlasFiles& files);

}  // namespace host
