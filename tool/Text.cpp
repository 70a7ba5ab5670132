#include "tool/Text.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "host/text/Utf8.h"

namespace tool {
namespace {

bool isActedUpon(char32_t value) {
  const bool isControl = value < 0x20 || (value >= 0x7F && value <= 0x9F);
  const bool isDirectionMark = value == 0x061C || value == 0x200E || value == 0x200F ||
                               (value >= 0x2028 && value <= 0x202E) || (value >= 0x2066 && value <= 0x2069);
  return isControl || isDirectionMark;
}

std::string escape(const char* format, unsigned value) {
  std::array<char, 16> buffer{};
  (void)std::snprintf(buffer.data(), buffer.size(), format, value);
  return buffer.data();
}

std::string escaped(std::string_view text, bool keepLineEnds) {
  std::string result;
  while (!text.empty()) {
    const host::Utf8Character next = host::firstCharacter(text);
    const std::size_t length = next.length == 0 ? 1 : next.length;
    if (next.length == 0) {
      result += escape("\\x%02x", static_cast<unsigned char>(text.front()));
    } else if (isActedUpon(next.point) && !(keepLineEnds && next.point == U'\n')) {
      result += escape("\\u%04x", static_cast<std::uint32_t>(next.point));
    } else {
      result += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return result;
}

}  // namespace

std::string printable(std::string_view text) {
  return escaped(text, false);
}

std::string printableLines(std::string_view text) {
  return escaped(text, true);
}

}  // namespace tool
