#include "host/audit/MsiReading.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

#include "host/text/Blanks.h"

namespace host {

namespace {

using C = Column;

const ColumnPlaces expected(std::vector{C::latency, C::x, C::y, C::z, C::xo, C::yo, C::zo, C::moment,
                                        C::other, C::other, C::goodness});

bool contains(std::string_view line, std::string_view words) {
  return line.find(words) != std::string_view::npos;
}

// Lines with one of these words are a legend of symbols to the import, whatever else they hold.
bool isLegendLine(std::string_view line) {
  constexpr std::array<std::string_view, 6> words = {"Code", "Circle", "Square", "Triangle", "Dot", "Shape"};
  return std::any_of(words.begin(), words.end(),
                     [line](std::string_view word) { return contains(line, word); });
}

// Digits with what may stand among them: also of numbers that the import cannot read, such as "1,5".
bool looksLikeNumber(std::string_view field) {
  return !field.empty() && field.find_first_not_of("0123456789+-.,eE") == std::string_view::npos &&
         field.find_first_of("0123456789") != std::string_view::npos;
}

bool looksLikeRow(const RowFields& fields) {
  for (int field = 0; field < 4; ++field) {
    if (!looksLikeNumber(fields[field])) {
      return false;
    }
  }
  return true;
}

}  // namespace

const ColumnPlaces& expectedMsiPlaces() {
  return expected;
}

// Follows the lines as the import does.
class MsiReading::Walk {
 public:
  Walk(MsiReading& reading, const ImportedText& file, const TextEncoding& encoding)
      : m_reading(reading), m_file(file), m_encoding(encoding) {}

  void take(const TextLine& line) {
    if (m_reading.hasTable) {
      takeTableLine(line);
      return;
    }
    if (!line.isClosed) {
      return;
    }
    if (m_isFileInfo) {
      takeFileInfo(line);
    } else if (isLegendLine(line.text)) {
      takeHiddenHeading(line);
    } else if (contains(line.text, "Disk Media:")) {
      m_isFileInfo = true;
    } else if (contains(line.text, "Latency")) {
      takeHeading(line);
      m_reading.hasTable = true;
      m_reading.isLegend = false;
    } else if (m_reading.isLegend) {
      takeTableLine(line);
    }
  }

 private:
  void takeFileInfo(const TextLine& line) {
    const bool namesPatient = contains(line.text, "MRI/CT Patient:");
    const bool namesFile = contains(line.text, "Dipole File:");
    m_isFileInfo = !contains(line.text, "Date of File:") && (namesPatient || namesFile);
    if (m_isFileInfo) {
      m_reading.patient = namesPatient ? MsiHeaderLine{line.text, line.number} : m_reading.patient;
      m_reading.version = namesFile ? MsiHeaderLine{line.text, line.number} : m_reading.version;
    }
  }

  void takeHeading(const TextLine& line) {
    m_reading.heading = Heading(line.text);
    m_reading.headingLine = line.number;
    m_isFitted = false;
  }

  // By the number of fields of the first row.
  void fitHeading(int fields) {
    m_isFitted = true;
    m_reading.heading.fitTo(fields);
    m_reading.hasOtherColumns = m_reading.heading.contradicts(expected);
    m_reading.places = m_reading.hasOtherColumns ? m_reading.heading.places() : expected;
  }

  // A heading that the import takes for a legend, because of the name of one of its columns.
  void takeHiddenHeading(const TextLine& line) {
    const Heading hidden(line.text);
    if (hidden.names(Column::latency) && hidden.namesPlace()) {
      takeHeading(line);
      m_reading.isLegend = true;
    }
  }

  void takeTableLine(const TextLine& line) {
    const RowFields fields(line.text, msiLabelPlace);
    if (!m_isFitted && Heading::isUnitLine(line.text)) {
      m_reading.heading.takeUnits(line.text);
    }
    MsiRow& row = m_reading.rows.emplace_back();
    row.text = line.text;
    row.line = line.number;
    const bool isTaken = arrives(row, fields);
    if (!isTaken && !looksLikeRow(fields)) {
      m_reading.rows.pop_back();
      return;
    }
    if (!m_isFitted) {
      fitHeading(RowFields(line.text).count());
    }
    row.goodness = fields.numberOrZero(m_reading.places[C::goodness]);
    const bool isSeen = m_reading.hasTable && !m_encoding.isUtf16();
    row.isReadable = !(isTaken && isSeen) && m_reading.isAligned(row) && isReadable(RowFields(line.text));
    row.fate = !isSeen           ? MsiFate::hidden
               : !isTaken        ? MsiFate::refused
               : !line.isClosed  ? MsiFate::unclosed
               : isDeclined(row) ? MsiFate::declined
                                 : MsiFate::arrived;
    place(row);
  }

  // Whether the import takes a row for a dipole, and where it then reads its place.
  static bool arrives(MsiRow& row, const RowFields& fields) {
    constexpr int reals = 12;
    row.isPlain = fields.count() > msiLabelPlace - 1 && fields.arePlain(0, reals) &&
                  fields.isInteger(reals) && fields.isInteger(msiLabelPlace - 1);
    if (row.isPlain) {
      for (int axis = 0; axis < 3; ++axis) {
        row.place[axis] = fields.plainNumber(axis + 1);
      }
      return true;
    }
    RowScan scan(row.text);
    scan.real();
    for (float& value : row.place) {
      scan.real(&value);
    }
    for (int i = 4; i < reals; ++i) {
      scan.real();
    }
    return scan.integer().word().word().word().integer().fields() == msiLabelPlace;
  }

  // By the heading's names.
  bool isReadable(const RowFields& fields) const {
    const ColumnPlaces named = m_reading.heading.places();
    for (const Column column : {C::latency, C::x, C::y, C::z, C::xo, C::yo, C::zo, C::moment, C::goodness}) {
      if (!named.has(column) || !fields.number(named[column])) {
        return false;
      }
    }
    return true;
  }

  bool isDeclined(const MsiRow& row) {
    // As written, whatever the unit.
    const bool isFar = std::any_of(std::begin(row.place), std::end(row.place),
                                   [](float value) { return value > farthestUnasked; });
    const std::size_t question = m_nextFar;
    m_nextFar += isFar ? 1 : 0;
    return isFar && !(question < m_file.answers.distant.size() && m_file.answers.distant[question]);
  }

  void place(MsiRow& row) {
    const auto index = static_cast<int>(m_reading.rows.size()) - 1;
    const auto room = static_cast<std::size_t>((std::max)(DipoleTable::capacity - m_file.firstSlot, 0));
    const bool isFull = row.fate == MsiFate::arrived && m_reading.slots.size() >= room;
    if (isFull || m_isCut) {  // the import looks no further
      m_isCut = true;
      row.fate = MsiFate::noRoom;
    } else if (row.fate == MsiFate::arrived) {
      m_reading.slots.push_back(index);
      m_reading.repairedSlots.push_back(index);
    } else if (row.fate == MsiFate::refused || row.fate == MsiFate::hidden) {
      if (row.isReadable) {
        m_reading.repairedSlots.push_back(index);
      }
    }
  }

  MsiReading& m_reading;
  const ImportedText& m_file;
  const TextEncoding& m_encoding;
  std::size_t m_nextFar = 0;
  bool m_isFileInfo = false;
  bool m_isFitted = false;  // the heading, to a row behind it
  bool m_isCut = false;
};

bool MsiReading::isAligned(const MsiRow& row) const {
  const bool endsInLabel = !heading.columns().empty() && heading.columns().back() == Column::label;
  const int fields = RowFields(row.text).count();
  return fields == heading.count() || (endsInLabel && fields == heading.count() - 1);
}

MsiReading::MsiReading(const ImportedText& file, const TextEncoding& encoding) {
  constexpr std::size_t usualRow = 80;  // bytes
  rows.reserve(encoding.text().size() / usualRow);
  slots.reserve(rows.capacity());
  repairedSlots.reserve(rows.capacity());
  TextLines lines(encoding);
  Walk walk(*this, file, encoding);
  for (TextLine line; lines.next(line);) {
    walk.take(line);
  }
}

}  // namespace host
