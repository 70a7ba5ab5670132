// The places of a set's dipoles by an atlas, as columns of a file. They are told and never read back: a table
// that has them is refused, as one in another frame is.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/exchange/Json.h"
#include "host/exchange/PlaceNames.h"
#include "module/dipole.h"

namespace host {

struct SetPlaces {
  SetPlaces(const CDipoleFace& dipoles, const PlaceNames& names);

  const std::optional<NamedPlace>& of(int slot) const { return bySlot.at(static_cast<std::size_t>(slot)); }
  // The atlas, its space and that of the places.
  Json json() const;

  std::string labelTitle;     // "atlas_aal_colin27_label"; without the space when it is not known
  std::string distanceTitle;  // "atlas_aal_colin27_distance_mm"; 0 in the label, to a hundredth
  std::string atlas;          // its name, UTF-8
  std::string about;          // Atlas::about
  std::string atlasSpace;     // "Colin27"; both are empty when nobody said
  std::string placesSpace;
  std::vector<std::optional<NamedPlace>> bySlot;
};

// Of a format that has no column for them.
inline constexpr const char* noRoomForPlaces = "this format has no room for the places of an atlas (--atlas)";

// Whether a column is of an atlas, so that the refusal of a table can say what it is.
bool isPlaceTitle(std::string_view title);

}  // namespace host
