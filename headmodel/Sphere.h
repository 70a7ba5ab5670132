// Layer 1 of the sphere head model: the data.
//
// A sphere is a centre and a radius, mm in the host's head frame (x to the left ear, y up, z to the nose).
// The module also uses one as a plain store of three doubles and a mark: a dipole's raw backups keep the
// backed-up triple in m_center and "taken" (1.0) or "not taken" (0.0) in m_radius; the whole-set rotation
// keeps three angles in degrees in m_center.
#pragma once

#include <afx.h>

class AFX_EXT_CLASS CSphere {
 public:
  CSphere();
  CSphere(const CSphere&);
  CSphere& operator=(const CSphere&);
  CSphere(CSphere&&) noexcept;
  CSphere& operator=(CSphere&&) noexcept;
  virtual ~CSphere();

  // Sets centre and radius to 0.0 and leaves the auxiliary members alone. Returns 1.
  int zeroSphere();

  double m_center[3] = {0.0, 0.0, 0.0};  // x, y, z
  double m_radius = 0.0;
  int m_auxInt[2] = {0, 0};  // carried along by copies and the archive, without a meaning here
  CString m_auxText;         // likewise
};
