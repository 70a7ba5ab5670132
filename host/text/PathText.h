// Paths and texts between the framework's CString and the standard library.
//
// A CString that names a file may hold halves of surrogate pairs that stand alone: DC80 to DCFF are, where
// the system's paths are bytes, bytes of a name that is not UTF-8. They survive the way to a path and back.
#pragma once

#include <afx.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace host {

[[nodiscard]] std::filesystem::path pathOf(const CString& text);
[[nodiscard]] CString textOf(const std::filesystem::path& path);
[[nodiscard]] CString fileNameOf(const CString& path);  // without its folders

// UTF-8 that any reader takes: a half of a surrogate pair that stands alone becomes U+FFFD.
[[nodiscard]] std::string utf8Of(const CString& text);

// The other way; a byte that is no UTF-8 becomes the unit DC00 + byte.
[[nodiscard]] CString utf16Of(std::string_view utf8);
// How many bytes at the front are UTF-8.
[[nodiscard]] std::size_t utf8Length(std::string_view bytes);

}  // namespace host
