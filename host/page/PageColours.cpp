#include "host/page/PageColours.h"

#include <array>
#include <cstdio>
#include <optional>
#include <utility>

#include "host/dipoles/ClusterColors.h"
#include "host/dipoles/ColorScale.h"
#include "host/dipoles/UnknownDipoles.h"
#include "host/dipoles/ValueColors.h"

namespace host {

namespace {

Json rangeJson(const ValueRange& range) {
  return {
      {"low", range.low}, {"high", range.high}, {"isCutLow", range.isCutLow}, {"isCutHigh", range.isCutHigh}};
}

}  // namespace

std::string colourText(const Rgb& colour) {
  std::array<char, 8> text{};
  (void)std::snprintf(text.data(), text.size(), "#%02x%02x%02x", colour.red, colour.green, colour.blue);
  return text.data();
}

void addColours(Json& settings, const PageSource& source) {
  constexpr int steps = 256;
  Json scale = Json::array();
  for (int step = 0; step < steps; ++step) {
    scale.push_back(colourText(scaleColor(static_cast<double>(step) / (steps - 1))));
  }
  settings["scale"] = std::move(scale);
  settings["noValue"] = colourText(noValueColor);
  Json clusters = Json::array();
  for (const Rgb& colour : clusterPalette()) {
    clusters.push_back(colourText(colour));
  }
  settings["clusterColours"] = std::move(clusters);
  settings["scattered"] = colourText(noClusterColor);
  Json ranges = Json::object();
  for (const auto& [name, value] :
       {std::pair("latency", DipoleValue::latency), std::pair("fitError", DipoleValue::fitError),
        std::pair("moment", DipoleValue::moment)}) {
    const ValueColors colours(source.set, value, source.settings.unknown);
    if (colours.range()) {
      ranges[name] = rangeJson(*colours.range());
    }
  }
  settings["ranges"] = std::move(ranges);
}

}  // namespace host
