// A row as the module's import scans it.
#pragma once

#include <cstddef>
#include <string_view>

namespace host {

// What the C library's scanf makes of a row, which is what the module's import makes of it: a field may begin
// with a number and go on otherwise. Each step stands for one directive; the first that fails ends the scan.
class RowScan {
 public:
  explicit RowScan(std::string_view row) : m_rest(row) {}

  RowScan& integer(int* value = nullptr);  // %d
  RowScan& real(float* value = nullptr);   // %f
  RowScan& word();                         // %s
  RowScan& blanks();
  RowScan& colon();

  int fields() const { return m_fields; }

 private:
  bool startField();
  std::size_t specialLength(float& value) const;
  std::size_t realLength(float& value) const;
  RowScan& endField(std::size_t length);

  std::string_view m_rest;
  int m_fields = 0;
  bool m_failed = false;
};

}  // namespace host
