// Conversion of a coordinate to a whole number.
#pragma once

#include <limits>

// Truncates toward zero; what an int cannot hold ends at the nearest one that it can, NaN at the lowest.
inline int truncateToInt(double value) {
  constexpr auto highest = static_cast<double>((std::numeric_limits<int>::max)());
  constexpr auto lowest = static_cast<double>((std::numeric_limits<int>::min)());
  return static_cast<int>(value > highest ? highest : value > lowest ? value : lowest);
}
