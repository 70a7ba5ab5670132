#include "tool/RawLines.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace tool {

std::optional<std::string> takeLines(const std::string& path,
                                     const std::function<void(const std::string&)>& take) {
  constexpr std::size_t longestLine = 2048;
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) {
    return std::nullopt;
  }
  std::ifstream file(path, std::ios::binary);
  if (!file.is_open()) {
    return std::nullopt;
  }
  std::string line;
  for (char c = 0; file.get(c);) {
    const bool isEnd = c == '\n' || c == '\r';
    if (!isEnd) {
      line += c;
    }
    if (isEnd || line.size() == longestLine) {
      line.resize(std::strlen(line.c_str()));
      take(line);
      line.clear();
    }
  }
  return line;
}

bool contains(std::string_view line, std::string_view words) {
  return line.find(words) != std::string_view::npos;
}

}  // namespace tool
