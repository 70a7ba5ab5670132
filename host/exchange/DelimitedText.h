// Tables as text with a separator, quoted as RFC 4180 says, whatever the separator: the lines of one, out and
// back. UTF-8; lines end with a line feed alone when written, and as any system ends them when read.
//
// A spreadsheet takes a text that begins with = + - @, a tab or a carriage return for a formula, and drops a
// ' in front. Such a text gets a ' in front, one that begins with a ' too; reading takes it off again.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct DelimitedCell {
  std::string text;
  bool isQuoted = false;
};

std::string guarded(const std::string& text);
std::string unguarded(const std::string& text);

// `text`, in quotes when it has to be, or shall be.
std::string delimitedCell(const std::string& text, char separator, bool isQuoted = false);

// What is wrong with a table, and where.
class TableFault : public std::runtime_error {
 public:
  // `line` and `column` count from 1; 0: none. The column is a cell of a table, or a character of a text.
  TableFault(std::size_t line, std::size_t column, const std::string& what);

  // "`name`, line 3, column 5: ..."
  std::runtime_error of(const std::string& name) const;

 private:
  std::size_t m_line;
  std::size_t m_column;
};

class DelimitedRows {
 public:
  // A mark of UTF-8 in front is no part of the table. `text` must outlive this.
  DelimitedRows(std::string_view text, char separator);

  // The cells of the next line, false behind the last one. Lines without anything at the end of the text are
  // none. Throws TableFault of a quote that is not closed, or that does not stand around a whole cell.
  bool next(std::vector<DelimitedCell>& cells);

  // Of the cells that came last, from 1: a line of the text, which is more than one for cells with line ends.
  std::size_t line() const { return m_line; }

 private:
  DelimitedCell takeCell(std::size_t column);
  void takeQuoted(DelimitedCell& cell, std::size_t column);
  bool isAtLineEnd() const;
  void takeLineEnd();

  std::string_view m_rest;
  char m_separator;
  std::size_t m_line = 0;
  std::size_t m_nextLine = 1;
};

}  // namespace host
