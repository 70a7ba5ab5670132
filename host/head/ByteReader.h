// Numbers out of bytes in either byte order.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <span>

#include "host/head/Vector3.h"

namespace host {

// The number at a byte offset; the bytes must be there.
template <typename Number>
Number numberAt(std::span<const std::byte> bytes, std::size_t offset, std::endian order) {
  std::array<std::byte, sizeof(Number)> raw;
  std::memcpy(raw.data(), bytes.data() + offset, raw.size());
  if (order != std::endian::native) {
    std::reverse(raw.begin(), raw.end());
  }
  return std::bit_cast<Number>(raw);
}

// Three of them, one behind the other.
template <typename Number>
Vector3 tripleAt(std::span<const std::byte> bytes, std::size_t offset, std::endian order) {
  Vector3 triple;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    triple[static_cast<int>(axis)] =
        static_cast<double>(numberAt<Number>(bytes, offset + axis * sizeof(Number), order));
  }
  return triple;
}

}  // namespace host
