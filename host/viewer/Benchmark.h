// What the viewer makes its user wait for, measured on its own windows.
#pragma once

#include <afx.h>

#include <vector>

namespace host {

class MainFrame;

// Writes a report of lines "what: median ms, longest ms, of the processor ms on the average": the first
// picture of a head of 256 x 256 x 256 voxels (a NIfTI file written for it, read and drawn), then that of
// each of `heads`, a change of slice, the crosshair in all panes, and, with 30000 dipoles, one turn in 3D, a
// slice, and a step to the next dipole with the manager open. The set and head that were open are gone
// afterwards; nothing is saved. Throws std::runtime_error when a file cannot be written.
void writeBenchmark(MainFrame& frame, const CString& path, const std::vector<CString>& heads);

}  // namespace host
