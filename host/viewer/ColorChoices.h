// By what dipoles can be coloured, in the order of the menu and of the view panel.
#pragma once

#include <array>
#include <optional>

#include "host/dipoles/ValueColors.h"

namespace host {

// Nothing: each dipole's own colour.
inline constexpr std::array<std::optional<DipoleValue>, 4> colorChoices{
    std::nullopt, DipoleValue::latency, DipoleValue::fitError, DipoleValue::moment};

}  // namespace host
