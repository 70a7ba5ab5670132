#include "host/exchange/DipoleFields.h"

#include <charconv>
#include <cstdint>
#include <cstdio>

#include "host/text/PathText.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

constexpr int shownDisplay = 1;  // slices draw dipoles with this m_display alone

std::string colourText(COLORREF colour) {
  const auto value = static_cast<std::uint32_t>(colour);
  const std::uint32_t rgb = (value & 0xFFU) << 16U | (value & 0xFF00U) | (value >> 16U & 0xFFU);
  const std::uint32_t beyond = value >> 24U;
  std::array<char, 16> text{};
  if (beyond == 0) {
    (void)std::snprintf(text.data(), text.size(), "#%06x", rgb);
  } else {
    (void)std::snprintf(text.data(), text.size(), "#%02x%06x", beyond, rgb);
  }
  return text.data();
}

bool setColour(COLORREF& colour, const std::string& text) {
  if ((text.size() != 7 && text.size() != 9) || text.front() != '#') {
    return false;
  }
  std::uint32_t value = 0;
  const char* const end = text.data() + text.size();
  if (std::from_chars(text.data() + 1, end, value, 16).ptr != end) {
    return false;
  }
  const std::uint32_t bgr = (value & 0xFFU) << 16U | (value & 0xFF00U) | (value >> 16U & 0xFFU);
  colour = static_cast<COLORREF>((value & 0xFF000000U) | bgr);
  return true;
}

FieldValue flagOf(int member) {
  return member == 0 || member == 1 ? FieldValue(member == 1) : FieldValue(member);
}

bool setFlag(int& member, const FieldValue& value) {
  const bool* const flag = std::get_if<bool>(&value);
  member = flag != nullptr ? int{*flag} : std::get<int>(value);
  return true;
}

template <auto member>
FieldValue get(const CDipoleszq& dipole) {
  return dipole.*member;
}
template <auto member, typename Value>
bool set(CDipoleszq& dipole, const FieldValue& value) {
  dipole.*member = std::get<Value>(value);
  return true;
}
template <auto member, int index>
FieldValue getElement(const CDipoleszq& dipole) {
  return (dipole.*member)[index];
}
template <auto member, int index, typename Value>
bool setElement(CDipoleszq& dipole, const FieldValue& value) {
  (dipole.*member)[index] = std::get<Value>(value);
  return true;
}

template <auto member>
constexpr DipoleField whole(const char* name) {
  return {name, FieldKind::whole, std::nullopt, get<member>, set<member, int>};
}
template <auto member>
constexpr DipoleField real(const char* name, std::optional<DipoleValue> unknown = std::nullopt) {
  return {name, FieldKind::real, unknown, get<member>, set<member, double>};
}
template <auto member, int index>
constexpr DipoleField real(const char* name, std::optional<DipoleValue> unknown = std::nullopt) {
  return {name, FieldKind::real, unknown, getElement<member, index>, setElement<member, index, double>};
}
template <int index>
constexpr DipoleField colour3D(const char* name) {
  return {name, FieldKind::single, std::nullopt, getElement<&CDipoles::m_colorF, index>,
          setElement<&CDipoles::m_colorF, index, float>};
}
template <auto member>
constexpr DipoleField flag(const char* name) {
  return {name, FieldKind::flag, std::nullopt,
          [](const CDipoleszq& dipole) { return flagOf(dipole.*member); },
          [](CDipoleszq& dipole, const FieldValue& value) { return setFlag(dipole.*member, value); }};
}

FieldValue labelOf(const CDipoleszq& dipole) {
  return utf8Of(dipole.m_label);
}
bool setLabel(CDipoleszq& dipole, const FieldValue& value) {
  dipole.m_label = fromUtf8(std::get<std::string>(value));
  return true;
}

FieldValue colourOf(const CDipoleszq& dipole) {
  return colourText(dipole.m_color);
}
bool setColourOf(CDipoleszq& dipole, const FieldValue& value) {
  return setColour(dipole.m_color, std::get<std::string>(value));
}

FieldValue isOnSlices(const CDipoleszq& dipole) {
  return dipole.m_display == shownDisplay;
}
// Its neighbour to the left has been set.
bool agreesWithDisplay(CDipoleszq& dipole, const FieldValue& value) {
  const bool* const flag = std::get_if<bool>(&value);
  return flag != nullptr && *flag == (dipole.m_display == shownDisplay);
}

FieldValue isSelected(const CDipoleszq& dipole) {
  return dipole.m_selected;
}
bool setSelected(CDipoleszq& dipole, const FieldValue& value) {
  const bool* const flag = std::get_if<bool>(&value);
  dipole.m_selected = flag != nullptr && *flag;
  return flag != nullptr;
}

constexpr std::array<DipoleField, fieldCount> fields{{
    whole<&CDipoles::m_number>("number"),
    whole<&CDipoles::m_id>("id"),
    whole<&CDipoles::m_fitTag>("fit_tag"),
    {"label", FieldKind::text, DipoleValue::label, labelOf, setLabel},
    real<&CDipoles::m_location, 0>("x_left_mm"),
    real<&CDipoles::m_location, 1>("y_up_mm"),
    real<&CDipoles::m_location, 2>("z_front_mm"),
    real<&CDipoles::m_orientation, 0>("orientation_x_left", DipoleValue::orientation),
    real<&CDipoles::m_orientation, 1>("orientation_y_up", DipoleValue::orientation),
    real<&CDipoles::m_orientation, 2>("orientation_z_front", DipoleValue::orientation),
    real<&CDipoles::m_moment>("moment", DipoleValue::moment),
    real<&CDipoles::m_latency>("latency_ms", DipoleValue::latency),
    real<&CDipoles::m_fitError>("fit_error_percent", DipoleValue::fitError),
    {"color", FieldKind::colour, std::nullopt, colourOf, setColourOf},
    colour3D<0>("color_3d_red"),
    colour3D<1>("color_3d_green"),
    colour3D<2>("color_3d_blue"),
    flag<&CDipoles::m_show>("shown_in_3d"),
    flag<&CDipoles::m_showOrientation>("orientation_shown_in_3d"),
    whole<&CDipoles::m_display>("display"),
    {"shown_on_slices", FieldKind::flag, std::nullopt, isOnSlices, agreesWithDisplay},
    {"selected", FieldKind::flag, std::nullopt, isSelected, setSelected},
    real<&CDipoles::m_size>("glyph_size_pixels"),
}};

}  // namespace

std::span<const DipoleField, fieldCount> dipoleFields() {
  return fields;
}

const char* fieldTitle(std::size_t place, bool isMomentInNAm) {
  return place == fieldMoment && isMomentInNAm ? "moment_nAm" : fields.at(place).name;
}

std::string titleIn(std::size_t place, bool isMomentInNAm, const FrameTitles& titles) {
  const bool isFramed = place >= fieldX && place <= fieldOrientationZ && !titles.at(place - fieldX).empty();
  return isFramed ? titles.at(place - fieldX) : fieldTitle(place, isMomentInNAm);
}

FieldValue fieldValue(std::size_t place, const CDipoleszq& dipole, std::uint8_t unknown) {
  const DipoleField& field = fields.at(place);
  const bool isUnknown = field.unknown && (unknown & static_cast<std::uint8_t>(*field.unknown)) != 0;
  return isUnknown ? FieldValue() : field.get(dipole);
}

}  // namespace host
