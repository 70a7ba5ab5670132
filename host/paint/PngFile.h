// Pictures as PNG files.
#pragma once

#include <afx.h>

#include <string>

#include "host/paint/Image.h"

namespace host {

// A whole PNG file in memory: RGB of 8 bits, sRGB. Throws std::runtime_error when there is no memory for it.
std::string pngBytes(const Image& image);

// Replaces the file as a whole or not at all, see host/text/SafeFile.h. Throws std::runtime_error that names
// file and cause.
void writePng(const Image& image, const CString& path);

}  // namespace host
