// UTF-8, character by character.
#pragma once

#include <afx.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

struct Utf8Character {
  char32_t point = 0;
  std::size_t length = 0;  // bytes; 0 when the bytes are no UTF-8
};

// The character at the front of a text that is not empty.
Utf8Character firstCharacter(std::string_view text);

// How many bytes at the front are UTF-8.
std::size_t utf8Length(std::string_view text);

// How many characters a text of UTF-8 holds.
std::size_t utf8Characters(std::string_view text);

// Any number up to 10FFFF, halves of surrogate pairs too, although no reader takes those.
void appendUtf8(std::string& text, char32_t point);

constexpr bool isHighHalf(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowHalf(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// For windows and for names of files, see host/text/PathText.h: a byte that is no UTF-8 becomes DC00 + byte.
CString fromUtf8(std::string_view text);

}  // namespace host
