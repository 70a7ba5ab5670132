#include "host/exchange/TableColumns.h"

#include <charconv>
#include <limits>
#include <type_traits>

#include "host/exchange/SetPlaces.h"

namespace host {

namespace {

constexpr std::size_t orientation[] = {fieldOrientationX, fieldOrientationY, fieldOrientationZ};
constexpr std::size_t colours3D[] = {fieldRed3D, fieldGreen3D, fieldBlue3D};

bool isUnknown(const std::optional<FieldValue>& value) {
  return !value || std::holds_alternative<std::monostate>(*value);
}

// All three or none: a direction or a colour of which a part is missing is none.
template <std::size_t count>
bool arePartlyThere(const std::array<bool, fieldCount>& has, const std::size_t (&places)[count]) {
  int there = 0;
  for (const std::size_t place : places) {
    there += has.at(place) ? 1 : 0;
  }
  return there != 0 && there != static_cast<int>(count);
}

std::array<bool, fieldCount> knownOf(const DipoleRow& row) {
  std::array<bool, fieldCount> known{};
  for (std::size_t place = 0; place < fieldCount; ++place) {
    known.at(place) = !isUnknown(row.at(place));
  }
  return known;
}

// The display comes before what only repeats it.
bool setDisplay(const DipoleRow& row, CDipoleszq& dipole) {
  const std::optional<FieldValue>& display = row[fieldDisplay];
  const std::optional<FieldValue>& shown = row[fieldShownOnSlices];
  if (display || !shown) {
    return true;
  }
  const bool* const flag = std::get_if<bool>(&*shown);
  if (flag != nullptr) {
    dipole.m_display = *flag ? 1 : 0;
  }
  return flag != nullptr;
}

FieldFault faultOf(std::size_t place) {
  if (place == fieldShownOnSlices) {
    return {place, "this contradicts the column display, which is 1 for dipoles that slices show"};
  }
  return {place, place == fieldColor ? "a color is written as #rrggbb" : "this is neither yes nor no"};
}

}  // namespace

std::optional<std::size_t> placeOfTitle(std::string_view title) {
  for (std::size_t place = 0; place < fieldCount; ++place) {
    if (title == fieldTitle(place, false) || title == fieldTitle(place, true)) {
      return place;
    }
  }
  return std::nullopt;
}

const char* notReadBack(std::string_view title) {
  return isPlaceTitle(title) ? " is of an atlas: tables with such columns are not read back"
                             : " is no column of a table of dipoles";
}

template <typename Number>
std::optional<Number> numberOf(std::string_view text) {
  if constexpr (std::is_floating_point_v<Number>) {
    if (text == "nan") {
      return std::numeric_limits<Number>::quiet_NaN();
    }
    const std::string_view unsignedText = text.substr(text.starts_with('-') ? 1 : 0);
    if (unsignedText == "inf") {
      constexpr Number infinite = std::numeric_limits<Number>::infinity();
      return text.size() == unsignedText.size() ? infinite : -infinite;
    }
    const bool isDigits =
        !unsignedText.empty() && unsignedText.find_first_not_of("0123456789.eE+-") == std::string_view::npos;
    if (!isDigits) {
      return std::nullopt;
    }
  }
  Number number{};
  const char* const end = text.data() + text.size();
  const auto [behind, error] = std::from_chars(text.data(), end, number);
  return behind == end && error == std::errc() ? std::optional(number) : std::nullopt;
}

template std::optional<int> numberOf<int>(std::string_view text);
template std::optional<float> numberOf<float>(std::string_view text);
template std::optional<double> numberOf<double>(std::string_view text);

std::optional<std::string> whatIsMissing(const std::array<bool, fieldCount>& has) {
  for (const std::size_t place : {fieldX, fieldY, fieldZ}) {
    if (!has.at(place)) {
      return std::string("the column ") + fieldTitle(place, false) + " is missing";
    }
  }
  if (arePartlyThere(has, orientation)) {
    return "an orientation needs its three columns";
  }
  if (arePartlyThere(has, colours3D)) {
    return "a 3D color needs its three columns";
  }
  return std::nullopt;
}

MadeDipole makeDipole(const DipoleRow& row, CDipoleszq& dipole) {
  MadeDipole made;
  if (arePartlyThere(knownOf(row), orientation)) {
    made.fault = FieldFault{fieldOrientationX, "a part of the orientation is missing"};
    return made;
  }
  if (!setDisplay(row, dipole)) {
    made.fault = faultOf(fieldShownOnSlices);
    return made;
  }
  for (std::size_t place = 0; place < fieldCount; ++place) {
    const DipoleField& field = dipoleFields()[place];
    const std::optional<FieldValue>& value = row.at(place);
    if (!isUnknown(value)) {
      if (!field.set(dipole, *value)) {
        made.fault = faultOf(place);
        return made;
      }
    } else if (field.unknown) {
      made.unknown = static_cast<std::uint8_t>(made.unknown | static_cast<std::uint8_t>(*field.unknown));
    } else if (value) {
      made.fault = FieldFault{place, "a value is missing here"};
      return made;
    }
  }
  if (row[fieldColor] && !row[fieldRed3D]) {
    dipole.setColorValue(dipole.m_color);
  }
  return made;
}

}  // namespace host
