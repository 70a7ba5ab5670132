// The arguments of `dipole draw` that say which dipoles its pictures show, and how.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>

#include "host/dipoles/ViewSettings.h"
#include "module/dipole.h"
#include "tool/ShownOptions.h"

namespace tool {

class PictureOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  double mmPerPixel() const { return m_mmPerPixel; }
  // Throws UsageError when arguments of clusters are given for other colours.
  host::ViewSettings settings() const;

  // Switches of the set itself that the arguments or a picture decide: arrows, and whether slices show what
  // lies beside them. A window of latencies that was chosen in a viewer counts no more.
  void applyTo(CDipoleFace9File& set) const;

 private:
  ShownOptions m_shown;
  std::optional<int> m_glyph;  // pixels
  double m_mmPerPixel = 0.5;
  bool m_isModuleSlab = false;
};

}  // namespace tool
