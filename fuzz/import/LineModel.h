// A plain model of the importers' line reader, byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// The bytes of the line that begins at `at`, which moves behind it. False at the end of the input; `line` is
// then what no line end closed.
inline bool modelLine(const std::uint8_t* data, std::size_t size, std::size_t& at, std::string& line) {
  constexpr std::size_t longest = 2048;
  line.clear();
  while (at < size) {
    const auto byte = static_cast<char>(data[at++]);
    if (byte == '\n' || byte == '\r') {
      if (!line.empty()) {
        return true;
      }
    } else {
      line += byte;
      if (line.size() == longest) {
        return true;
      }
    }
  }
  return false;
}
