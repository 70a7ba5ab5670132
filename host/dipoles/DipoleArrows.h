// How long the dipoles' arrows are.
#pragma once

#include "host/dipoles/UnknownDipoles.h"
#include "host/head/Vector3.h"
#include "module/dipole.h"

namespace host {

class DipoleArrows {
 public:
  // By moment: the arrow of the set's strongest dipole is as long as arrowOf says, others are shorter as
  // their moments are smaller; a moment that is not a number has none. Else each is as arrowOf says. A dipole
  // has none whose orientation is unknown, by moment also none whose moment is; `unknown` must outlive this.
  explicit DipoleArrows(const CDipoleFace& set, bool byMoment = false,
                        const UnknownDipoles* unknown = nullptr);

  // From the dipole's place to the tip, mm, head frame; zero: it has none.
  Vector3 of(const CDipoles& dipole) const;
  // The moment whose arrow has the full length; 0 when arrows do not go by moment, or there is none.
  double strongest() const { return m_strongest; }

 private:
  bool isUnknown(const CDipoles& dipole, DipoleValue value) const;

  bool m_isByMoment;
  const UnknownDipoles* m_unknown;
  double m_strongest = 0.0;
};

}  // namespace host
