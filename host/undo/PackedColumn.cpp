#include "host/undo/PackedColumn.h"

#include <algorithm>

namespace host {

namespace {

bool isVarying(const std::vector<std::byte>& values, std::size_t width, std::size_t row) {
  for (std::size_t i = row; i < values.size(); i += width) {
    if (values[i] != values[row]) {
      return true;
    }
  }
  return false;
}

}  // namespace

PackedColumn::PackedColumn(const std::vector<std::byte>& values, std::size_t width)
    : m_count(values.size() / width), m_width(width) {
  if (values.empty()) {
    return;
  }
  std::size_t size = 0;
  for (std::size_t row = 0; row < width; ++row) {
    if (isVarying(values, width, row)) {
      m_varying |= 1U << row;
    }
    size += (m_varying >> row & 1U) != 0 ? m_count : 1;
  }
  m_rows.resize(size);
  std::byte* to = m_rows.data();
  for (std::size_t row = 0; row < width; ++row) {
    const std::size_t end = (m_varying >> row & 1U) != 0 ? values.size() : width;
    for (std::size_t i = row; i < end; i += width) {
      *to++ = values[i];
    }
  }
}

std::vector<std::byte> PackedColumn::bytes() const {
  std::vector<std::byte> values(m_count * m_width);
  const std::byte* from = m_rows.data();
  for (std::size_t row = 0; row < m_width && m_count > 0; ++row) {
    const std::size_t step = m_varying >> row & 1U;
    for (std::size_t i = row; i < values.size(); i += m_width, from += step) {
      values[i] = *from;
    }
    from += 1 - step;
  }
  return values;
}

}  // namespace host
