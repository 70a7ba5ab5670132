#include "tool/DipoleColumns.h"

#include <array>
#include <cstdio>
#include <utility>
#include <vector>

#include "tool/Numbers.h"
#include "tool/Text.h"
#include "tool/TextTable.h"

namespace tool {
namespace {

// Both forms take names and values from one place; a value that is not finite is a number here.
using Fields = std::vector<std::pair<const char*, Json>>;

std::string colourText(COLORREF colour) {
  std::array<char, 8> text{};
  (void)std::snprintf(text.data(), text.size(), "#%02x%02x%02x", static_cast<unsigned>(GetRValue(colour)),
                      static_cast<unsigned>(GetGValue(colour)), static_cast<unsigned>(GetBValue(colour)));
  return text.data();
}

double single(float value) {
  return withShortestDigits(static_cast<double>(value));
}

Fields fieldsOf(const CDipoleszq& dipole, bool isMomentInNAm) {
  return {{"number", dipole.m_number},
          {"id", dipole.m_id},
          {"fit_tag", dipole.m_fitTag},
          {"label", wellFormedUtf8(dipole.m_label)},
          {"x_left_mm", dipole.m_location[0]},
          {"y_up_mm", dipole.m_location[1]},
          {"z_front_mm", dipole.m_location[2]},
          {"orientation_x_left", dipole.m_orientation[0]},
          {"orientation_y_up", dipole.m_orientation[1]},
          {"orientation_z_front", dipole.m_orientation[2]},
          {isMomentInNAm ? "moment_nAm" : "moment", dipole.m_moment},
          {"latency_ms", dipole.m_latency},
          {"fit_error_percent", dipole.m_fitError},
          {"color", colourText(dipole.m_color)},
          {"color_3d_red", single(dipole.m_colorF[0])},
          {"color_3d_green", single(dipole.m_colorF[1])},
          {"color_3d_blue", single(dipole.m_colorF[2])},
          {"shown_in_3d", dipole.m_show != 0},
          {"orientation_shown_in_3d", dipole.m_showOrientation != 0},
          {"display", dipole.m_display},
          {"shown_on_slices", dipole.m_display == 1},
          {"selected", dipole.m_selected},
          {"glyph_size_pixels", dipole.m_size}};
}

std::string cellOf(const Json& value) {
  if (value.is_string()) {
    return value.get<std::string>();
  }
  if (value.is_boolean()) {
    return value.get<bool>() ? "yes" : "no";
  }
  return value.is_number_float() ? exact(value.get<double>()) : value.dump();
}

template <typename Take>
void eachDipole(const CDipoleFace& set, Take take) {
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* dipole = set.m_dipoles[slot]) {
      take(*dipole);
    }
  }
}

}  // namespace

std::string dipoleTable(const CDipoleFace& set, bool isMomentInNAm, char separator) {
  std::vector<TextTable::Column> columns;
  for (const auto& field : fieldsOf(CDipoleszq(), isMomentInNAm)) {
    columns.push_back({field.first});
  }
  TextTable table(columns);
  eachDipole(set, [&](const CDipoleszq& dipole) {
    std::vector<std::string> cells;
    for (const auto& field : fieldsOf(dipole, isMomentInNAm)) {
      cells.push_back(cellOf(field.second));
    }
    table.addRow(std::move(cells));
  });
  return table.delimited(separator);
}

Json dipoleList(const CDipoleFace& set, bool isMomentInNAm) {
  Json list = Json::array();
  eachDipole(set, [&](const CDipoleszq& dipole) {
    Json object = Json::object();
    for (auto& field : fieldsOf(dipole, isMomentInNAm)) {
      object[field.first] = std::move(field.second);
    }
    list.push_back(std::move(object));
  });
  return list;
}

}  // namespace tool
