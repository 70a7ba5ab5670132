// Numbers out of bytes in either byte order.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <span>

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

}  // namespace host
