#include "tool/ShownOptions.h"

#include <map>
#include <stdexcept>

#include "host/head/Limits.h"
#include "host/text/Numbers.h"
#include "tool/ArgumentCheck.h"
#include "tool/Choice.h"

namespace tool {
namespace {

const std::map<std::string, host::ColourBy>& colourings() {
  static const std::map<std::string, host::ColourBy> all = {{"latency", host::ColourBy::latency},
                                                            {"error", host::ColourBy::fitError},
                                                            {"moment", host::ColourBy::moment},
                                                            {"cluster", host::ColourBy::cluster}};
  return all;
}

// No value: any distance.
std::optional<double> parseTolerance(const std::string& text) {
  if (text == "all") {
    return std::nullopt;
  }
  const std::optional<double> mm = host::numberOf(text);
  if (!mm || *mm < 0.0 || *mm > host::longestLength) {
    throw std::invalid_argument("\"" + text + "\": the tolerance is a number of mm from 0 to " +
                                host::shortest(host::longestLength) + ", or all");
  }
  return mm;
}

}  // namespace

void ShownOptions::addTo(CLI::App& command) {
  const auto add = [&](const std::string& name, auto& value, const char* type, const char* text) {
    return command.add_option(name, value, text)->type_name(type);
  };
  addChoice(command, "--color-by", m_colourBy,
            "Colours by a value or by cluster, with a legend; else each its own", colourings());
  m_clusters.addTo(command);
  m_filter.addTo(command);
  add("--tolerance", m_tolerance, "MM|all", "Show dipoles up to MM from each slice, 5 unless given; or all")
      ->check(argumentCheck(parseTolerance));
  command.add_flag("--label", m_showLabels, "Write its label beside each dipole, or its number");
  CLI::Option* none = command.add_flag("--no-arrows", m_noArrows, "No arrows along the orientations");
  command.add_flag("--arrows-by-moment", m_arrowsByMoment, "Arrows as long as the moments are large")
      ->excludes(none);
}

host::ViewSettings ShownOptions::settings() const {
  host::ViewSettings settings;
  if (!m_colourBy.empty()) {
    settings.colourBy = chosen(colourings(), m_colourBy);
  }
  settings.clusters = m_clusters.rule();
  settings.filter = m_filter.filter();
  if (!m_tolerance.empty()) {
    settings.toleranceMm = parseTolerance(m_tolerance);
  }
  settings.showLabels = m_showLabels;
  settings.arrowsByMoment = m_arrowsByMoment;
  return settings;
}

}  // namespace tool
