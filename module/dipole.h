// The dipole module's one header for hosts.
//
// CDipoleFacezq, the collection that a host creates, on the heap, and everything that it hands out. See
// ui/DipoleFacezq.h and the layers below it for the operations, their units and frames. On systems without
// its windows CDipoleFacezq is declared but not defined: a program creates the layer below, CDipoleFace9File.
//
// On Windows the classes come from dipole.dll, with every operation, also those that a compiler would make:
// their headers define none. AFX_EXT_CLASS imports them, as long as _AFXEXT is not defined. A host that is
// itself an extension library defines it; it has to redefine AFX_EXT_CLASS, behind <afxwin.h>, as
// AFX_CLASS_IMPORT before it includes this header, and as AFX_CLASS_EXPORT afterwards.
#pragma once

#include "ui/DipoleFacezq.h"
