// Which places a slice shows.
#pragma once

#include "host/head/Vector3.h"
#include "host/panes/PaneContents.h"
#include "host/picture/View.h"

namespace host {

// How far from a slice a dipole may lie to be drawn on it, mm; infinite: any distance.
double toleranceOf(const PaneContents& contents);

// Those within the tolerance; with ViewSettings::moduleSlab on axial slices all from the origin plane up to
// the tolerance above the slice, and none below that plane.
class SliceRule {
 public:
  SliceRule(const PaneContents& contents, View view, double position);

  bool isNear(const Vector3& place) const;
  bool shows(const Vector3& place) const;

 private:
  int m_axis;
  double m_position;
  double m_tolerance;
  bool m_isModuleSlab;
};

}  // namespace host
