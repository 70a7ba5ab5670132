// What separates the fields of a row, and what numbers are made of.
#pragma once

namespace host {

constexpr bool isBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace host
