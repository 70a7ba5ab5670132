// What the user chose to see, as far as the module does not keep it itself. The set's own switches come
// first: m_showDipoleArray, m_showCurrentDipoleOnly, m_showDipoleLatencySelected, m_showDipole2DOverlap and
// each dipole's m_show, m_display and m_showOrientation.
#pragma once

#include <optional>

#include "host/dipoles/Clusters.h"
#include "host/dipoles/DipoleFilter.h"
#include "host/dipoles/UnknownDipoles.h"

namespace host {

struct LatencyWindow {
  double from = 0.0;  // ms, both ends pass
  double to = 0.0;
};

enum class ColourBy { own, latency, fitError, moment, cluster };

struct ViewSettings {
  LatencyWindow latency;  // counts while the set's m_showDipoleLatencySelected is on
  DipoleFilter filter;
  ColourBy colourBy = ColourBy::own;
  ClusterRule clusters;  // of the colours by cluster
  bool showLegend = true;
  // How far from a slice a dipole may lie to be drawn on it, mm; nothing: any distance. While the set's
  // m_showDipole2DOverlap is off a slice shows its own dipoles only, whatever is chosen here.
  std::optional<double> toleranceMm = 5.0;
  int glyphPixels = 9;      // side of a dipole's square on slices, see host/head/Limits.h
  double ballRadius = 2.5;  // mm, of a dipole in 3D
  // What of the set's dipoles is unknown, and so neither passes a filter nor has a colour; null: nothing.
  const UnknownDipoles* unknown = nullptr;
  double thinnestSlice = 1.0;  // mm; "only this slice" reaches half of it to both sides
  // Axial slices show, by the module's own rule, all dipoles from the level of the ears up to the slice.
  bool moduleSlab = false;
  bool arrowsByMoment = false;  // see DipoleArrows
  bool showLabels = false;      // beside each dipole, in all panes
};

}  // namespace host
