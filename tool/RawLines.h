// The lines of a file as the importers cut them, for plain looks into it.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

// Hands out every line: bytes up to a line feed or a return, or, of a longer line, the next 2048; a zero byte
// ends the text of a line early. Returns what stands behind the last line end, which the importers drop, or
// nothing when this is not a regular file or cannot be opened.
std::optional<std::string> takeLines(const std::string& path,
                                     const std::function<void(const std::string&)>& take);

bool contains(std::string_view line, std::string_view words);

}  // namespace tool
