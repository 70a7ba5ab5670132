// The dipole module's one header for hosts.
//
// The collection that a host creates, on the heap, and everything that it hands out. See
// file/DipoleFace9File.h and the layers below it for the operations, their units and frames.
//
// On Windows the classes come from dipole.dll: AFX_EXT_CLASS marks them as imported, as long as _AFXEXT is not
// defined. A host that is itself an extension library defines it, and has to redefine AFX_EXT_CLASS, after
// <afxwin.h>, as AFX_CLASS_IMPORT before it includes this header, and as AFX_CLASS_EXPORT afterwards.
#pragma once

#include "file/DipoleFace9File.h"
