// Lets a host draw dipoles with other sizes and colours than they have, and only some of them: what the
// module's drawing reads and writes is as before when the object goes, bit by bit.
#pragma once

#include <afxwin.h>

#include <array>
#include <vector>

#include "module/dipole.h"

namespace host {

class DisplayOverride {
 public:
  // Switches every dipole of the set off on slices. The set must not change otherwise while the object
  // lives.
  explicit DisplayOverride(CDipoleFace2On2DView& set);
  ~DisplayOverride();
  DisplayOverride(const DisplayOverride&) = delete;
  DisplayOverride& operator=(const DisplayOverride&) = delete;

  // Switches the dipole of a filled slot on, with a square of that many pixels.
  void show(int slot, int size, COLORREF colour);

 private:
  struct Kept {
    CDipoleszq* dipole;
    int display;
    double size;
    COLORREF colour;
    std::array<int, 3> dimensions;
  };

  CDipoleFace2On2DView& m_set;
  std::array<int, 3> m_dimension;
  std::array<double, 3> m_space;
  std::vector<Kept> m_kept;
};

}  // namespace host
