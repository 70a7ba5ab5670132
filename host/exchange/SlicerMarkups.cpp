#include "host/exchange/SlicerMarkups.h"

#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "host/dipoles/DipolePlace.h"
#include "host/exchange/Json.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"

namespace host {

namespace {

// Readers look for this very text; nothing is fetched from there.
constexpr const char* schema =
    "https://raw.githubusercontent.com/slicer/slicer/master/Modules/Loadable/Markups/Resources/Schema/"
    "markups-schema-v1.0.3.json#";
constexpr double arrowLength = 10.0;  // mm

Vector3 unit(const Vector3& direction) {
  return direction * (1.0 / length(direction));
}

// To the left, back and up, which Slicer writes itself.
Json leftBackUp(const Vector3& place) {
  return Json::array({-place.x, -place.y, place.z});
}

// A frame whose third axis is the direction, row by row.
Json axesOf(const Vector3& direction) {
  const Vector3 across = cross({0, 0, 1}, direction);
  const Vector3 x = length(across) > 1e-9 ? unit(across) : Vector3{1, 0, 0};
  const Vector3 y = cross(direction, x);
  return Json::array({-x.x, -y.x, -direction.x, -x.y, -y.y, -direction.y, x.z, y.z, direction.z});
}

Json colorOf(COLORREF color) {
  const auto part = [color](unsigned shift) { return (color >> shift & 0xFFU) / 255.0; };
  return Json::array({part(0), part(8), part(16)});
}

// What a point has to say, each value under its name.
struct Measurement {
  const char* name;
  DipoleValue value;
  double CDipoleszq::*member;
  const char* units;
};

class Writer {
 public:
  Writer(const CDipoleFace9File& set, const UnknownValues& unknown, const SetFrame& frame,
         const SetPlaces* places)
      : m_source(set), m_set(inFrame(set, frame)), m_unknown(unknown), m_frame(frame), m_places(places) {}

  SlicerMarkups run(SlicerKind kind) {
    for (int slot = 0; slot < m_set->m_totalDipoles; ++slot) {
      const CDipoleszq* const dipole = m_set->m_dipoles[slot];
      if (dipole == nullptr) {
        continue;
      }
      if (!isFinite(placeOf(*dipole))) {
        m_losses.add("the whole, for its place is no number,");
      } else if (kind == SlicerKind::arrows && !hasDirection(slot)) {
        m_losses.add("the whole, for it has no orientation,");
      } else {
        m_byColor[dipole->m_color & 0xFFFFFFU].push_back(slot);
      }
    }
    const Json document = {{"@schema", schema}, {"markups", Json::array()}};
    std::string text = withItems(indented(document), "markups", [this, kind](const AddItem& add) {
      for (const auto& [color, slots] : m_byColor) {
        kind == SlicerKind::points ? add(pointList(color, slots)) : addArrows(color, slots, add);
      }
    });
    addLosses(kind);
    return {std::move(text), std::move(m_losses)};
  }

 private:
  bool hasDirection(int slot) const {
    const double size = length(orientationOf(*m_set->m_dipoles[slot]));
    return !m_unknown.isUnknown(slot, DipoleValue::orientation) && std::isfinite(size) && size > 0.0;
  }
  std::string labelOf(int slot) const {
    return m_unknown.isUnknown(slot, DipoleValue::label) ? std::string()
                                                         : utf8Of(m_set->m_dipoles[slot]->m_label);
  }

  // "100.0 ms; 25.0 nAm; fit error 6.5 %; near Precentral_L, 3.2 mm (aal, Colin27)": what is known.
  std::string descriptionOf(int slot) const {
    const CDipoleszq& dipole = *m_set->m_dipoles[slot];
    std::string text;
    const auto add = [&](DipoleValue which, const std::string& value) {
      if (!m_unknown.isUnknown(slot, which)) {
        text += (text.empty() ? "" : "; ") + value;
      }
    };
    add(DipoleValue::latency, fixed(dipole.m_latency, 1) + " ms");
    add(DipoleValue::moment, fixed(dipole.m_moment, 1) + (m_set->m_momentInNAm != 0 ? " nAm" : ""));
    add(DipoleValue::fitError, "fit error " + fixed(dipole.m_fitError, 1) + " %");
    if (m_places != nullptr && m_places->of(slot)) {
      const std::string space = m_places->atlasSpace.empty() ? "" : ", " + m_places->atlasSpace;
      text += (text.empty() ? "" : "; ") + m_places->of(slot)->text() + " (" + m_places->atlas + space + ")";
    }
    return text;
  }

  Json point(const std::string& id, const std::string& label, int slot, const Vector3& place) const {
    Json json = {{"id", id},
                 {"label", label},
                 {"description", descriptionOf(slot)},
                 {"position", leftBackUp(place)},
                 {"selected", true},
                 {"locked", false},
                 {"visibility", m_set->m_dipoles[slot]->m_show != 0},
                 {"positionStatus", "defined"}};
    if (hasDirection(slot)) {
      json["orientation"] = axesOf(unit(orientationOf(*m_set->m_dipoles[slot])));
    }
    return json;
  }

  // Without its points.
  static Json markup(const char* type, const std::string& name, std::uint32_t color) {
    return {{"type", type},
            {"name", name},
            {"coordinateSystem", "LPS"},
            {"coordinateUnits", "mm"},
            {"locked", true},
            {"labelFormat", "%N-%d"},
            {"controlPoints", Json::array()},
            {"display",
             {{"visibility", true},
              {"opacity", 1.0},
              {"color", colorOf(color)},
              {"selectedColor", colorOf(color)},
              {"pointLabelsVisibility", false},
              {"textScale", 3.0},
              {"glyphType", "Sphere3D"},
              {"useGlyphScale", false},
              {"glyphSize", 3.0}}}};
  }

  std::string pointList(std::uint32_t color, const std::vector<int>& slots) {
    Json list = markup("Fiducial", "dipoles (" + m_frame.description + ")", color);
    list["measurements"] = Json::array();
    const auto addMeasurements = [&](const AddItem& add) {
      for (const Json& measurement : measurementsOf(slots)) {
        add(inOneLine(measurement));
      }
    };
    return withItems(
        withItems(indented(list), "measurements", addMeasurements), "controlPoints", [&](const AddItem& add) {
          for (const int slot : slots) {
            const CDipoleszq& dipole = *m_set->m_dipoles[slot];
            add(inOneLine(point(std::to_string(dipole.m_number), labelOf(slot), slot, placeOf(dipole))));
          }
        });
  }

  // A value that a single dipole of the list lacks cannot stand there: the list has one number per point.
  Json measurementsOf(const std::vector<int>& slots) {
    Json list = Json::array();
    const Measurement all[] = {
        {"moment", DipoleValue::moment, &CDipoleszq::m_moment, m_set->m_momentInNAm != 0 ? "nA.m" : ""},
        {"latency", DipoleValue::latency, &CDipoleszq::m_latency, "ms"},
        {"fit error", DipoleValue::fitError, &CDipoleszq::m_fitError, "%"}};
    for (const Measurement& measurement : all) {
      Json values = Json::array();
      for (const int slot : slots) {
        const double value = m_set->m_dipoles[slot]->*measurement.member;
        if (!m_unknown.isUnknown(slot, measurement.value) && std::isfinite(value)) {
          values.push_back(value);
        }
      }
      if (values.size() != slots.size()) {
        m_losses.add(std::string(measurement.name) + ", as not all of its color have one,",
                     static_cast<int>(values.size()));
        continue;
      }
      list.push_back({{"name", measurement.name},
                      {"enabled", true},
                      {"units", measurement.units},
                      {"printFormat", "%.1f %s"},
                      {"controlPointValues", std::move(values)}});
    }
    return list;
  }

  void addArrows(std::uint32_t color, const std::vector<int>& slots, const AddItem& add) const {
    Json line = markup("Line", "", color);
    for (const int slot : slots) {
      const CDipoleszq& dipole = *m_set->m_dipoles[slot];
      const Vector3 end = placeOf(dipole) + unit(orientationOf(dipole)) * arrowLength;
      const std::string label = labelOf(slot);
      line["name"] = "dipole " + std::to_string(dipole.m_number) + (label.empty() ? "" : " ") + label + " (" +
                     m_frame.description + ")";
      line["controlPoints"] =
          Json::array({point("1", label, slot, placeOf(dipole)), point("2", "", slot, end)});
      add(inOneLine(line));
    }
  }

  void addLosses(SlicerKind kind) {
    if (kind == SlicerKind::points) {
      addLostMembers(m_losses, m_source, m_unknown,
                     {fieldLabel, fieldOrientationX, fieldMoment, fieldLatency, fieldFitError, fieldColor,
                      fieldShown, fieldRed3D});
    } else {
      addLostMembers(m_losses, m_source, m_unknown,
                     {fieldLabel, fieldOrientationX, fieldColor, fieldShown, fieldRed3D});
    }
    addLostParts(m_losses, m_source,
                 {SetPart::patient, SetPart::version, SetPart::mriFile, SetPart::sphere, SetPart::mriPoints});
  }

  const CDipoleFace9File& m_source;
  std::unique_ptr<CDipoleFace9File> m_set;  // in the frame
  const UnknownValues& m_unknown;
  const SetFrame& m_frame;
  const SetPlaces* m_places;  // null: there are none
  std::map<std::uint32_t, std::vector<int>> m_byColor;
  Losses m_losses;
};

}  // namespace

SlicerMarkups slicerMarkups(const CDipoleFace9File& set, const UnknownValues& unknown, const SetFrame& frame,
                            SlicerKind kind, const SetPlaces* places) {
  return Writer(set, unknown, frame, places).run(kind);
}

}  // namespace host
