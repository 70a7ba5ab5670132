// Place and orientation of a dipole as vectors, in the frame that the set is in.
#pragma once

#include "host/head/Vector3.h"
#include "module/dipole.h"

namespace host {

// mm.
inline Vector3 placeOf(const CDipoles& dipole) {
  return {dipole.m_location[0], dipole.m_location[1], dipole.m_location[2]};
}

// As it is, of any length.
inline Vector3 orientationOf(const CDipoles& dipole) {
  return {dipole.m_orientation[0], dipole.m_orientation[1], dipole.m_orientation[2]};
}

}  // namespace host
