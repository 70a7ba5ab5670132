// Lets a host draw a dipole with another size and colour than it has: what the module's drawing reads and
// writes of it is as before when the object goes, bit by bit.
#pragma once

#include <afxwin.h>

#include <array>

#include "module/dipole.h"

namespace host {

class DisplayOverride {
 public:
  // Switches the dipole on for slices, with a square of that many pixels. It must not change otherwise while
  // the object lives, but for the volume's dimensions.
  DisplayOverride(CDipoleszq& dipole, int size, COLORREF colour);
  ~DisplayOverride();
  DisplayOverride(const DisplayOverride&) = delete;
  DisplayOverride& operator=(const DisplayOverride&) = delete;

 private:
  CDipoleszq& m_dipole;
  int m_display;
  double m_size;
  COLORREF m_colour;
  std::array<int, 3> m_dimensions;
};

}  // namespace host
