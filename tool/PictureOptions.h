// The arguments of `dipole draw` that say which dipoles its pictures show, and how.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "host/dipoles/ViewSettings.h"
#include "module/dipole.h"

namespace tool {

// "A:B", "A:" or ":B". Throws std::invalid_argument that names the text and the cause.
host::ValueLimits parseLimits(const std::string& text);

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
  std::string m_colourBy;
  std::string m_moment;
  std::string m_latency;
  std::string m_tolerance;
  std::optional<double> m_maxError;  // percent
  std::optional<int> m_glyph;        // pixels
  double m_mmPerPixel = 0.5;
  bool m_isModuleSlab = false;
  bool m_showLabels = false;
  bool m_noArrows = false;
  bool m_arrowsByMoment = false;
};

}  // namespace tool
