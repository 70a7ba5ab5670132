// Layer 2 of the sphere head model: the archive record.
#pragma once

#include "headmodel/Sphere.h"

class AFX_EXT_CLASS CSphere9File : public CSphere {
 public:
  CSphere9File();
  CSphere9File(const CSphere9File&);
  CSphere9File& operator=(const CSphere9File&);
  CSphere9File(CSphere9File&&) noexcept;
  CSphere9File& operator=(CSphere9File&&) noexcept;
  ~CSphere9File() override;

  // Writes or reads one record: every member of CSphere in declaration order, 40 bytes and a string
  // (4 doubles: centre x, y, z, radius; 2 int32; the text in the archive's string form).
  // Returns 1; a record that breaks off raises the archive's exception.
  int serialize(CArchive& archive);
};
