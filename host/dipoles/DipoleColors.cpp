#include "host/dipoles/DipoleColors.h"

namespace host {

std::optional<DipoleColors> colorsOf(const CDipoleFace& set, const ViewSettings& settings) {
  const auto byValue = [&](DipoleValue value) {
    return std::optional<DipoleColors>(ValueColors(set, value, settings.unknown));
  };
  switch (settings.colourBy) {
    case ColourBy::own:
      break;
    case ColourBy::latency:
      return byValue(DipoleValue::latency);
    case ColourBy::fitError:
      return byValue(DipoleValue::fitError);
    case ColourBy::moment:
      return byValue(DipoleValue::moment);
    case ColourBy::cluster:
      return ClusterColors(set, clustersOf(set, settings.filter, settings.clusters, settings.unknown));
  }
  return std::nullopt;
}

}  // namespace host
