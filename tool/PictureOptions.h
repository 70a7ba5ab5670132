// The arguments of `dipole draw` that say which dipoles its pictures show, and how.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "host/dipoles/ViewSettings.h"
#include "module/dipole.h"
#include "tool/FilterOptions.h"

namespace tool {

class PictureOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  double mmPerPixel() const { return m_mmPerPixel; }
  host::ViewSettings settings() const;

  // Switches of the set itself that the arguments or a picture decide: arrows, and whether slices show what
  // lies beside them. A window of latencies that was chosen in a viewer counts no more.
  void applyTo(CDipoleFace9File& set) const;

 private:
  FilterOptions m_filter;
  std::string m_colourBy;
  std::string m_tolerance;
  std::optional<int> m_glyph;  // pixels
  double m_mmPerPixel = 0.5;
  bool m_isModuleSlab = false;
  bool m_showLabels = false;
  bool m_noArrows = false;
  bool m_arrowsByMoment = false;
};

}  // namespace tool
