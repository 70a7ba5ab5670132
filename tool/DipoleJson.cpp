#include "tool/DipoleJson.h"

#include <utility>
#include <variant>

#include "host/dipoles/DipoleColumns.h"

namespace tool {

Json dipoleList(const CDipoleFace& set, bool isMomentInNAm) {
  Json list = Json::array();
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    if (dipole == nullptr) {
      continue;
    }
    Json object = Json::object();
    for (const host::DipoleField& field : host::fieldsOf(*dipole, isMomentInNAm)) {
      object[field.name] = std::visit([](const auto& value) { return Json(value); }, field.value);
    }
    list.push_back(std::move(object));
  }
  return list;
}

}  // namespace tool
