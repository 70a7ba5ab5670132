// A 4D/MSI dipole table as this program reads it, with what the module's import takes of it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/audit/FileAudit.h"
#include "host/audit/Heading.h"
#include "host/audit/RowFields.h"
#include "host/audit/RowScan.h"
#include "host/audit/TextLines.h"

namespace host {

enum class MsiFate : std::uint8_t {
  arrived,
  declined,  // by an answer
  refused,   // its fields are not those that the import expects
  hidden,    // the import does not see the table
  unclosed,  // the last line of the file, without a line end
  noRoom     // the set was full
};

struct MsiRow {
  std::string_view text;
  int line = 0;
  float place[3] = {};    // as the import reads it, file axes, cm
  float goodness = 0.0F;  // by the columns that count; 0 when it is no number
  MsiFate fate = MsiFate::arrived;
  bool isPlain = false;     // every reader reads its numbers alike
  bool isReadable = false;  // by the names of the heading
};

struct MsiHeaderLine {
  std::string_view text;
  int line = 0;
};

class MsiReading {
 public:
  // The file's text must outlive this; `encoding` too.
  MsiReading(const ImportedText& file, const TextEncoding& encoding);

  // Whether a row has as many fields as the heading has names; a label at the end may be missing.
  bool isAligned(const MsiRow& row) const;

  std::vector<MsiRow> rows;
  std::vector<int> slots;          // the row of each dipole that came, in order
  std::vector<int> repairedSlots;  // the same, with the rows that can be read by the heading's names
  Heading heading;
  ColumnPlaces places;           // of the columns that count: the format's or the heading's
  bool hasOtherColumns = false;  // than the import takes for granted
  int headingLine = 0;           // 0: there is none
  bool hasTable = false;         // the import sees the heading
  bool isLegend = false;         // it does not, because of a word of the legend
  MsiHeaderLine patient;
  MsiHeaderLine version;

 private:
  class Walk;
};

// The columns that the import takes for granted; what it does with the label behind them does not count here.
const ColumnPlaces& expectedMsiPlaces();

inline constexpr int msiLabelPlace = 17;

}  // namespace host
