// The arguments that say which dipoles a picture or a page shows, and how.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "host/dipoles/ViewSettings.h"
#include "tool/ClusterOptions.h"
#include "tool/FilterOptions.h"

namespace tool {

class ShownOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  // The rest of the settings are as they are for a viewer.
  host::ViewSettings settings() const;
  bool areArrowsShown() const { return !m_noArrows; }
  bool hasClusterRule() const { return m_clusters.isGiven(); }
  bool hasTolerance() const { return !m_tolerance.empty(); }

 private:
  FilterOptions m_filter;
  ClusterOptions m_clusters;
  std::string m_colourBy;
  std::string m_tolerance;
  bool m_showLabels = false;
  bool m_noArrows = false;
  bool m_arrowsByMoment = false;
};

}  // namespace tool
