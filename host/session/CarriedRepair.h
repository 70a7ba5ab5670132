// Carries what a repair changed in a file's own set over to the set in which its dipoles stand now. Whatever
// the user has done to them since stays.
#pragma once

#include <vector>

#include "module/dipole.h"

namespace host {

struct CarriedRepair {
  static constexpr int none = -1;

  CDipoleFace9File& before;  // as the import made it
  CDipoleFace9File& after;   // a copy of it, repaired
  std::vector<int> origins;  // for each slot of `after` that of `before`; none: the repair brought the dipole
  std::vector<int> slots;    // for each slot of `before` that of the set; none: the dipole is gone

  // Whether every value of a dipole that is to change is still as the import made it.
  bool fits(const CDipoleFace9File& set) const;

  // Changes a set for which it fits and that has room: dipoles, members of the whole set that are still this
  // file's, and dipoles that the repair brought, each behind the one before it in the file. Returns the
  // dipole of the set for each slot of `after`; null: it is gone. Throws what an allocation throws; the set
  // may then be changed in part.
  std::vector<const CDipoleszq*> carryOut(CDipoleFace9File& set) const;

 private:
  int slotNow(std::size_t slotAfter) const;
};

}  // namespace host
