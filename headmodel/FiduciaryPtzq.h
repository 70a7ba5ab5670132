// The fiducial point that a fiducial set holds; see FiduciaryPt.h for the data and its units.
#pragma once

#include "headmodel/FiduciaryPt9File.h"

class AFX_EXT_CLASS CFiduciaryPtzq : public CFiduciaryPt9File {
 public:
  CFiduciaryPtzq();
  CFiduciaryPtzq(const CFiduciaryPtzq&);
  CFiduciaryPtzq& operator=(const CFiduciaryPtzq&);  // every member
  CFiduciaryPtzq(CFiduciaryPtzq&&) noexcept;
  CFiduciaryPtzq& operator=(CFiduciaryPtzq&&) noexcept;
  ~CFiduciaryPtzq() override;
};
