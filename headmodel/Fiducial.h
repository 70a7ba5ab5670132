// Layer 1 of a fiducial set: six points at fixed places, of which the module uses the first three.
//
// One set is in one frame: MRI voxels (the points of an imported file) or mm of the host's head frame
// (x to the left ear, y up, z to the nose).
#pragma once

#include "headmodel/FiduciaryPtzq.h"

class AFX_EXT_CLASS CFiducial {
 public:
  enum PointIndex { nasion = 0, leftEar = 1, rightEar = 2, totalPoints = 6 };

  CFiducial();
  CFiducial(const CFiducial&);
  CFiducial& operator=(const CFiducial&);
  CFiducial(CFiducial&&) noexcept;
  CFiducial& operator=(CFiducial&&) noexcept;
  virtual ~CFiducial();

  // Puts all six points back to their initial state: not set, position, shape and size 0, no label.
  // Returns 1.
  int resetAllFiducialPt();

  // Sets the display shape code of all six points. It outlives later changes of position. Returns 1.
  int setAllFiducialPtShap(UINT shape);

  // Sets the size in the 3D view, mm, of all six points. It outlives later changes of position. Returns 1.
  int setAllFiducialSize3D(double size);

  // The number of points that are set (onlySet true), or of all points that the set has room for.
  int getTotalFiduciaryPts(bool onlySet) const;

  CFiduciaryPtzq m_points[totalPoints];  // nasion, left ear, right ear, three without a meaning here
  int m_ints[4] = {};                    // carried along by copies and the archive
  LONGLONG m_tail[3] = {};               // likewise
};
