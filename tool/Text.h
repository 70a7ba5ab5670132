// Text of unknown origin, made fit for the terminal. All of it is UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// The same text with every character that a terminal could act upon (control characters, marks that change
// the reading direction) and every byte that is not UTF-8 as an escape such as \u001b or \xff.
std::string printable(std::string_view text);

// The same for several lines: their ends stay. In JSON the escapes are JSON's own.
std::string printableLines(std::string_view text);

}  // namespace tool
