// A table of UTF-8 texts for the terminal (aligned columns) or for other programs (CSV).
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

  // Columns padded to the width of their longest text, two blanks between them, none at a line's end.
  std::string aligned() const;

  // Separated by commas or another character, quoted as RFC 4180 says, titles in the first line. Lines end
  // with a line feed alone, as other text output on this system does.
  std::string delimited(char separator) const;

 private:
  std::vector<Column> m_columns;
  std::vector<std::vector<std::string>> m_rows;
};

}  // namespace host
