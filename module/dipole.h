// The dipole module's one header for hosts.
//
// The collection that a host creates, on the heap, and everything that it hands out. See
// file/DipoleFace9File.h and the layers below it for the operations, their units and frames.
#pragma once

#include "file/DipoleFace9File.h"
