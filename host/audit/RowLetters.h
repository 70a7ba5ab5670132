// What numbers are made of.
#pragma once

namespace host {

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace host
