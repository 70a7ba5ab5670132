#include "host/picture/DisplayOverride.h"

namespace host {

DisplayOverride::DisplayOverride(CDipoleszq& dipole, int size, COLORREF colour)
    : m_dipole(dipole),
      m_display(dipole.m_display),
      m_size(dipole.m_size),
      m_colour(dipole.m_color),
      m_dimensions{dipole.m_dimX, dipole.m_dimY, dipole.m_dimZ} {
  dipole.m_display = 1;
  dipole.m_size = size;
  dipole.m_color = colour;
}

DisplayOverride::~DisplayOverride() {
  m_dipole.m_display = m_display;
  m_dipole.m_size = m_size;
  m_dipole.m_color = m_colour;
  m_dipole.setDimensionXYZ(m_dimensions[0], m_dimensions[1], m_dimensions[2]);
}

}  // namespace host
