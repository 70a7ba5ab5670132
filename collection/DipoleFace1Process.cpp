#include "collection/DipoleFace1Process.h"

CDipoleFace1Process::CDipoleFace1Process() {
  m_sphereRotation.zeroSphere();
}

CDipoleFace1Process::~CDipoleFace1Process() = default;
