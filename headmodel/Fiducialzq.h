// The fiducial set that the module creates and holds; see Fiducial.h for the data and its frame.
#pragma once

#include "headmodel/Fiducial9File.h"

class AFX_EXT_CLASS CFiducialzq : public CFiducial9File {
 public:
  CFiducialzq();
  CFiducialzq(const CFiducialzq&);
  CFiducialzq& operator=(const CFiducialzq&);  // every member
  CFiducialzq(CFiducialzq&&) noexcept;
  CFiducialzq& operator=(CFiducialzq&&) noexcept;
  ~CFiducialzq() override;

  // Compares nasion, left ear and right ear with those of another set of the same frame. Returns 0.0 when
  // each lies within the tolerance of its partner, else the largest of the three distances (NaN when a
  // position is not a number), both in the unit of the sets; -1.0 without another set.
  double compare3FiducialPts(const CFiducialzq* other, double tolerance) const;
};
