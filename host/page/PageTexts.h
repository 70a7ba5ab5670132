// What a page says in words, and what of it an anonymous one may say.
#pragma once

#include "host/exchange/Json.h"
#include "host/page/PageSource.h"
#include "host/page/PageWorld.h"

namespace host {

// FindingData of each. In an anonymous page only what kind of thing it is: sentences quote files.
Json findingsJson(const PageSource& source);

Json repairedJson(const PageSource& source);

// To stand on every picture.
Json warningsJson(const PageSource& source, const PageWorld& world);

// Of sides, frames, spread and cone. `ofHead`: what was done to it.
Json conventionsJson(const PageSource& source, const PageWorld& world, const std::string& ofHead);

}  // namespace host
