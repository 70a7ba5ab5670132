// A table of UTF-8 texts in aligned columns, for the terminal.
#pragma once

#include <string>
#include <vector>

namespace host {

class TextTable {
 public:
  enum class Align { left, right };
  struct Column {
    std::string title;
    Align align = Align::right;
  };

  explicit TextTable(std::vector<Column> columns);

  // One cell per column.
  void addRow(std::vector<std::string> cells);

  // Columns padded to the width of their longest text, a blank between them, none at a line's end.
  std::string aligned() const;

 private:
  std::vector<Column> m_columns;
  std::vector<std::vector<std::string>> m_rows;
};

}  // namespace host
