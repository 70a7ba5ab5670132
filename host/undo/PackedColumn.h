// A column of values of one width, packed by bytes: all first bytes, then all second bytes, and so on, where
// a row of bytes that are all the same takes one. So a column of equal values costs next to nothing, numbers
// that were read in single precision and held in double cost five bytes, and small counts two.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace host {

class PackedColumn {
 public:
  PackedColumn() = default;
  // `width`: bytes of a value, 1 to 8; the size of `values` must be a multiple of it.
  PackedColumn(const std::vector<std::byte>& values, std::size_t width);

  template <typename Value>
  static PackedColumn of(const std::vector<Value>& values) {
    std::vector<std::byte> bytes(values.size() * sizeof(Value));
    if (!values.empty()) {
      std::memcpy(bytes.data(), values.data(), bytes.size());
    }
    return {bytes, sizeof(Value)};
  }

  std::vector<std::byte> bytes() const;

  // Value must have the width that the column was made with.
  template <typename Value>
  std::vector<Value> values() const {
    const std::vector<std::byte> unpacked = bytes();
    std::vector<Value> result(m_count);
    if (!unpacked.empty()) {
      std::memcpy(result.data(), unpacked.data(), unpacked.size());
    }
    return result;
  }

  std::size_t memory() const { return sizeof *this + m_rows.capacity(); }

  friend bool operator==(const PackedColumn&, const PackedColumn&) = default;

 private:
  std::size_t m_count = 0;
  std::size_t m_width = 1;
  unsigned m_varying = 0;  // a bit for each row that is there in full
  std::vector<std::byte> m_rows;
};

}  // namespace host
