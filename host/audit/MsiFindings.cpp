// What MsiAudit says about what it has gathered.
#include <algorithm>
#include <utility>

#include "host/audit/MsiAudit.h"

namespace host {

void MsiAudit::finish() {
  finishUnit();
  m_pass.tellOf(m_latency, "the latency was taken in the unit that the heading names");
  m_pass.tellOf(m_columns, "the values were taken from the columns that the heading names");
  m_pass.tellOf(m_percent, "the goodness of fit was taken as percent");
  m_pass.tellOf(m_encoded, "the label was decoded as UTF-8");
  m_pass.add(FindingCode::latencyUnit, Severity::wrong, {}, std::move(m_latency),
             "The heading gives latencies in seconds, but they were taken as milliseconds.",
             "The latencies are taken in the unit of the heading.");
  m_pass.add(FindingCode::msiColumns, Severity::wrong, {}, std::move(m_columns),
             "The table" + m_otherValues.ofOtherColumns(),
             "The values are taken from the columns that the heading names.");
  const std::string open = counted(m_openColumns.slots.size(), "dipole");
  m_pass.add(FindingCode::msiColumns, Severity::wrong, {}, std::move(m_openColumns),
             open +
                 " came of rows with another number of fields than the heading has names, and the heading "
                 "names other columns than the import takes for granted; which value is which is open.",
             {});
  m_pass.add(FindingCode::msiPercent, Severity::wrong, {}, std::move(m_percent),
             "The goodness of fit is given in percent, but was taken as a part of 1: the fit errors that are "
             "shown are far below 0.",
             "The goodness of fit is taken as percent.");
  m_pass.add(FindingCode::msiPercent, Severity::doubtful, {}, std::move(m_openPercent),
             "Whether the goodness of fit is given in percent or as a part of 1 is open; it was taken as a "
             "part of 1.",
             {});
  const std::string numbers = counted(m_noNumbers.slots.size(), "dipole");
  m_pass.add(FindingCode::lostRows, Severity::wrong, {}, std::move(m_noNumbers),
             numbers +
                 " came of rows that hold something else than numbers where numbers belong; what was "
                 "read of them is not what stands there.",
             {});
  const std::string misplaced = counted(m_misplaced.slots.size(), "dipole");
  m_pass.add(FindingCode::lostRows, Severity::wrong, {}, std::move(m_misplaced),
             misplaced + " did not come to the place that the file gives.", {});
  m_pass.add(FindingCode::encoding, Severity::note, {}, std::move(m_encoded),
             "Labels are written in UTF-8 and were read otherwise: letters with accents are shown as signs.",
             "The labels are decoded.");
}

void MsiAudit::finishUnit() {
  if (!m_isUnitOpen) {
    finishStatedUnit();
    return;
  }
  m_pass.tellOf(m_unit, m_pass.file().unit == LengthUnit::millimetre ? "the position was taken as mm"
                                                                     : "the position was taken as cm");
  const std::string unit(nameOf(m_positions.stated()));
  if (unit.empty()) {
    m_pass.addOpenUnit(Severity::doubtful, {}, std::move(m_unit),
                       "Some positions lie more than 15 cm from the origin when they are taken as cm, as "
                       "they were; the file does not say whether they are cm or mm.");
  } else {
    m_pass.addOpenUnit(
        Severity::wrong, {}, std::move(m_unit),
        "The heading gives positions in " + unit +
            ", but they were taken as cm. Their values fit another unit than the heading's, so "
            "which is right is open.");
  }
}

void MsiAudit::finishStatedUnit() {
  const std::string unit(nameOf(m_positions.stated()));
  m_pass.tellOf(m_unit, "the position was taken as " + unit + ", as the heading gives it");
  m_pass.add(FindingCode::unit, Severity::wrong, {}, std::move(m_unit),
             "The heading gives positions in " + unit +
                 ", but they were taken as cm: every dipole is shown in a wrong place.",
             "The positions are taken in the unit of the heading.");
  if (m_positions.isContradicted()) {
    m_pass.add({FindingCode::unit,
                Severity::note,
                {},
                m_reading.headingLine,
                {},
                {},
                "The table gives its positions in " + unit + "; the other unit that you said was not used.",
                {}});
  }
}

void MsiAudit::lookAtLostRows() {
  struct Lost {
    int line = 0;
    std::size_t count = 0;
    void add(const MsiRow& row) { line = count++ == 0 ? row.line : line; }
  };
  Lost readable;
  Lost refused;
  Lost unclosed;
  Lost noRoom;
  const bool isRepaired = isRepairedByRows();
  for (const MsiRow& row : m_reading.rows) {
    const bool isKeptAway = row.fate == MsiFate::refused || row.fate == MsiFate::hidden;
    if (isKeptAway && row.isReadable && !isRepaired) {
      readable.add(row);
    } else if (isKeptAway && !row.isReadable) {
      refused.add(row);
    } else if (row.fate == MsiFate::unclosed) {
      unclosed.add(row);
    } else if (row.fate == MsiFate::noRoom) {
      noRoom.add(row);
    }
  }
  const auto say = [this](FindingCode code, const Lost& lost, const std::string& cause, std::string remedy) {
    if (lost.count > 0) {
      m_pass.add({code,
                  Severity::wrong,
                  {},
                  lost.line,
                  {},
                  {},
                  counted(lost.count, "row") + " of dipoles did not come: " + cause + ".",
                  std::move(remedy)});
    }
  };
  const bool canRepair = readable.count > 0 && !refusedDipoles().empty();
  say(m_encoding.isUtf16() ? FindingCode::encoding : FindingCode::msiColumns, readable,
      m_encoding.isUtf16() ? "the file is written in UTF-16, which the import cannot read"
      : m_reading.isLegend ? "the heading holds a word by which the import takes it for a legend of symbols"
                           : "their columns are not those that the import takes for granted",
      canRepair ? "The rows are read by the columns that the heading names." : "");
  say(FindingCode::lostRows, refused, "their fields are not the numbers that the import expects", {});
  say(FindingCode::lostRows, unclosed, "the last line of the file has no line end", {});
  say(FindingCode::lostRows, noRoom, "a set has room for 30000 dipoles", {});
}

void MsiAudit::lookAtTable() {
  if (m_reading.headingLine == 0) {
    m_pass.add({FindingCode::sections,
                Severity::wrong,
                {},
                0,
                {},
                {},
                "The file has no line with \"Latency\"; it does not look like a 4D/MSI dipole table.",
                {}});
  }
}

void MsiAudit::lookAtHeader(const MsiHeaderLine& line, const CString& key, CString CDipoleFace::*member,
                            std::string_view what) {
  if (line.line == 0 || (TextBytes(line.text).areAscii && !m_encoding.isUtf16())) {
    return;
  }
  CString meant = m_encoding.asMeant(line.text);
  meant.Delete(0, key.GetLength());
  if (m_pass.settleHeader(member, meant, what)) {
    return;
  }
  std::string whose("The ");
  whose.append(what);
  if (m_encoding.isUtf8() || m_encoding.isUtf16()) {
    m_pass.add({FindingCode::encoding,
                Severity::note,
                {},
                line.line,
                {},
                {},
                whose + " was read in another encoding than that of the file.",
                "It is decoded."});
  }
}

}  // namespace host
