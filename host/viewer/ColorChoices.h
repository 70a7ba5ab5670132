// By what dipoles can be coloured, in the order of the menu and of the view panel.
#pragma once

#include <array>

#include "host/dipoles/ViewSettings.h"

namespace host {

inline constexpr std::array<ColourBy, 5> colorChoices{ColourBy::own, ColourBy::latency, ColourBy::fitError,
                                                      ColourBy::moment, ColourBy::cluster};

}  // namespace host
