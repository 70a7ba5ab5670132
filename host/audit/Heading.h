// The line of a file that names the columns below it.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace host {

enum class Column : std::uint8_t {
  trial,
  sample,
  latency,
  x,
  y,
  z,
  xo,
  yo,
  zo,
  moment,
  error,     // of the fit, percent
  goodness,  // of the fit
  label,
  other
};

enum class ColumnUnit : std::uint8_t { none, centimetre, millimetre, metre, second, millisecond, percent };

// Where the columns of a table stand: the field of each, from 0; -1 when it has none.
class ColumnPlaces {
 public:
  ColumnPlaces() = default;
  explicit ColumnPlaces(const std::vector<Column>& columns);

  int operator[](Column column) const { return m_places[static_cast<int>(column)]; }
  bool has(Column column) const { return (*this)[column] >= 0; }
  // One past the last field that is not a label and not another column.
  int end() const;

 private:
  int m_places[14] = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
};

class Heading {
 public:
  Heading() = default;
  explicit Heading(std::string_view line);

  // The names that stand there, comment signs left out. Names of several words are taken apart by tabs, or by
  // two blanks, or by one, whichever gives a row's number of fields; without a row, by the first that gives
  // three names.
  void fitTo(int fields);

  const std::vector<Column>& columns() const { return m_columns; }
  int count() const { return static_cast<int>(m_columns.size()); }
  ColumnPlaces places() const { return ColumnPlaces(m_columns); }
  bool names(Column column) const { return places().has(column); }
  bool namesPlace() const;  // x, y and z

  // The unit behind a column's name; of x, y and z the first that has one.
  ColumnUnit unitOf(Column column) const;
  ColumnUnit lengthUnit() const;
  // Takes units from a line of them, "(msec) (cm) (cm) ...", one for each column in order. They stay when the
  // columns are taken apart anew.
  void takeUnits(std::string_view line);
  static bool isUnitLine(std::string_view line);

  // Whether a column that both know stands elsewhere, or another known one stands in its place. Names that
  // are not known contradict nothing.
  bool contradicts(const ColumnPlaces& expected) const;

 private:
  void take(const std::vector<std::string_view>& cells);
  void applyUnitLine();

  std::vector<std::vector<std::string_view>> m_ways;  // the ways to take the line apart
  std::vector<Column> m_columns;
  std::vector<ColumnUnit> m_units;
  std::vector<ColumnUnit> m_unitLine;  // of a line of units; none: the column's own counts
};

}  // namespace host
