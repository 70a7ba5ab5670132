// The fiducial point that a fiducial set holds; see FiduciaryPt.h for the data and its units.
#pragma once

#include "headmodel/FiduciaryPt9File.h"

class AFX_EXT_CLASS CFiduciaryPtzq : public CFiduciaryPt9File {
 public:
  CFiduciaryPtzq() = default;
  CFiduciaryPtzq(const CFiduciaryPtzq&) = default;
  CFiduciaryPtzq& operator=(const CFiduciaryPtzq&) = default;  // every member
  CFiduciaryPtzq(CFiduciaryPtzq&&) = default;
  CFiduciaryPtzq& operator=(CFiduciaryPtzq&&) = default;
  ~CFiduciaryPtzq() override;
};
