#include "host/audit/Heading.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include "host/text/Blanks.h"
#include "host/text/Letters.h"

namespace host {

namespace {

struct NamedColumn {
  std::string_view name;
  Column column;
};

// Without unit, points, bars and underscores, in small letters.
constexpr NamedColumn knownNames[] = {
    {"trial", Column::trial},
    {"sample", Column::sample},
    {"start", Column::sample},
    {"latency", Column::latency},
    {"time", Column::latency},
    {"x", Column::x},
    {"xp", Column::x},
    {"y", Column::y},
    {"yp", Column::y},
    {"z", Column::z},
    {"zp", Column::z},
    {"xo", Column::xo},
    {"qx", Column::xo},
    {"yo", Column::yo},
    {"qy", Column::yo},
    {"zo", Column::zo},
    {"qz", Column::zo},
    {"mom", Column::moment},
    {"moment", Column::moment},
    {"q", Column::moment},
    {"err", Column::error},
    {"error", Column::error},
    {"gof", Column::goodness},
    {"goodness", Column::goodness},
    {"goodnessoffit", Column::goodness},
    {"label", Column::label},
    {"name", Column::label},
};

constexpr std::pair<std::string_view, ColumnUnit> knownUnits[] = {
    {"cm", ColumnUnit::centimetre},    {"mm", ColumnUnit::millimetre}, {"m", ColumnUnit::metre},
    {"s", ColumnUnit::second},         {"sec", ColumnUnit::second},    {"ms", ColumnUnit::millisecond},
    {"msec", ColumnUnit::millisecond}, {"%", ColumnUnit::percent},
};

std::string simplified(std::string_view text) {
  std::string simple;
  for (const char c : text) {
    if (!isBlank(c) && std::string_view("._|:").find(c) == std::string_view::npos) {
      simple += lower(c);
    }
  }
  return simple;
}

ColumnUnit unitNamed(std::string_view text) {
  const std::string name = simplified(text);
  for (const auto& [known, unit] : knownUnits) {
    if (name == known) {
      return unit;
    }
  }
  return ColumnUnit::none;
}

// What stands in parentheses, or behind a slash, as in "x (cm)" and "x/cm".
ColumnUnit unitIn(std::string_view cell) {
  const std::size_t mark = cell.find_first_of("(/");
  if (mark == std::string_view::npos) {
    return ColumnUnit::none;
  }
  const std::string_view behind = cell.substr(mark + 1);
  return unitNamed(behind.substr(0, behind.find(')')));
}

Column columnNamed(std::string_view cell) {
  const std::string name = simplified(cell.substr(0, cell.find_first_of("(/")));
  const auto* const known = std::find_if(std::begin(knownNames), std::end(knownNames),
                                         [&](const NamedColumn& entry) { return name == entry.name; });
  return known != std::end(knownNames) ? known->column : Column::other;
}

std::string_view withoutCommentSigns(std::string_view line) {
  line = withoutBlanks(line);
  while (line.starts_with('/')) {
    line.remove_prefix(1);
  }
  return withoutBlanks(line);
}

// The pieces between separators, blanks around them left out, empty ones too.
std::vector<std::string_view> between(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> pieces;
  while (!text.empty()) {
    const std::size_t end = (std::min)(text.find(separator), text.size());
    const std::string_view piece = withoutBlanks(text.substr(0, end));
    if (!piece.empty()) {
      pieces.push_back(piece);
    }
    text.remove_prefix((std::min)(end + separator.size(), text.size()));
  }
  return pieces;
}

// By single blanks, but a unit belongs to the name before it.
std::vector<std::string_view> betweenBlanks(std::string_view text) {
  std::vector<std::string_view> pieces;
  for (text = withoutBlanks(text); !text.empty(); text = withoutBlanks(text)) {
    const std::string_view piece = firstWord(text);
    text.remove_prefix(piece.size());
    if (piece.starts_with('(') && !pieces.empty()) {
      const char* const start = pieces.back().data();
      pieces.back() = {start, static_cast<std::size_t>(piece.data() + piece.size() - start)};
    } else {
      pieces.push_back(piece);
    }
  }
  return pieces;
}

}  // namespace

ColumnPlaces::ColumnPlaces(const std::vector<Column>& columns) {
  for (std::size_t i = columns.size(); i-- > 0;) {  // the first of a name counts
    m_places[static_cast<int>(columns[i])] = static_cast<int>(i);
  }
  m_places[static_cast<int>(Column::other)] = -1;
}

int ColumnPlaces::end() const {
  int end = 0;
  for (int column = 0; column < static_cast<int>(Column::label); ++column) {
    end = (std::max)(end, m_places[column] + 1);
  }
  return end;
}

Heading::Heading(std::string_view line) {
  const std::string_view names = withoutCommentSigns(line);
  for (const std::string_view separator : {"\t", "  "}) {
    m_ways.push_back(between(names, separator));
  }
  m_ways.push_back(betweenBlanks(names));
  const auto way = std::find_if(m_ways.begin(), m_ways.end() - 1,
                                [](const std::vector<std::string_view>& cells) { return cells.size() >= 3; });
  take(*way);
}

void Heading::take(const std::vector<std::string_view>& cells) {
  m_columns.clear();
  m_units.clear();
  for (const std::string_view cell : cells) {
    m_columns.push_back(columnNamed(cell));
    m_units.push_back(unitIn(cell));
  }
  applyUnitLine();
}

void Heading::fitTo(int fields) {
  for (const std::vector<std::string_view>& cells : m_ways) {
    if (static_cast<int>(cells.size()) == fields) {
      take(cells);
      return;
    }
  }
}

bool Heading::namesPlace() const {
  return names(Column::x) && names(Column::y) && names(Column::z);
}

ColumnUnit Heading::unitOf(Column column) const {
  const int place = places()[column];
  return place >= 0 ? m_units[static_cast<std::size_t>(place)] : ColumnUnit::none;
}

ColumnUnit Heading::lengthUnit() const {
  for (const Column column : {Column::x, Column::y, Column::z}) {
    const ColumnUnit unit = unitOf(column);
    if (unit == ColumnUnit::centimetre || unit == ColumnUnit::millimetre || unit == ColumnUnit::metre) {
      return unit;
    }
  }
  return ColumnUnit::none;
}

bool Heading::isUnitLine(std::string_view line) {
  line = withoutBlanks(line);
  return line.starts_with('(') || unitNamed(firstWord(line)) != ColumnUnit::none;
}

void Heading::takeUnits(std::string_view line) {
  m_unitLine.clear();
  const bool isInParentheses = withoutBlanks(line).starts_with('(');
  for (const std::string_view cell : isInParentheses ? between(line, "(") : betweenBlanks(line)) {
    m_unitLine.push_back(unitNamed(cell.substr(0, cell.find(')'))));
  }
  applyUnitLine();
}

void Heading::applyUnitLine() {
  for (std::size_t i = 0; i < m_unitLine.size() && i < m_units.size(); ++i) {
    m_units[i] = m_unitLine[i] != ColumnUnit::none ? m_unitLine[i] : m_units[i];
  }
}

bool Heading::contradicts(const ColumnPlaces& expected) const {
  const ColumnPlaces own = places();
  for (int i = 0; i < static_cast<int>(Column::other); ++i) {
    const auto column = static_cast<Column>(i);
    const int place = expected[column];
    const bool isElsewhere = place >= 0 && own.has(column) && own[column] != place;
    const Column there = place >= 0 && place < count() ? m_columns[static_cast<std::size_t>(place)] : column;
    const bool isTaken = there != column && there != Column::other;
    if (isElsewhere || isTaken) {
      return true;
    }
  }
  return false;
}

}  // namespace host
