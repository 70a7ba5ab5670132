// White space within a line of text.
#pragma once

#include <string_view>

namespace host {

inline constexpr std::string_view blanks = " \t\v\f\r";

// Without the white space around.
constexpr std::string_view withoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(blanks);
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

}  // namespace host
