// A picture of a part of the screen, as the user sees it, in a BMP file of 24 bits.
#pragma once

#include <string>
#include <windows.h>

// `place` in pixels of the screen; the pointer is drawn over it where asked for. Returns whether the file was
// written (its path in the system's code page).
bool savePicture(const RECT& place, const std::string& path, bool withPointer = false);
