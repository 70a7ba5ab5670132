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

std::filesystem::path pathOf(const CString& text);
CString textOf(const std::filesystem::path& path);
CString fileNameOf(const CString& path);  // without its folders
CString fullPath(const CString& path);    // from the current folder; as it is when there is none

// Whether the last part of a path ends so, with something in front; ASCII letters may be large or small.
bool hasEnding(const CString& path, std::string_view ending);

// UTF-8 that any reader takes: a half of a surrogate pair that stands alone becomes U+FFFD.
std::string utf8Of(const CString& text);

}  // namespace host
