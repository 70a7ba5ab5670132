// Layer 4 of a fiducial set: the archive record.
#pragma once

#include "headmodel/Fiducial03Operator.h"

class AFX_EXT_CLASS CFiducial9File : public CFiducial03Operator {
 public:
  CFiducial9File();
  CFiducial9File(const CFiducial9File&);
  CFiducial9File& operator=(const CFiducial9File&);
  CFiducial9File(CFiducial9File&&) noexcept;
  CFiducial9File& operator=(CFiducial9File&&) noexcept;
  ~CFiducial9File() override;

  // Writes or reads one record: the six point records (see FiduciaryPt9File.h), then 4 int32 and 3 int64.
  // Returns 1; a record that breaks off raises the archive's exception.
  int serialize(CArchive& archive);
};
