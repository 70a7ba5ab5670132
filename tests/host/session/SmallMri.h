// An MRI of 200 x 240 x 220 mm, and fiducial points that fit it.
#pragma once

#include <string>

#include "tests/host/head/NiftiFile.h"

inline constexpr const char* points = "nasion 0 95 -20\nleft -75 -10 -40\nright 75 -10 -40\n";

inline std::string mri() {
  NiftiFile file;
  file.dim = {3, 40, 48, 44, 1, 1, 1, 1};
  file.pixdim = {1, 5, 5, 5, 0, 0, 0, 0};
  file.srow = {5, 0, 0, -100, 0, 5, 0, -120, 0, 0, 5, -110};
  file.count();
  return file.version1();
}
