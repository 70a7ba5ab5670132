// Pictures as PNG files, by the imaging component of Windows.
#pragma once

#include <afxwin.h>

#include "host/paint/Image.h"

namespace host {

// Replaces the file as a whole or not at all. Throws std::runtime_error that names file and cause.
void writePng(const Image& image, const CString& path);

}  // namespace host
