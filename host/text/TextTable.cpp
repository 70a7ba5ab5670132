#include "host/text/TextTable.h"

#include <algorithm>
#include <utility>

#include "host/text/Utf8.h"

namespace host {
namespace {

// In characters: the texts hold no wide or combining ones.
std::string padded(const std::string& text, std::size_t width, TextTable::Align align) {
  const std::string blanks(width - utf8Characters(text), ' ');
  return align == TextTable::Align::right ? blanks + text : text + blanks;
}

std::vector<std::string> titlesOf(const std::vector<TextTable::Column>& columns) {
  std::vector<std::string> titles;
  titles.reserve(columns.size());
  for (const TextTable::Column& column : columns) {
    titles.push_back(column.title);
  }
  return titles;
}

}  // namespace

TextTable::TextTable(std::vector<Column> columns) : m_columns(std::move(columns)) {}

void TextTable::addRow(std::vector<std::string> cells) {
  cells.resize(m_columns.size());
  m_rows.push_back(std::move(cells));
}

std::string TextTable::aligned() const {
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    std::size_t width = utf8Characters(m_columns[i].title);
    for (const auto& row : m_rows) {
      width = (std::max)(width, utf8Characters(row[i]));
    }
    widths.push_back(width);
  }
  const auto line = [&](const std::vector<std::string>& cells) {
    std::string text;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      text += (i == 0 ? "" : " ") + padded(cells[i], widths[i], m_columns[i].align);
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text + "\n";
  };
  std::string all = line(titlesOf(m_columns));
  for (const auto& row : m_rows) {
    all += line(row);
  }
  return all;
}

}  // namespace host
