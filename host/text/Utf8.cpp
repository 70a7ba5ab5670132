#include "host/text/Utf8.h"

#include <algorithm>

namespace host {

Utf8Character firstCharacter(std::string_view text) {
  const auto byteAt = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byteAt(0);
  if (first < 0x80) {
    return {first, 1};
  }
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() < length) {
    return {};
  }
  char32_t point = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0U) != 0x80U) {
      return {};
    }
    point = (point << 6U) | (byteAt(i) & 0x3FU);
  }
  const bool isTooLong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
  if (isTooLong || isHighHalf(point) || isLowHalf(point) || point > 0x10FFFF) {
    return {};
  }
  return {point, length};
}

std::size_t utf8Length(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size()) {
    const std::size_t next = firstCharacter(text.substr(length)).length;
    if (next == 0) {
      break;
    }
    length += next;
  }
  return length;
}

std::size_t utf8Characters(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  }));
}

void appendUtf8(std::string& text, char32_t point) {
  const auto add = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  const auto addRest = [&](int shift) { add(0x80 | ((point >> shift) & 0x3F)); };
  if (point < 0x80) {
    add(point);
  } else if (point < 0x800) {
    add(0xC0 | (point >> 6));
    addRest(0);
  } else if (point < 0x10000) {
    add(0xE0 | (point >> 12));
    addRest(6);
    addRest(0);
  } else {
    add(0xF0 | (point >> 18));
    addRest(12);
    addRest(6);
    addRest(0);
  }
}

CString fromUtf8(std::string_view text) {
  std::basic_string<TCHAR> units;
  units.reserve(text.size());
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    if (next.length == 0) {
      units += static_cast<TCHAR>(0xDC00 + static_cast<unsigned char>(text.front()));
    } else if (next.point < 0x10000) {
      units += static_cast<TCHAR>(next.point);
    } else {
      units += static_cast<TCHAR>(0xD800 + ((next.point - 0x10000) >> 10));
      units += static_cast<TCHAR>(0xDC00 + ((next.point - 0x10000) & 0x3FF));
    }
    text.remove_prefix((std::max)(next.length, std::size_t{1}));
  }
  return {units.data(), static_cast<int>(units.size())};
}

}  // namespace host
