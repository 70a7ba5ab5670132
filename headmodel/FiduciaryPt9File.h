// Layer 3 of a fiducial point: the archive record.
#pragma once

#include "headmodel/FiduciaryPt02Prcs.h"

class AFX_EXT_CLASS CFiduciaryPt9File : public CFiduciaryPt02Prcs {
 public:
  CFiduciaryPt9File();
  CFiduciaryPt9File(const CFiduciaryPt9File&);
  CFiduciaryPt9File& operator=(const CFiduciaryPt9File&);
  CFiduciaryPt9File(CFiduciaryPt9File&&) noexcept;
  CFiduciaryPt9File& operator=(CFiduciaryPt9File&&) noexcept;
  ~CFiduciaryPt9File() override;

  // Writes or reads one record: every member of CFiduciaryPt in declaration order, 200 bytes and a string
  // (16 doubles, 2 int64, 4 doubles, 3 int32, 1 int64, 1 int32; the label in the archive's string form).
  // Returns 1; a record that breaks off raises the archive's exception.
  int serialize(CArchive& archive);
};
