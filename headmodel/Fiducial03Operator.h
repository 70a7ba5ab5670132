// Layer 3 of a fiducial set: its three named points.
#pragma once

#include "headmodel/Fiducial02Prcs.h"

class AFX_EXT_CLASS CFiducial03Operator : public CFiducial02Prcs {
 public:
  CFiducial03Operator();
  CFiducial03Operator(const CFiducial03Operator&);
  CFiducial03Operator& operator=(const CFiducial03Operator&);
  CFiducial03Operator(CFiducial03Operator&&) noexcept;
  CFiducial03Operator& operator=(CFiducial03Operator&&) noexcept;
  ~CFiducial03Operator() override;

  // Each stores the point's position, in the frame of the set, and marks the point as set. Returns 1.
  int setNasionf(double x, double y, double z);
  int setLeftEarf(double x, double y, double z);
  int setRightEarf(double x, double y, double z);
};
