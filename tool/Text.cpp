#include "tool/Text.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "platform/Utf.h"

namespace tool {
namespace {

struct CodePoint {
  char32_t value = 0;
  std::size_t length = 0;  // bytes; 0 when the bytes are not UTF-8
};

std::size_t sequenceLength(unsigned char first) {
  if (first < 0x80) {
    return 1;
  }
  if (first >= 0xC2 && first < 0xE0) {
    return 2;
  }
  if (first >= 0xE0 && first < 0xF0) {
    return 3;
  }
  return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

bool isWellFormed(char32_t value, std::size_t length) {
  constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
  return value >= smallest.at(length) && value <= 0x10FFFF && !isSurrogate;
}

CodePoint decodeFirst(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t length = sequenceLength(first);
  if (length == 0 || length > text.size()) {
    return {};
  }
  if (length == 1) {
    return {first, 1};
  }
  char32_t value = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0U) != 0x80U) {
      return {};
    }
    value = value << 6U | (byte & 0x3FU);
  }
  return isWellFormed(value, length) ? CodePoint{value, length} : CodePoint{};
}

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
    const CodePoint next = decodeFirst(text);
    const std::size_t length = next.length == 0 ? 1 : next.length;
    if (next.length == 0) {
      result += escape("\\x%02x", static_cast<unsigned char>(text.front()));
    } else if (isActedUpon(next.value) && !(keepLineEnds && next.value == U'\n')) {
      result += escape("\\u%04x", static_cast<std::uint32_t>(next.value));
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
