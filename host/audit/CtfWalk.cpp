#include "host/audit/CtfWalk.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>

#include "host/text/Blanks.h"
#include "host/text/Letters.h"

namespace host {

namespace {

struct SectionName {
  std::string_view name;
  CtfKind kind;
};

constexpr std::array<SectionName, 9> sectionNames = {{{"File_Info", CtfKind::fileInfo},
                                                      {"Model", CtfKind::model},
                                                      {"MEG_Sphere", CtfKind::sphere},
                                                      {"Dipoles", CtfKind::dipoles},
                                                      {"Fit_Results", CtfKind::moving},
                                                      {"Dipole_Flags", CtfKind::flags},
                                                      {"Dipole_FitInfo", CtfKind::fitInfo},
                                                      {"Fid_Points", CtfKind::fiducials},
                                                      {"MRI_Fid_Points", CtfKind::mriFiducials}}};

const SectionName* sectionNamed(std::string_view text) {
  const bool isWord = !text.empty() && lower(text.front()) >= 'a' && lower(text.front()) <= 'z';
  if (!isWord) {  // as nearly every line
    return nullptr;
  }
  const auto* const found =
      std::find_if(sectionNames.begin(), sectionNames.end(),
                   [&](const SectionName& known) { return isSameButLetters(known.name, text); });
  return found != sectionNames.end() ? found : nullptr;
}

// The section that a line means although the import does not see it: blanks around the name, a "{" behind it.
const SectionName* sectionMeant(std::string_view line) {
  std::string_view text = withoutBlanks(line);
  if (text.ends_with('{')) {
    text = withoutBlanks(text.substr(0, text.size() - 1));
  }
  return sectionNamed(text);
}

// One look at every byte, without an early exit so that the compiler can take many bytes at once.
bool holdsMarks(std::string_view line) {
  unsigned char marks = 0;
  for (const char c : line) {
    const bool isMark = (c == '(') | (c == '/') | (c == '{') | (c == '}');
    marks = static_cast<unsigned char>(marks | static_cast<unsigned char>(isMark));
  }
  return marks != 0;
}

bool isComment(std::string_view line) {
  return withoutBlanks(line).starts_with("//");
}

bool isPassedOver(std::string_view line) {
  return contains(line, "{") || contains(line, "//");
}

}  // namespace

CtfWalk::CtfWalk(CtfReading& reading, const ImportedText& file, const TextEncoding& encoding)
    : m_reading(reading), m_file(file), m_encoding(encoding) {}

bool CtfWalk::isOfDipoles() const {
  const CtfKind kind = m_reading.sections.back().kind;
  return kind == CtfKind::dipoles || kind == CtfKind::moving;
}

void CtfWalk::report(CtfProblemKind kind, const TextLine& line, std::string_view text) {
  m_reading.problems.push_back({kind, line.number, sectionIndex(), text});
}

void CtfWalk::take(const TextLine& line) {
  const bool isFirst = m_isFirstLine;
  m_isFirstLine = false;
  if (m_isInside) {
    const SectionName* const name = sectionNamed(line.text);
    const bool isNext = name != nullptr && !section().isRead;  // the module is outside, and sees it
    if (!isNext) {
      takeBodyLine(line);
      return;
    }
    m_isInside = false;
  }
  const SectionName* const name = line.isClosed ? sectionNamed(line.text) : nullptr;
  if (name == nullptr) {
    takeOutside(line);
  } else if (m_isStopped) {
    report(CtfProblemKind::stopped, line, name->name);
  } else {
    enter(name->kind, line, !m_encoding.isUtf16() && !(isFirst && m_encoding.hasMark()));
  }
}

void CtfWalk::takeOutside(const TextLine& line) {
  const std::string_view text = withoutBlanks(line.text);
  const SectionName* const meant = m_isStopped ? nullptr : sectionMeant(line.text);
  if (meant != nullptr && line.isClosed && meant->kind != CtfKind::mriFiducials) {
    report(CtfProblemKind::misspelt, line, meant->name);
    m_loses = false;
  } else if (text == "}") {
    m_loses = false;
  } else if (m_loses && numberedRow(line.text)) {
    lose(line, m_lossFate);
  }
  m_lastOutside = isComment(line.text) ? line.text : std::string_view();
}

void CtfWalk::enter(CtfKind kind, const TextLine& line, bool isRead) {
  const auto* const name = std::find_if(sectionNames.begin(), sectionNames.end(),
                                        [kind](const SectionName& known) { return known.kind == kind; });
  m_reading.sections.push_back({kind, name->name, line.number, isRead, true, false, {}});
  m_isInside = true;
  m_loses = m_isForeign = m_isCentimetre = m_isSecond = false;
  const auto begin = [&](auto& part) {
    part = {};
    part.line = line.number;
    part.isRead = isRead;
  };
  if (kind == CtfKind::moving) {
    enterMoving(section());
  } else if (kind == CtfKind::sphere) {
    begin(m_reading.sphere.line == 0 ? m_reading.sphere : m_reading.moreSpheres.emplace_back());
  } else if (kind == CtfKind::fiducials || kind == CtfKind::mriFiducials) {
    const bool isOfMri = kind == CtfKind::mriFiducials;
    CtfPoints& points = isOfMri ? m_reading.mriFiducials : m_reading.fiducials;
    if (points.line != 0) {
      m_reading.earlierPoints.push_back(points);
    }
    begin(points);
    points.isOfMri = isOfMri;
    section().isRead = section().isRead && !isOfMri;
  }
  if (isOfDipoles() && !m_lastOutside.empty()) {
    Heading before(m_lastOutside);
    section().isUnitBefore = before.lengthUnit() != ColumnUnit::none;
    if (before.namesPlace()) {
      section().heading = std::move(before);
    }
  }
}

// The import walks on through the lines of a declined section; none of them is a loss.
void CtfWalk::enterMoving(CtfSection& moving) {
  const bool isAsked = moving.isRead;
  moving.isAccepted =
      isAsked && m_nextMoving < m_file.answers.moving.size() && m_file.answers.moving[m_nextMoving];
  m_nextMoving += isAsked ? 1 : 0;
  m_isInside = moving.isAccepted;
  if (!moving.isAccepted) {
    return;
  }
  for (CtfRow& row : m_reading.rows) {
    row.fate = row.fate == RowFate::arrived ? RowFate::replaced : row.fate;
  }
  m_reading.slots.clear();
  m_reading.repairedSlots.clear();
}

void CtfWalk::takeBodyLine(const TextLine& line) {
  if (isOfDipoles()) {
    takeDipoleLine(line);
    return;
  }
  const SectionName* const swallowed = sectionNamed(line.text);
  if (isPassedOver(line.text)) {
    takeFitHeading(line);
  } else if (contains(line.text, "}")) {
    leave(line);
  } else if (swallowed != nullptr) {
    report(CtfProblemKind::swallowed, line, swallowed->name);
    m_isForeign = true;
  } else if (!line.isClosed) {
    return;
  } else if (section().kind == CtfKind::sphere) {
    takeSphere(line);
  } else if (section().kind == CtfKind::fiducials) {
    takeFiducial(line, m_reading.fiducials);
  } else if (section().kind == CtfKind::mriFiducials) {
    takeFiducial(line, m_reading.mriFiducials);
  } else if (section().kind == CtfKind::flags || section().kind == CtfKind::fitInfo) {
    takeFollower(line);
  } else {
    takeHeader(line);
  }
}

// The import reads no further behind a section of dipoles that leaves the set empty.
void CtfWalk::leave(const TextLine& line) {
  m_isInside = false;
  m_lastOutside = {};
  const bool isOpen = !line.isClosed;  // for the import, which drops the line; nothing is behind it
  if (isOfDipoles() && section().isRead && !isOpen) {
    m_isStopped = m_file.firstSlot == 0 && m_reading.slots.empty();
  }
}

void CtfWalk::takeDipoleLine(const TextLine& line) {
  const int limit = section().kind == CtfKind::moving ? 12 : 8;  // fields of a usual row
  if (const std::optional<NumberedRow> row = numberedRow(line.text)) {
    const RowFields fields(row->rest, limit);
    const bool mayHoldMarks = fields.mayHoldMarks() || fields.count() > limit;
    if (!mayHoldMarks || !holdsMarks(line.text)) {
      takeRow(line, *row, fields);
      return;
    }
  }
  takeOtherLine(line);
}

// A line of a section of dipoles that is no row, or holds marks.
void CtfWalk::takeOtherLine(const TextLine& line) {
  const std::string_view text = line.text;
  const bool isRow = numberedRow(text).has_value();
  const bool isHeader = contains(text, "(cm)");
  const bool isPassed = isHeader || isPassedOver(text);
  const bool isEnd = !isPassed && contains(text, "}");
  if ((isPassed || isEnd) && isRow) {
    lose(line, RowFate::marked);
  }
  if (isHeader) {
    takeUnits(line);
  }
  if (isPassed && !isRow) {
    takeHeading(line);
  }
  if (isEnd) {
    leave(line);
    m_loses = isRow;
    m_lossFate = RowFate::behindEnd;
  }
  if (const std::optional<NumberedRow> row = numberedRow(text); row && !isPassed && !isEnd) {
    takeRow(line, *row, RowFields(row->rest));
  } else if (const SectionName* const swallowed = sectionNamed(text)) {
    report(CtfProblemKind::swallowed, line, swallowed->name);
    m_isForeign = true;
  }
}

void CtfWalk::takeUnits(const TextLine& line) {
  m_isCentimetre = true;
  m_isSecond = m_isSecond || contains(line.text, "(s)");
  m_reading.namesNanoamperemetre = m_reading.namesNanoamperemetre || contains(line.text, "(nAm)");
  section().isUnitBefore = false;
}

void CtfWalk::takeHeading(const TextLine& line) {
  Heading heading(line.text);
  if (heading.namesPlace()) {
    section().heading = std::move(heading);
    section().isUnitBefore = false;
  }
}

void CtfWalk::takeRow(const TextLine& line, const NumberedRow& numbered, const RowFields& fields) {
  CtfRow& row = m_reading.rows.emplace_back();
  row.fields = numbered.rest;
  row.line = line.number;
  row.number = numbered.number;
  row.section = sectionIndex();
  row.isCentimetre = m_isCentimetre;
  row.isSecond = m_isSecond;
  row.isForeign = m_isForeign;
  row.count = static_cast<std::uint8_t>(fields.count());
  if (!arrives(row, fields, numbered.hasGap)) {
    row.fate = RowFate::refused;
  } else if (!line.isClosed) {
    row.fate = RowFate::unclosed;
  } else if (isDeclined(row)) {
    row.fate = RowFate::declined;
  } else {
    place(row);
  }
  // What stands behind a swallowed name are rows of something else: only those that came are of interest.
  if (m_isForeign && row.fate != RowFate::arrived) {
    m_reading.rows.pop_back();
  }
}

// Whether the import takes a row for a dipole, and where it then reads its place.
bool CtfWalk::arrives(CtfRow& row, const RowFields& fields, bool hasGap) {
  const bool isMoving = section().kind == CtfKind::moving;
  const int first = isMoving ? 3 : 0;
  const int reals = isMoving ? 9 : 7;
  row.isPlain = fields.arePlain(0, isMoving ? 11 : 7) &&
                (!isMoving || (fields.isInteger(0) && fields.isInteger(1))) && !(isMoving && hasGap);
  if (row.isPlain) {
    for (int axis = 0; axis < 3; ++axis) {
      row.place[axis] = fields.plainNumber(first + axis);
    }
    return true;
  }
  RowScan scan(row.fields);
  if (isMoving) {
    scan.integer().integer().real();
  }
  for (int i = 0; i < reals - (isMoving ? 1 : 0); ++i) {
    scan.real(i < 3 ? &row.place[i] : nullptr);
  }
  return scan.fields() == (isMoving ? 11 : 7) && !(isMoving && hasGap);
}

bool CtfWalk::isDeclined(const CtfRow& row) {
  const float scale = row.isCentimetre ? 10.0F : 1.0F;
  const bool isFar = std::any_of(std::begin(row.place), std::end(row.place),
                                 [scale](float value) { return value * scale > farthestUnasked; });
  if (!isFar || section().kind == CtfKind::moving || !section().isRead) {
    return false;
  }
  const std::size_t question = m_nextFar++;
  return !(question < m_file.answers.distant.size() && m_file.answers.distant[question]);
}

void CtfWalk::place(CtfRow& row) {
  const auto index = static_cast<int>(m_reading.rows.size()) - 1;
  const std::size_t room = static_cast<std::size_t>((std::max)(DipoleTable::capacity - m_file.firstSlot, 0));
  if (!section().isRead) {
    row.fate = RowFate::unread;
    m_reading.repairedSlots.push_back(index);
  } else if (m_reading.slots.size() >= room) {
    row.fate = RowFate::noRoom;
    m_isInside = false;
    m_loses = true;
    m_lossFate = RowFate::noRoom;
  } else {
    m_reading.slots.push_back(index);
    m_reading.repairedSlots.push_back(index);
  }
}

void CtfWalk::lose(const TextLine& line, RowFate fate) {
  const std::optional<NumberedRow> numbered = numberedRow(line.text);
  CtfRow row;
  row.fields = numbered->rest;
  row.line = line.number;
  row.number = numbered->number;
  row.section = sectionIndex();
  row.fate = fate;
  m_reading.rows.push_back(row);
}

void CtfWalk::finish() {
  if (m_isInside) {
    report(CtfProblemKind::endsInside, {}, {});
  }
}

}  // namespace host
