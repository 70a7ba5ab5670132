// Layer 2 of a fiducial set: processing. It adds nothing that the module uses.
#pragma once

#include "headmodel/Fiducial.h"

class AFX_EXT_CLASS CFiducial02Prcs : public CFiducial {
 public:
  CFiducial02Prcs();
  CFiducial02Prcs(const CFiducial02Prcs&);
  CFiducial02Prcs& operator=(const CFiducial02Prcs&);
  CFiducial02Prcs(CFiducial02Prcs&&) noexcept;
  CFiducial02Prcs& operator=(CFiducial02Prcs&&) noexcept;
  ~CFiducial02Prcs() override;
};
