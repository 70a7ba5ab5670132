// The colours of a set's dipoles that are not their own: by a value, or by cluster.
#pragma once

#include <optional>
#include <variant>

#include "host/dipoles/ClusterColors.h"
#include "host/dipoles/ValueColors.h"
#include "host/dipoles/ViewSettings.h"

namespace host {

using DipoleColors = std::variant<ValueColors, ClusterColors>;

inline Rgb colorOf(const DipoleColors& colors, const CDipoles& dipole) {
  return std::visit([&](const auto& kind) { return kind.colorOf(dipole); }, colors);
}

// As the settings say; nothing when each dipole has its own colour. Clusters are those of the settings'
// filter and rule. The settings' `unknown` must outlive the result. Throws what an allocation throws, and
// std::invalid_argument of a rule that is none.
std::optional<DipoleColors> colorsOf(const CDipoleFace& set, const ViewSettings& settings);

}  // namespace host
