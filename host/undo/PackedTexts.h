// A column of texts, packed: their lengths and all code units one behind the other; one text when all are the
// same.
#pragma once

#include <afx.h>

#include <cstddef>
#include <vector>

#include "host/undo/PackedColumn.h"

namespace host {

class PackedTexts {
 public:
  PackedTexts() = default;
  explicit PackedTexts(const std::vector<const CString*>& texts);

  std::vector<CString> texts() const;
  std::size_t memory() const { return m_lengths.memory() + m_units.memory(); }

 private:
  std::size_t m_count = 0;
  PackedColumn m_lengths;  // of the only one, when all are the same
  PackedColumn m_units;
};

}  // namespace host
