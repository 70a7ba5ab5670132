// The dipole module's one header for hosts.
//
// CDipoleFacezq, the collection that a host creates, on the heap, and everything that it hands out. See
// ui/DipoleFacezq.h and the layers below it for the operations, their units and frames. Without windows, on other
// systems, CDipoleFacezq is declared but not defined; a program there creates the layer below, CDipoleFace9File.
//
// On Windows the classes come from dipole.dll: AFX_EXT_CLASS marks them as imported, as long as _AFXEXT is not
// defined. A host that is itself an extension library defines it, and has to redefine AFX_EXT_CLASS, after
// <afxwin.h>, as AFX_CLASS_IMPORT before it includes this header, and as AFX_CLASS_EXPORT afterwards.
#pragma once

#include "ui/DipoleFacezq.h"
