#include "host/picture/DisplayOverride.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace host {

DisplayOverride::DisplayOverride(CDipoleFace2On2DView& set) : m_set(set) {
  std::copy(std::begin(set.m_dimension), std::end(set.m_dimension), m_dimension.begin());
  std::copy(std::begin(set.m_space), std::end(set.m_space), m_space.begin());
  m_kept.reserve(static_cast<std::size_t>((std::max)(set.m_totalDipoles, 0)));
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (CDipoleszq* dipole = set.m_dipoles[slot]) {
      m_kept.push_back({dipole,
                        dipole->m_display,
                        dipole->m_size,
                        dipole->m_color,
                        {dipole->m_dimX, dipole->m_dimY, dipole->m_dimZ}});
    }
  }
  // Only now: no exception has left a dipole changed.
  for (const Kept& kept : m_kept) {
    kept.dipole->m_display = 0;
  }
}

DisplayOverride::~DisplayOverride() {
  for (const Kept& kept : m_kept) {
    kept.dipole->m_display = kept.display;
    kept.dipole->m_size = kept.size;
    kept.dipole->m_color = kept.colour;
    kept.dipole->setDimensionXYZ(kept.dimensions[0], kept.dimensions[1], kept.dimensions[2]);
  }
  std::copy(m_dimension.begin(), m_dimension.end(), std::begin(m_set.m_dimension));
  std::copy(m_space.begin(), m_space.end(), std::begin(m_set.m_space));
}

void DisplayOverride::show(int slot, int size, COLORREF colour) {
  CDipoleszq& dipole = *m_set.m_dipoles[slot];
  dipole.m_display = 1;
  dipole.m_size = size;
  dipole.m_color = colour;
}

}  // namespace host
