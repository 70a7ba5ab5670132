// What a page holds, as JSON: the PageData of page/src/data/PageData.ts.
#pragma once

#include "host/exchange/Json.h"
#include "host/page/PageHead.h"
#include "host/page/PageSource.h"

namespace host {

Json pageData(const PageSource& source, const PageHead& head);

}  // namespace host
