#include "host/page/PageDipoles.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "host/dipoles/DipoleArrows.h"
#include "host/dipoles/DipolePlace.h"
#include "host/dipoles/DipoleScene.h"
#include "host/dipoles/DipoleVisibility.h"
#include "host/exchange/DipoleFields.h"
#include "host/exchange/SetPlaces.h"
#include "host/head/NeuromagFrame.h"
#include "host/page/PageColours.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

constexpr int none = -1;

struct FieldWords {
  const char* label;
  const char* unit;
};

// For people, in the order of the fields.
constexpr std::array<FieldWords, fieldCount> fieldWords{{
    {"Number", ""},
    {"Id", ""},
    {"Fit tag", ""},
    {"Label", ""},
    {"x left", "mm"},
    {"y up", "mm"},
    {"z front", "mm"},
    {"Orientation x left", ""},
    {"Orientation y up", ""},
    {"Orientation z front", ""},
    {"Moment", ""},
    {"Latency", "ms"},
    {"Fit error", "%"},
    {"Colour", ""},
    {"Colour in 3D, red", ""},
    {"Colour in 3D, green", ""},
    {"Colour in 3D, blue", ""},
    {"Shown in 3D", ""},
    {"Orientation shown in 3D", ""},
    {"Display", ""},
    {"Shown on slices", ""},
    {"Selected", ""},
    {"Glyph size", "px"},
}};

const char* kindName(FieldKind kind) {
  switch (kind) {
    case FieldKind::flag:
      return "flag";
    case FieldKind::text:
      return "text";
    case FieldKind::colour:
      return "colour";
    default:
      return "number";
  }
}

struct ToCell {
  Json operator()(std::monostate /*unknown*/) const { return nullptr; }
  Json operator()(float value) const { return (*this)(static_cast<double>(value)); }
  Json operator()(double value) const { return jsonNumber(withShortestDigits(value)); }
  template <typename Value>
  Json operator()(const Value& value) const {
    return value;
  }
};

// The columns as they grow, and which one holds what.
class Columns {
 public:
  explicit Columns(const CDipoleFace& set) : m_set(set) {}

  // `valueOf`: of a slot and its dipole.
  template <typename ValueOf>
  int add(const std::string& title, const std::string& label, const char* unit, const char* kind,
          ValueOf valueOf) {
    Json values = Json::array();
    for (int slot = 0; slot < m_set.m_totalDipoles; ++slot) {
      if (const CDipoleszq* const dipole = m_set.m_dipoles[slot]) {
        values.push_back(valueOf(slot, *dipole));
      }
    }
    m_json.push_back(
        {{"title", title}, {"label", label}, {"unit", unit}, {"kind", kind}, {"values", std::move(values)}});
    return static_cast<int>(m_json.size()) - 1;
  }
  Json take() { return std::move(m_json); }

 private:
  const CDipoleFace& m_set;
  Json m_json = Json::array();
};

// Labels are names at times, so an anonymous page has none.
void addFields(Columns& columns, const PageSource& source) {
  const bool isInNAm = source.set.m_momentInNAm != 0;
  for (std::size_t place = 0; place < fieldCount; ++place) {
    const FieldWords& words = fieldWords.at(place);
    const bool isLeftOut = source.isAnonymous && place == fieldLabel;
    columns.add(fieldTitle(place, isInNAm), words.label, place == fieldMoment && isInNAm ? "nAm" : words.unit,
                kindName(dipoleFields()[place].kind), [&](int slot, const CDipoleszq& dipole) {
                  return isLeftOut ? Json()
                                   : std::visit(ToCell(), fieldValue(place, dipole, source.unknown.of(slot)));
                });
  }
}

// Places and orientations in the frames that are not the host's own.
void addFrames(Columns& columns, const PageSource& source, const PageWorld& world) {
  for (std::size_t i = 1; i < world.frames.size(); ++i) {
    const PageFrame& known = world.frames[i];
    const std::unique_ptr<CDipoleFace9File> turned = inFrame(source.set, known.frame);
    const FrameTitles titles = known.frame.titles();
    for (std::size_t place = fieldX; place <= fieldOrientationZ; ++place) {
      const std::size_t axis = (place - fieldX) % 3;
      const bool isPlace = place < fieldOrientationX;
      const std::string label = known.title + (isPlace ? " " : " orientation ") +
                                std::string(1, "xyz"[axis]) + " " + known.frame.axes.at(axis);
      columns.add(titles.at(place - fieldX), label, isPlace ? "mm" : "", "number",
                  [&](int slot, const CDipoleszq& /*dipole*/) {
                    const FieldValue value =
                        fieldValue(place, *turned->m_dipoles[slot], source.unknown.of(slot));
                    const double* const number = std::get_if<double>(&value);
                    return number == nullptr ? Json() : jsonNumber(singleDigits(*number));
                  });
    }
  }
}

void addRoles(Json& roles, Columns& columns, const PageSource& source) {
  bool isOwnColour = true;
  const auto colourOf = [](const CDipoleszq& dipole) { return colourText(ownColour(dipole)); };
  for (int slot = 0; slot < source.set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* const dipole = source.set.m_dipoles[slot]) {
      isOwnColour = isOwnColour && fieldValue(fieldColor, *dipole, 0) == FieldValue(colourOf(*dipole));
    }
  }
  roles = {{"number", fieldNumber},     {"label", fieldLabel},   {"latency", fieldLatency},
           {"fitError", fieldFitError}, {"moment", fieldMoment}, {"colour", fieldColor}};
  if (!isOwnColour) {
    roles["colour"] = columns.add("color_in_pictures", "Colour in pictures", "", "colour",
                                  [&](int, const CDipoleszq& dipole) { return Json(colourOf(dipole)); });
  }
  const ViewSettings all;
  roles["shown"] =
      columns.add("shown_in_pictures", "Shown", "", "flag", [&](int slot, const CDipoleszq& dipole) {
        return Json(visibilityOf(source.set, slot, dipole, all) != Visibility::switchedOff);
      });
}

// The title of a file's columns has the name of an atlas, which may be that of a patient.
void addAtlas(Json& roles, Columns& columns, const PageSource& source) {
  roles["atlasLabel"] = none;
  roles["atlasDistance"] = none;
  if (source.places == nullptr) {
    return;
  }
  const SetPlaces places(source.set, *source.places);
  const auto add = [&](const char* role, const std::string& title, const char* label, const char* unit,
                       const char* kind, auto valueOf) {
    roles[role] = columns.add(source.isAnonymous ? role : title, label, unit, kind,
                              [&](int slot, const CDipoleszq& /*dipole*/) {
                                const std::optional<NamedPlace>& place = places.of(slot);
                                return place ? Json(valueOf(*place)) : Json();
                              });
  };
  add("atlasLabel", places.labelTitle, "Atlas label", "", "text",
      [](const NamedPlace& place) { return place.name; });
  add("atlasDistance", places.distanceTitle, "Distance to it", "mm", "number",
      [](const NamedPlace& place) { return place.distance; });
}

Json placesJson(const PageSource& source, const PageWorld& world) {
  Json list = Json::array();
  for (int slot = 0; slot < source.set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* const dipole = source.set.m_dipoles[slot]) {
      const Vector3 place = placeOf(*dipole);
      list.push_back(isPlace(place) ? jsonVector(world.fromHost(place)) : Json());
    }
  }
  return list;
}

Json arrowsJson(const PageSource& source, const PageWorld& world) {
  const DipoleArrows arrows(source.set, source.settings.arrowsByMoment, source.settings.unknown);
  Json list = Json::array();
  for (int slot = 0; slot < source.set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* const dipole = source.set.m_dipoles[slot]) {
      const Vector3 arrow = arrows.of(*dipole);
      list.push_back(arrow == Vector3() ? Json() : jsonVector(turned(world.fromHost, arrow)));
    }
  }
  return list;
}

}  // namespace

std::vector<int> rowsOf(const CDipoleFace& set) {
  std::vector<int> rows;
  int next = 0;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    rows.push_back(set.m_dipoles[slot] == nullptr ? none : next++);
  }
  return rows;
}

Json pageDipoles(const PageSource& source, const PageWorld& world) {
  Columns columns(source.set);
  Json roles;
  addFields(columns, source);
  addRoles(roles, columns, source);
  addFrames(columns, source, world);
  addAtlas(roles, columns, source);
  Json places = placesJson(source, world);
  const std::size_t count = places.size();
  return {{"count", count},
          {"columns", columns.take()},
          {"roles", std::move(roles)},
          {"places", std::move(places)},
          {"arrows", arrowsJson(source, world)}};
}

}  // namespace host
