#include "host/dipoles/DipoleColumns.h"

#include <array>
#include <cstdio>
#include <utility>
#include <vector>

#include "host/text/Numbers.h"
#include "host/text/PathText.h"
#include "host/text/TextTable.h"

namespace host {
namespace {

std::string colourText(COLORREF colour) {
  std::array<char, 8> text{};
  (void)std::snprintf(text.data(), text.size(), "#%02x%02x%02x", static_cast<unsigned>(GetRValue(colour)),
                      static_cast<unsigned>(GetGValue(colour)), static_cast<unsigned>(GetBValue(colour)));
  return text.data();
}

double single(float value) {
  return withShortestDigits(static_cast<double>(value));
}

struct CellText {
  std::string operator()(bool value) const { return value ? "yes" : "no"; }
  std::string operator()(int value) const { return std::to_string(value); }
  std::string operator()(double value) const { return exact(value); }
  std::string operator()(const std::string& value) const { return value; }
};

}  // namespace

std::vector<DipoleField> fieldsOf(const CDipoleszq& dipole, bool isMomentInNAm) {
  return {{"number", dipole.m_number},
          {"id", dipole.m_id},
          {"fit_tag", dipole.m_fitTag},
          {"label", utf8Of(dipole.m_label)},
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

std::string dipoleTable(const CDipoleFace& set, bool isMomentInNAm, char separator) {
  std::vector<TextTable::Column> columns;
  for (const DipoleField& field : fieldsOf(CDipoleszq(), isMomentInNAm))
    columns.push_back({field.name});
  TextTable table(columns);
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    if (dipole == nullptr)
      continue;
    std::vector<std::string> cells;
    for (const DipoleField& field : fieldsOf(*dipole, isMomentInNAm))
      cells.push_back(std::visit(CellText(), field.value));
    table.addRow(std::move(cells));
  }
  return table.delimited(separator);
}

}  // namespace host
