#include "host/exchange/SetJson.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "host/exchange/DelimitedText.h"
#include "host/exchange/JsonPlaces.h"
#include "host/exchange/TableColumns.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

constexpr const char* frameText = "head: x left, y up, z front";
constexpr const char* unitText = "nAm";

struct ToJson {
  Json operator()(std::monostate /*unknown*/) const { return nullptr; }
  Json operator()(float value) const { return jsonNumber(withShortestDigits(static_cast<double>(value))); }
  Json operator()(double value) const { return jsonNumber(value); }
  template <typename Value>
  Json operator()(const Value& value) const {
    return value;
  }
};

void addDipoles(const CDipoleFace& set, const UnknownValues& unknown, const SetTexts& texts,
                const AddItem& add) {
  Json object = Json::object();  // the same for all, only the values are others
  for (std::size_t place = 0; place < fieldCount; ++place) {
    object[titleIn(place, texts.isMomentInNAm, texts.titles)] = nullptr;
  }
  if (texts.places != nullptr) {
    object[texts.places->labelTitle] = nullptr;
    object[texts.places->distanceTitle] = nullptr;
  }
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    if (dipole == nullptr) {
      continue;
    }
    auto value = object.begin();
    for (std::size_t place = 0; place < fieldCount; ++place) {
      *value++ = std::visit(ToJson(), fieldValue(place, *dipole, unknown.of(slot)));
    }
    if (texts.places != nullptr) {
      const std::optional<NamedPlace>& place = texts.places->of(slot);
      *value++ = place ? Json(place->name) : Json();
      *value++ = place ? jsonNumber(place->distance) : Json();
    }
    add("    " + inOneLine(object));
  }
}

// A value as it stands in a document. `digits`: a number as it is written.
struct JsonValue {
  enum class Kind { null, flag, whole, number, text };
  Kind kind = Kind::null;
  bool flag = false;
  std::string text;  // or the digits of a number
};

template <typename Number>
std::optional<FieldValue> numberIn(const JsonValue& value) {
  const bool isOther = value.kind == JsonValue::Kind::text &&
                       (value.text == "nan" || value.text == "inf" || value.text == "-inf");
  if (value.kind != JsonValue::Kind::whole && value.kind != JsonValue::Kind::number && !isOther) {
    return std::nullopt;
  }
  const std::optional<Number> number = numberOf<Number>(value.text);
  return number ? std::optional<FieldValue>(*number) : std::nullopt;
}

// Nothing when the value is not what the column holds.
std::optional<FieldValue> valueIn(const JsonValue& value, FieldKind kind) {
  if (value.kind == JsonValue::Kind::null) {
    return FieldValue();
  }
  switch (kind) {
    case FieldKind::flag:
      if (value.kind == JsonValue::Kind::flag) {
        return value.flag;
      }
      [[fallthrough]];
    case FieldKind::whole:
      return value.kind == JsonValue::Kind::whole ? numberIn<int>(value) : std::nullopt;
    case FieldKind::single:
      return numberIn<float>(value);
    case FieldKind::real:
      return numberIn<double>(value);
    case FieldKind::text:
    case FieldKind::colour:
      break;
  }
  return value.kind == JsonValue::Kind::text ? std::optional<FieldValue>(value.text) : std::nullopt;
}

// Is told what the parser meets, in order. Faults are thrown.
class SetReader {
 public:
  explicit SetReader(JsonPlaces& places) : m_places(places), m_set(std::make_unique<CDipoleFace9File>()) {}

  TableSet takeSet() {
    m_set->m_momentInNAm = isInNAm() ? 1 : 0;
    return {std::move(m_set), std::move(m_unknown)};
  }

  // The operations that the parser calls.
  bool null() { return take({}); }
  bool boolean(bool value) { return take({JsonValue::Kind::flag, value, {}}); }
  bool number_integer(std::int64_t value) {
    return take({JsonValue::Kind::whole, false, std::to_string(value)});
  }
  bool number_unsigned(std::uint64_t value) {
    return take({JsonValue::Kind::whole, false, std::to_string(value)});
  }
  bool number_float(double /*value*/, const std::string& digits) {
    return take({JsonValue::Kind::number, false, digits});
  }
  bool string(std::string& value) { return take({JsonValue::Kind::text, false, std::move(value)}); }
  static bool binary(std::vector<std::uint8_t>& /*value*/) { return false; }  // not in texts

  bool start_object(std::size_t /*count*/) {
    m_places.note();
    const bool isDocument = m_depth == 0;
    const bool isDipole = m_depth == 2 && m_isInDipoles;
    if (!isDocument && !isDipole) {
      refuseNested();
    }
    ++m_depth;
    if (isDipole) {
      m_row = {};
      m_placeOf = {};
    }
    return true;
  }

  bool key(std::string& name) {
    m_places.note();
    if (m_depth == 1) {
      m_key = name;
    } else if (isInDipole()) {
      takeTitle(name);
    }
    return true;
  }

  bool end_object() {
    m_places.note();
    if (isInDipole()) {
      addDipole();
    }
    --m_depth;
    if (m_depth == 0 && !m_hasDipoles) {
      fail("the list of dipoles is missing");
    }
    return true;
  }

  bool start_array(std::size_t /*count*/) {
    m_places.note();
    const bool isList = m_depth == 1 && m_key == "dipoles";
    if (isList && m_hasDipoles) {
      fail("there is a second list of dipoles");
    }
    if (!isList) {
      refuseNested();
    }
    m_hasDipoles = m_hasDipoles || isList;
    m_isInDipoles = isList;
    ++m_depth;
    return true;
  }

  bool end_array() {
    m_places.note();
    --m_depth;
    m_isInDipoles = m_isInDipoles && m_depth > 1;
    return true;
  }

  template <typename Exception>
  [[noreturn]] bool parse_error(std::size_t position, const std::string& /*token*/,
                                const Exception& problem) {
    constexpr int isTooLarge = 406;
    throw m_places.faultAt(position == 0 ? 0 : position - 1,
                           problem.id == isTooLarge ? "this number does not fit" : "this is no valid JSON");
  }

 private:
  [[noreturn]] void fail(const std::string& what) const { throw m_places.faultAt(m_places.last(), what); }

  bool isInDipole() const { return m_isInDipoles && m_depth == 3; }

  bool isHeaderText() const {
    return m_key == "patient" || m_key == "version" || m_key == "frame" || m_key == "moment_unit";
  }

  // What the document holds beside the dipoles may have any depth; a list of dipoles has its own.
  void refuseNested() const {
    if (m_depth == 0 || (m_depth == 1 && m_key == "dipoles")) {
      fail("a document is an object, and its dipoles are a list");
    }
    if (m_depth == 1 && isHeaderText()) {
      fail("\"" + m_key + "\" is a text, or null");
    }
    if (m_isInDipoles) {
      fail(m_depth == 2 ? "a dipole is an object" : "a value of a dipole is a number, a text, true or false");
    }
  }

  void takeTitle(const std::string& name) {
    const std::optional<std::size_t> place = placeOfTitle(name);
    if (!place) {
      fail("\"" + name.substr(0, utf8Length(name.substr(0, 40))) + "\"" + notReadBack(name));
    }
    if (m_row.at(*place)) {
      fail("\"" + name + "\" is there twice");
    }
    if (*place == fieldMoment) {
      const bool isNAm = name == fieldTitle(fieldMoment, true);
      if (m_titleIsNAm && *m_titleIsNAm != isNAm) {
        fail("the moments have different units");
      }
      m_titleIsNAm = isNAm;
    }
    m_row.at(*place) = FieldValue();
    m_field = *place;
  }

  bool take(const JsonValue& value) {
    if (value.kind == JsonValue::Kind::whole || value.kind == JsonValue::Kind::number) {
      m_places.noteNumber();
    } else {
      m_places.note();
    }
    if (isInDipole()) {
      takeField(value);
    } else if (m_depth == 1) {
      takeText(value);
    } else {
      refuseNested();
    }
    return true;
  }

  void takeField(const JsonValue& value) {
    std::optional<FieldValue> field = valueIn(value, dipoleFields()[m_field].kind);
    if (!field) {
      fail(std::string(dipoleFields()[m_field].name) + ": this is not what the column holds");
    }
    m_row.at(m_field) = *std::move(field);
    m_placeOf.at(m_field) = m_places.last();
  }

  void takeText(const JsonValue& value) {
    const bool isText = value.kind == JsonValue::Kind::text;
    if (m_key == "dipoles") {
      fail("the dipoles are a list");
    } else if (m_key == "frame" && (!isText || value.text != frameText)) {
      fail(std::string("the only frame that is known is \"") + frameText + "\"");
    } else if (m_key == "moment_unit") {
      const bool isNone = value.kind == JsonValue::Kind::null;
      if (!isNone && (!isText || value.text != unitText)) {
        fail("the unit of moments is \"nAm\", or null");
      }
      m_unitIsNAm = !isNone;
    } else if ((m_key == "patient" || m_key == "version") && value.kind != JsonValue::Kind::null) {
      if (!isText) {
        fail("\"" + m_key + "\" is a text, or null");
      }
      (m_key == "patient" ? m_set->m_patient : m_set->m_fileVersion) = fromUtf8(value.text);
    }
  }

  void addDipole() {
    std::array<bool, fieldCount> has{};
    std::transform(m_row.begin(), m_row.end(), has.begin(),
                   [](const auto& value) { return value.has_value(); });
    if (const std::optional<std::string> missing = whatIsMissing(has)) {
      fail(*missing);
    }
    const int slot = m_set->m_totalDipoles;
    if (slot == DipoleTable::capacity) {
      fail("a set holds " + std::to_string(DipoleTable::capacity) + " dipoles, this would be one more");
    }
    if (m_set->addDipole() == 0) {
      throw std::bad_alloc();
    }
    CDipoleszq& dipole = *m_set->m_dipoles[slot];
    dipole.m_number = slot + 1;
    const MadeDipole made = makeDipole(m_row, dipole);
    if (made.fault) {
      throw m_places.faultAt(m_placeOf.at(made.fault->place), made.fault->what);
    }
    m_unknown.markAll(slot, made.unknown);
  }

  bool isInNAm() const {
    if (m_titleIsNAm && m_unitIsNAm && *m_titleIsNAm != *m_unitIsNAm) {
      fail("moment_unit contradicts the name of the moments");
    }
    return m_unitIsNAm.value_or(m_titleIsNAm.value_or(false));
  }

  JsonPlaces& m_places;
  std::unique_ptr<CDipoleFace9File> m_set;
  UnknownValues m_unknown;
  int m_depth = 0;
  std::string m_key;  // of the document
  bool m_hasDipoles = false;
  bool m_isInDipoles = false;
  DipoleRow m_row;
  std::array<std::size_t, fieldCount> m_placeOf{};
  std::size_t m_field = 0;
  std::optional<bool> m_titleIsNAm;
  std::optional<bool> m_unitIsNAm;
};

}  // namespace

std::string setJson(const CDipoleFace& set, const UnknownValues& unknown, const SetTexts& texts) {
  Json document = {{"files", texts.files},
                   {"version", jsonText(texts.version)},
                   {"patient", jsonText(texts.patient)},
                   {"frame", texts.frame.empty() ? frameText : texts.frame}};
  if (texts.points) {
    const auto point = [](const Vector3& place) { return Json::array({place.x, place.y, place.z}); };
    document[texts.pointsTitle] = {{"nasion", point(texts.points->nasion)},
                                   {"left_ear", point(texts.points->leftEar)},
                                   {"right_ear", point(texts.points->rightEar)}};
  }
  if (texts.places != nullptr) {
    document["atlas"] = texts.places->json();
  }
  document["moment_unit"] = jsonText(texts.isMomentInNAm ? unitText : "");
  document.update(texts.beside);
  document["dipoles"] = Json::array();
  return withItems(indented(document), "dipoles",
                   [&](const AddItem& add) { addDipoles(set, unknown, texts, add); });
}

TableSet readSetJson(std::string_view text, const std::string& name) {
  JsonPlaces places(text);
  try {
    SetReader reader(places);
    (void)Json::sax_parse(places.begin(), places.end(), &reader);
    return reader.takeSet();
  } catch (const TableFault& fault) {
    throw fault.of(name);
  }
}

}  // namespace host
