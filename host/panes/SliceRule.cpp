#include "host/panes/SliceRule.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace host {

double toleranceOf(const PaneContents& contents) {
  const double own = contents.settings.thinnestSlice * 0.5;
  if (contents.dipoles.getShowDipole2DOverlap() == 0) {
    return own;
  }
  return (std::max)(own, contents.settings.toleranceMm.value_or(std::numeric_limits<double>::infinity()));
}

SliceRule::SliceRule(const PaneContents& contents, View view, double position)
    : m_axis(axesOf(view).slab),
      m_position(position),
      m_tolerance(toleranceOf(contents)),
      m_isModuleSlab(contents.settings.moduleSlab && view == View::axial) {}

bool SliceRule::isNear(const Vector3& place) const {
  return std::abs(place[m_axis] - m_position) <= m_tolerance;
}

bool SliceRule::shows(const Vector3& place) const {
  if (!m_isModuleSlab) {
    return isNear(place);
  }
  return place[m_axis] >= 0.0 && place[m_axis] <= m_position + m_tolerance;
}

}  // namespace host
