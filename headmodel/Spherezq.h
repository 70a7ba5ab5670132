// The sphere head model that the module creates and holds; see Sphere.h for the data and its units.
#pragma once

#include "headmodel/Sphere9File.h"

class AFX_EXT_CLASS CSpherezq : public CSphere9File {
 public:
  CSpherezq() = default;
  CSpherezq(const CSpherezq&) = default;
  CSpherezq& operator=(const CSpherezq&) = default;  // every member
  CSpherezq(CSpherezq&&) = default;
  CSpherezq& operator=(CSpherezq&&) = default;
  ~CSpherezq() override;
};
