// The sphere head model that the module creates and holds; see Sphere.h for the data and its units.
#pragma once

#include "headmodel/Sphere9File.h"

class AFX_EXT_CLASS CSpherezq : public CSphere9File {
 public:
  CSpherezq();
  CSpherezq(const CSpherezq&);
  CSpherezq& operator=(const CSpherezq&);  // every member
  CSpherezq(CSpherezq&&) noexcept;
  CSpherezq& operator=(CSpherezq&&) noexcept;
  ~CSpherezq() override;
};
