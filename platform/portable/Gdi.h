// CBitmap and CDC: drawing into a bitmap. A memory bitmap here; on Windows a thin skin over the system's own.
//
// Bitmaps have 32 bits per pixel, bytes blue, green, red, 0; rows from the top, without gaps. Coordinates are
// pixels, y down, moved by the viewport origin. Any int is a safe coordinate: what lies outside is not drawn.
#pragma once

#include "platform/portable/Geometry.h"
#include "platform/portable/Object.h"

#ifdef _WIN32
#include "platform/windows/GdiClasses.h"
#else
#include "platform/native/GdiClasses.h"
#endif
