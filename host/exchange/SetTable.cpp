#include "host/exchange/SetTable.h"

#include <vector>

#include "host/exchange/DelimitedText.h"
#include "host/exchange/TableColumns.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

std::string flagText(bool value) {
  return value ? "yes" : "no";
}

class CellWriter {
 public:
  explicit CellWriter(char separator) : m_separator(separator) {}

  std::string operator()(std::monostate /*unknown*/) const { return {}; }
  std::string operator()(bool value) const { return flagText(value); }
  std::string operator()(int value) const { return std::to_string(value); }
  std::string operator()(float value) const { return shortest(static_cast<double>(value)); }
  std::string operator()(double value) const { return exact(value); }
  std::string operator()(const std::string& value) const {
    return delimitedCell(guarded(value), m_separator, value.empty());
  }

 private:
  char m_separator;
};

std::optional<FieldValue> flagOf(const std::string& text) {
  if (text == "yes" || text == "no") {
    return text == "yes";
  }
  return numberOf<int>(text);
}

template <typename Number>
std::optional<FieldValue> numberIn(const std::string& text) {
  const std::optional<Number> number = numberOf<Number>(text);
  return number ? std::optional<FieldValue>(*number) : std::nullopt;
}

// Nothing when the text is not what the column holds.
std::optional<FieldValue> valueIn(const DelimitedCell& cell, FieldKind kind) {
  if (cell.text.empty() && !cell.isQuoted) {
    return FieldValue();
  }
  switch (kind) {
    case FieldKind::whole:
      return numberIn<int>(cell.text);
    case FieldKind::flag:
      return flagOf(cell.text);
    case FieldKind::single:
      return numberIn<float>(cell.text);
    case FieldKind::real:
      return numberIn<double>(cell.text);
    case FieldKind::colour:
      return cell.text;
    case FieldKind::text:
      break;
  }
  return unguarded(cell.text);
}

const char* kindText(FieldKind kind) {
  switch (kind) {
    case FieldKind::whole:
      return "is no whole number that fits";
    case FieldKind::flag:
      return "is neither yes nor no";
    case FieldKind::single:
    case FieldKind::real:
    case FieldKind::text:
    case FieldKind::colour:
      break;
  }
  return "is no number, or one that does not fit";
}

// What stands in a cell, for a message: as much of it as is of use.
std::string shown(const std::string& text) {
  constexpr std::size_t most = 40;
  const std::string part = text.substr(0, utf8Length(std::string_view(text).substr(0, most)));
  return "\"" + part + (part.size() < text.size() ? "..." : "") + "\"";
}

class TableReader {
 public:
  TableReader(std::string_view text, char separator)
      : m_rows(text, separator), m_set(std::make_unique<CDipoleFace9File>()) {}

  TableSet read() {
    takeTitles();
    while (m_rows.next(m_cells)) {
      takeDipole();
    }
    return {std::move(m_set), std::move(m_unknown)};
  }

 private:
  [[noreturn]] void fail(std::size_t column, const std::string& what) const {
    throw TableFault(m_rows.line(), column, what);
  }

  void takeTitles() {
    if (!m_rows.next(m_cells)) {
      throw TableFault(1, 0, "there is no line of titles");
    }
    std::array<bool, fieldCount> has{};
    for (const DelimitedCell& cell : m_cells) {
      const std::size_t column = m_places.size() + 1;
      const std::optional<std::size_t> place = placeOfTitle(cell.text);
      if (!place) {
        fail(column, shown(cell.text) + notReadBack(cell.text));
      }
      if (has.at(*place)) {
        fail(column, shown(cell.text) + " is there twice");
      }
      has.at(*place) = true;
      m_places.push_back(*place);
      if (*place == fieldMoment) {
        m_set->m_momentInNAm = cell.text == fieldTitle(fieldMoment, true) ? 1 : 0;
      }
    }
    if (const std::optional<std::string> missing = whatIsMissing(has)) {
      fail(0, *missing);
    }
  }

  void takeDipole() {
    if (m_cells.size() != m_places.size()) {
      fail((std::min)(m_cells.size(), m_places.size()) + 1,
           "this line has " + std::to_string(m_cells.size()) + " cells, the titles are " +
               std::to_string(m_places.size()));
    }
    if (m_set->m_totalDipoles == DipoleTable::capacity) {
      fail(0, "a set holds " + std::to_string(DipoleTable::capacity) + " dipoles, this would be one more");
    }
    DipoleRow row;
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
      row.at(m_places[i]) = takeValue(i);
    }
    const int slot = m_set->m_totalDipoles;
    if (m_set->addDipole() == 0) {
      throw std::bad_alloc();
    }
    CDipoleszq& dipole = *m_set->m_dipoles[slot];
    dipole.m_number = slot + 1;
    const MadeDipole made = makeDipole(row, dipole);
    if (made.fault) {
      fail(columnOf(made.fault->place), made.fault->what);
    }
    m_unknown.markAll(slot, made.unknown);
  }

  FieldValue takeValue(std::size_t cell) const {
    const DipoleField& field = dipoleFields()[m_places[cell]];
    const std::string& text = m_cells[cell].text;
    if (utf8Length(text) != text.size()) {
      fail(cell + 1, "this is no UTF-8");
    }
    std::optional<FieldValue> value = valueIn(m_cells[cell], field.kind);
    if (!value) {
      fail(cell + 1, std::string(fieldTitle(m_places[cell], m_set->m_momentInNAm != 0)) + ": " + shown(text) +
                         " " + kindText(field.kind));
    }
    return *std::move(value);
  }

  std::size_t columnOf(std::size_t place) const {
    std::size_t column = 1;
    while (column <= m_places.size() && m_places[column - 1] != place) {
      ++column;
    }
    return column;
  }

  DelimitedRows m_rows;
  std::vector<DelimitedCell> m_cells;
  std::vector<std::size_t> m_places;  // of the columns
  std::unique_ptr<CDipoleFace9File> m_set;
  UnknownValues m_unknown;
};

}  // namespace

std::string tableOf(const CDipoleFace& set, const UnknownValues& unknown, bool isMomentInNAm, char separator,
                    const FrameTitles& titles, const SetPlaces* places) {
  std::string table;
  for (std::size_t place = 0; place < fieldCount; ++place) {
    table += (place == 0 ? "" : std::string(1, separator)) + titleIn(place, isMomentInNAm, titles);
  }
  if (places != nullptr) {
    table += separator + places->labelTitle + separator + places->distanceTitle;
  }
  table += '\n';
  const CellWriter cellOf(separator);
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    if (dipole == nullptr) {
      continue;
    }
    for (std::size_t place = 0; place < fieldCount; ++place) {
      if (place > 0) {
        table += separator;
      }
      table += std::visit(cellOf, fieldValue(place, *dipole, unknown.of(slot)));
    }
    if (places != nullptr) {
      const std::optional<NamedPlace>& place = places->of(slot);
      table += separator + (place ? cellOf(place->name) : std::string());
      table += separator + (place ? cellOf(place->distance) : std::string());
    }
    table += '\n';
  }
  return table;
}

TableSet readTable(std::string_view text, char separator, const std::string& name) {
  try {
    return TableReader(text, separator).read();
  } catch (const TableFault& fault) {
    throw fault.of(name);
  }
}

}  // namespace host
