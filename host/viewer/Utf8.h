// Between the pictures' texts, UTF-8, and those of the windows.
#pragma once

#include <afx.h>

#include <string>
#include <string_view>

namespace host {

[[nodiscard]] CString fromUtf8(std::string_view text);
[[nodiscard]] std::string toUtf8(const CString& text);

}  // namespace host
