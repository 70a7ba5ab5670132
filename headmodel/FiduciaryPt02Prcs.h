// Layer 2 of a fiducial point: processing. It adds nothing that the module uses.
#pragma once

#include "headmodel/FiduciaryPt.h"

class AFX_EXT_CLASS CFiduciaryPt02Prcs : public CFiduciaryPt {
 public:
  CFiduciaryPt02Prcs();
  CFiduciaryPt02Prcs(const CFiduciaryPt02Prcs&);
  CFiduciaryPt02Prcs& operator=(const CFiduciaryPt02Prcs&);
  CFiduciaryPt02Prcs(CFiduciaryPt02Prcs&&) noexcept;
  CFiduciaryPt02Prcs& operator=(CFiduciaryPt02Prcs&&) noexcept;
  ~CFiduciaryPt02Prcs() override;
};
