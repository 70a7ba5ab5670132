#include "host/exchange/DelimitedText.h"

#include <algorithm>

namespace host {

namespace {

constexpr std::string_view formulaStarts = "=+-@'\t\r";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool startsFormula(std::string_view text) {
  return !text.empty() && formulaStarts.find(text.front()) != std::string_view::npos;
}

// "name, line 3, column 5", as much of it as there is.
std::string placeOf(const std::string& name, std::size_t line, std::size_t column) {
  std::string place = name;
  const auto add = [&place](const std::string& part) { place += (place.empty() ? "" : ", ") + part; };
  if (line != 0) {
    add("line " + std::to_string(line));
  }
  if (column != 0) {
    add("column " + std::to_string(column));
  }
  return place;
}

}  // namespace

std::string guarded(const std::string& text) {
  return startsFormula(text) ? "'" + text : text;
}

std::string unguarded(const std::string& text) {
  const bool isGuarded = text.starts_with('\'') && startsFormula(std::string_view(text).substr(1));
  return isGuarded ? text.substr(1) : text;
}

std::string delimitedCell(const std::string& text, char separator, bool isQuoted) {
  const bool isPlain =
      text.find_first_of("\"\r\n") == std::string::npos && text.find(separator) == std::string::npos;
  if (isPlain && !isQuoted) {
    return text;
  }
  std::string result = "\"";
  for (const char c : text) {
    result.append(c == '"' ? 2 : 1, c);
  }
  return result + "\"";
}

TableFault::TableFault(std::size_t line, std::size_t column, const std::string& what)
    : std::runtime_error(what), m_line(line), m_column(column) {}

std::runtime_error TableFault::of(const std::string& name) const {
  const std::string place = placeOf(name, m_line, m_column);
  return std::runtime_error((place.empty() ? "" : place + ": ") + what());
}

DelimitedRows::DelimitedRows(std::string_view text, char separator) : m_rest(text), m_separator(separator) {
  if (m_rest.starts_with(byteOrderMark)) {
    m_rest.remove_prefix(byteOrderMark.size());
  }
}

bool DelimitedRows::next(std::vector<DelimitedCell>& cells) {
  cells.clear();
  if (m_rest.find_first_not_of("\r\n") == std::string_view::npos) {
    return false;
  }
  m_line = m_nextLine;
  cells.push_back(takeCell(1));
  while (!isAtLineEnd()) {
    m_rest.remove_prefix(1);  // the separator
    cells.push_back(takeCell(cells.size() + 1));
  }
  takeLineEnd();
  return true;
}

bool DelimitedRows::isAtLineEnd() const {
  return m_rest.empty() || m_rest.front() == '\n' || m_rest.front() == '\r';
}

void DelimitedRows::takeLineEnd() {
  const std::size_t length = m_rest.starts_with("\r\n") ? 2 : 1;
  m_rest.remove_prefix((std::min)(length, m_rest.size()));
  ++m_nextLine;
}

DelimitedCell DelimitedRows::takeCell(std::size_t column) {
  DelimitedCell cell;
  if (m_rest.starts_with('"')) {
    takeQuoted(cell, column);
    return cell;
  }
  const char ends[] = {m_separator, '\r', '\n'};
  const std::size_t length =
      (std::min)(m_rest.find_first_of(std::string_view(ends, sizeof ends)), m_rest.size());
  cell.text = m_rest.substr(0, length);
  if (cell.text.find('"') != std::string::npos) {
    throw TableFault(m_nextLine, column, "a quote stands inside of a cell that has none around it");
  }
  m_rest.remove_prefix(length);
  return cell;
}

void DelimitedRows::takeQuoted(DelimitedCell& cell, std::size_t column) {
  cell.isQuoted = true;
  const std::size_t firstLine = m_nextLine;
  for (;;) {
    m_rest.remove_prefix(1);  // the quote
    const std::size_t end = m_rest.find('"');
    if (end == std::string_view::npos) {
      throw TableFault(firstLine, column, "the quote in front of this cell is not closed");
    }
    const std::string_view part = m_rest.substr(0, end);
    cell.text += part;
    m_nextLine += static_cast<std::size_t>(std::count(part.begin(), part.end(), '\n'));
    m_rest.remove_prefix(end + 1);
    if (!m_rest.starts_with('"')) {
      break;
    }
    cell.text += '"';
  }
  if (!isAtLineEnd() && m_rest.front() != m_separator) {
    throw TableFault(m_nextLine, column, "something stands behind the quote that closes this cell");
  }
}

}  // namespace host
