// Writes a picture as a PNG file.
#pragma once

#include <string>

#include "host/paint/Image.h"

namespace tool {

// The target is afterwards either the whole picture or what it was before, see ReplacingFile.h. Throws
// std::runtime_error that names the target and the cause.
void writePng(const host::Image& image, const std::string& target);

}  // namespace tool
