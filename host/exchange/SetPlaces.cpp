#include "host/exchange/SetPlaces.h"

#include <cmath>

#include "host/text/Letters.h"

namespace host {

namespace {

constexpr std::string_view titleStart = "atlas_";

// Fit for the title of a column, whatever the name of a file holds.
std::string wordOf(std::string_view text) {
  constexpr std::size_t longest = 40;
  std::string word;
  for (const char c : lowered(text.substr(0, longest))) {
    const bool isPlain = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    word += isPlain ? c : '_';
  }
  return word;
}

double toHundredths(double mm) {
  return std::round(mm * 100.0) / 100.0;
}

}  // namespace

SetPlaces::SetPlaces(const CDipoleFace& dipoles, const PlaceNames& names)
    : atlas(names.atlas().name()),
      about(names.atlas().about()),
      atlasSpace(names.atlas().space()),
      placesSpace(names.space()),
      bySlot(names.of(dipoles)) {
  const std::string start =
      std::string(titleStart) + wordOf(atlas) + (atlasSpace.empty() ? "" : "_" + wordOf(atlasSpace));
  labelTitle = start + "_label";
  distanceTitle = start + "_distance_mm";
  for (std::optional<NamedPlace>& place : bySlot) {
    if (place) {
      place->distance = toHundredths(place->distance);
    }
  }
}

Json SetPlaces::json() const {
  return {{"name", atlas},
          {"about", about},
          {"space", jsonText(atlasSpace)},
          {"space_of_places", jsonText(placesSpace)},
          {"reach_mm", Atlas::reach}};
}

bool isPlaceTitle(std::string_view title) {
  return title.starts_with(titleStart);
}

}  // namespace host
