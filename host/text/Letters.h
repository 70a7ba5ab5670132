// Letters of ASCII, large or small; all other characters are themselves.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace host {

constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string lowered(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), lower);
  return result;
}

// The same text, whether its letters are large or small.
constexpr bool isSameButLetters(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char one, char other) { return lower(one) == lower(other); });
}

}  // namespace host
