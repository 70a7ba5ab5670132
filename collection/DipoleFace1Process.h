// Layer 2 of the dipole collection: operations on the whole set.
//
// The whole-set translation (mm) and rotation (degrees) are kept beside the set, in m_sphereLocational and
// m_sphereRotation; the stored locations stay as they are.
#pragma once

#include "collection/DipoleFace.h"

class CDipoleFace1Process : public CDipoleFace {
 public:
  CDipoleFace1Process();
  CDipoleFace1Process(const CDipoleFace1Process&) = default;
  CDipoleFace1Process& operator=(const CDipoleFace1Process&) = default;
  ~CDipoleFace1Process() override;
};
