// Bytes of .fif files as MNE writes them.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fif {

inline std::string big(std::int32_t number) {
  const auto bits = static_cast<std::uint32_t>(number);
  std::string bytes;
  for (const unsigned shift : {24U, 16U, 8U, 0U}) {
    bytes += static_cast<char>(bits >> shift & 0xFFU);
  }
  return bytes;
}

inline std::string big(float number) {
  return big(std::bit_cast<std::int32_t>(number));
}

inline std::string tag(std::int32_t kind, std::int32_t type, const std::string& value,
                       std::int32_t next = 0) {
  return big(kind) + big(type) + big(static_cast<std::int32_t>(value.size())) + big(next) + value;
}

inline std::string number(std::int32_t kind, std::int32_t value) {
  return tag(kind, 3, big(value));
}

inline std::string point(std::int32_t identity, float x, float y, float z, std::int32_t kind = 1) {
  return tag(213, 33, big(kind) + big(identity) + big(x) + big(y) + big(z));
}

inline std::string start() {
  return tag(100, 31, std::string(20, '\0'));
}

inline std::string end() {
  return tag(108, 0, {}, -1);
}

// Points in metres.
inline std::string points(const std::string& inside) {
  return start() + number(104, 107) + inside + number(105, 107) + end();
}

inline std::string usualPoints(std::int32_t frame = 5) {
  return points(number(3506, frame) + point(1, -0.07F, 0, 0) + point(2, 0, 0.1F, 0) + point(3, 0.075F, 0, 0));
}

// Nine numbers row by row, then the shift in metres; the inverse is not looked at.
inline std::string transform(std::int32_t from, std::int32_t to, const std::array<float, 12>& numbers) {
  std::string value = big(from) + big(to);
  for (const float one : numbers) {
    value += big(one);
  }
  return tag(222, 35, value + std::string(48, '\0'));
}

inline constexpr std::array<float, 12> turned = {0, -1, 0, 1, 0, 0, 0, 0, 1, 0.01F, 0.02F, 0.03F};

}  // namespace fif
