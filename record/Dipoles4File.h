// Layer 3 of the dipole record: its archive record.
#pragma once

#include "record/Dipoles3Display2D.h"

class CDipoles4File : public CDipoles3Display2D {
 public:
  CDipoles4File() = default;
  CDipoles4File(const CDipoles4File&) = default;
  CDipoles4File& operator=(const CDipoles4File&) = default;
  ~CDipoles4File() override;
};
