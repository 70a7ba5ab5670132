// The colours of a page.
#pragma once

#include <string>

#include "host/exchange/Json.h"
#include "host/page/PageSource.h"
#include "host/paint/Image.h"

namespace host {

// "#rrggbb"
std::string colourText(const Rgb& colour);

// The members of SettingsData that are colours.
void addColours(Json& settings, const PageSource& source);

}  // namespace host
