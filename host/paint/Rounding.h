// Rounding of places and colours in a picture. Quicker than the library's, which many processors call as a
// function, and the same for all numbers that an int can hold.
#pragma once

#include <cstdint>

namespace host {

inline int roundedDown(double value) {
  const int cut = static_cast<int>(value);
  return cut > value ? cut - 1 : cut;
}

inline int roundedUp(double value) {
  const int cut = static_cast<int>(value);
  return cut < value ? cut + 1 : cut;
}

// To the nearest, of a value from 0 to 255.
inline std::uint8_t roundedByte(double value) {
  return static_cast<std::uint8_t>(value + 0.5);  // NOLINT(bugprone-incorrect-roundings): lround is a call
}

// `part` of `other` over `one`, from 0 (nothing of it) to 1.
inline std::uint8_t mixed(std::uint8_t one, std::uint8_t other, double part) {
  return roundedByte(one + (other - one) * part);
}

}  // namespace host
