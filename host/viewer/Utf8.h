// From the pictures' texts, UTF-8, to those of the windows; host/text/PathText.h has the other way.
#pragma once

#include <afx.h>

#include <string_view>

namespace host {

[[nodiscard]] CString fromUtf8(std::string_view text);

}  // namespace host
