#include "host/audit/CtfSectionAudit.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace host {

namespace {

// How far a value has got through two changes that do not depend on each other.
struct Steps {
  bool first = true;
  bool second = true;
};

// `make(first, second)` gives the value with each change done or not. Nothing when it is none of the four.
template <typename Value, typename Make, typename IsSame = std::equal_to<>>
std::optional<Steps> stepsOf(const Value& value, Make make, IsSame isSameValue = {}) {
  for (const Steps steps : {Steps{true, true}, Steps{true, false}, Steps{false, true}, Steps{false, false}}) {
    if (isSameValue(value, make(steps.first, steps.second))) {
      return steps;
    }
  }
  return std::nullopt;
}

}  // namespace

CtfSectionAudit::CtfSectionAudit(AuditPass& pass, const TextEncoding& encoding, const CtfReading& reading,
                                 int section)
    : m_pass(pass),
      m_encoding(encoding),
      m_section(reading.sections[static_cast<std::size_t>(section)]),
      m_heading(m_section.heading),
      m_places(expectedPlaces(m_section.kind)),
      m_isMoving(m_section.kind == CtfKind::moving) {
  const auto first = std::find_if(reading.rows.begin(), reading.rows.end(), [section](const CtfRow& row) {
    return row.section == section && row.count > 0;
  });
  if (first != reading.rows.end()) {
    m_heading.fitTo(RowFields(first->fields).count());
  }
  m_hasOtherColumns = m_heading.namesPlace() && m_heading.contradicts(expectedPlaces(m_section.kind));
  if (m_hasOtherColumns) {
    m_places = m_heading.places();
  }
  m_positions = positionUnitOf(reading, section, first != reading.rows.end() && first->isCentimetre);
  const ColumnUnit stated = m_positions.stated();
  m_isSimple = !m_hasOtherColumns && (stated == ColumnUnit::none || stated == ColumnUnit::centimetre) &&
               m_heading.unitOf(Column::latency) != ColumnUnit::millisecond && !m_encoding.isUtf8();
}

// A unit before the section's name is open, but for one that is neither of the two to choose from.
PositionUnit CtfSectionAudit::positionUnitOf(const CtfReading& reading, int section,
                                             bool isCentimetre) const {
  ColumnUnit stated = m_heading.lengthUnit();
  if (m_section.isUnitBefore && stated != ColumnUnit::metre) {
    stated = ColumnUnit::none;
  } else if (stated == ColumnUnit::none && isCentimetre) {
    stated = ColumnUnit::centimetre;
  }
  float largest = 0.0F;
  const bool isInQuestion = stated == ColumnUnit::millimetre || stated == ColumnUnit::metre;
  for (std::size_t i = 0; i < reading.rows.size() && isInQuestion; ++i) {
    const CtfRow& row = reading.rows[i];
    if (row.section == section && (row.fate == RowFate::arrived || row.fate == RowFate::unread)) {
      const RowFields fields(row.fields);
      for (const Column axis : {Column::x, Column::y, Column::z}) {
        largest = (std::max)(largest, std::abs(fields.numberOrZero(m_places[axis])));
      }
    }
  }
  return {stated, largest, m_pass.file().unit};
}

// Whether nothing can be wrong with a row but the place of its dipole.
bool CtfSectionAudit::isUsual(const CtfRow& row) const {
  const bool hasUsualCount = m_isMoving ? row.count == 11 || row.count == 12 : row.count == 8;
  return m_isSimple && row.isPlain && hasUsualCount && row.isCentimetre && (row.isSecond || !m_isMoving);
}

void CtfSectionAudit::look(std::size_t local, const CtfRow& row, const CtfFollowers& followers) {
  const CDipoleszq* const dipole = m_pass.dipole(local);
  if (dipole == nullptr || row.isForeign ||
      (isUsual(row) && placeOf(*dipole) == scaledPlace(row.place, importFactor(row)))) {
    return;
  }
  lookClosely(local, row, followers);
}

void CtfSectionAudit::lookClosely(std::size_t local, const CtfRow& row, const CtfFollowers& followers) {
  const RowFields fields(row.fields);
  const std::optional<Told> told = read(row, fields);
  if (!told) {
    (m_hasOtherColumns && !isAligned(fields.count()) ? m_openColumns : m_noNumbers)
        .add(m_pass.slotOf(local), row.line);
    return;
  }
  lookAtPlace(local, row, told->place);
  const bool hasFit = m_isMoving && followers.toldFit(local);
  if (m_hasOtherColumns || hasUnnamedColumns(fields)) {
    lookAtColumns(local, row, *told, hasFit);
    return;
  }
  if (m_isMoving && !hasFit) {
    lookAtLatency(local, row, fields);
  }
  lookAtLabel(local, row, fields);
}

// Whether a row has the fields that the heading names; a label at the end may be missing or hold blanks.
bool CtfSectionAudit::isAligned(int fields) const {
  const bool endsInLabel = !m_heading.columns().empty() && m_heading.columns().back() == Column::label;
  return fields == m_heading.count() || (endsInLabel && fields >= m_heading.count() - 1);
}

// Of the layout with the axes of a confidence ellipsoid, in a file that does not name its columns.
bool CtfSectionAudit::hasUnnamedColumns(const RowFields& fields) const {
  constexpr int usual = 12;
  const bool areNamed = m_heading.namesPlace() && isAligned(fields.count());
  return m_isMoving && !m_hasOtherColumns && !areNamed && fields.count() > usual && fields.number(usual - 1);
}

std::optional<double> CtfSectionAudit::latencyOf(const CtfRow& row, const RowFields& fields) const {
  const std::optional<float> value = fields.number(m_places[Column::latency]);
  if (!value) {
    return std::nullopt;
  }
  const ColumnUnit unit = m_heading.unitOf(Column::latency);
  const bool isSecond = unit == ColumnUnit::second || (unit != ColumnUnit::millisecond && row.isSecond);
  return static_cast<double>(isSecond ? *value * 1000.0F : *value);
}

std::optional<CtfSectionAudit::Told> CtfSectionAudit::read(const CtfRow& row, const RowFields& fields) const {
  if (m_hasOtherColumns && !isAligned(fields.count())) {
    return std::nullopt;
  }
  Told told;
  float orientation[3] = {};
  bool areNumbers = true;
  const auto take = [&](Column column, auto& target) {
    if (!m_places.has(column)) {
      return false;
    }
    const std::optional<float> value = fields.number(m_places[column]);
    areNumbers = areNumbers && value;
    target = value.value_or(0.0F);
    return true;
  };
  take(Column::x, told.place[0]);
  take(Column::y, told.place[1]);
  take(Column::z, told.place[2]);
  told.hasOrientation = take(Column::xo, orientation[0]) && take(Column::yo, orientation[1]) &&
                        take(Column::zo, orientation[2]);
  told.orientation = told.hasOrientation ? scaledPlace(orientation, 1.0F) : Place{1.0, 0.0, 1.0};
  told.hasMoment = take(Column::moment, told.moment);
  told.moment = told.hasMoment ? told.moment : 1.0;
  told.hasError = !hasUnnamedColumns(fields) && take(Column::error, told.fitError);
  told.fitError = told.hasError ? told.fitError : 0.2;
  const std::optional<double> latency = latencyOf(row, fields);
  told.hasLatency = m_places.has(Column::latency);
  areNumbers = areNumbers && (!told.hasLatency || latency);
  told.latency = latency.value_or(0.0);
  const int label = m_places[Column::label];
  const bool isLast = label >= 0 && m_heading.count() == label + 1;
  told.label = hasUnnamedColumns(fields) ? std::string_view() : isLast ? fields.from(label) : fields[label];
  return areNumbers ? std::optional(told) : std::nullopt;
}

bool CtfSectionAudit::isUnitOpen(const CtfRow& row) const {
  return !m_positions.isCertain() && (!row.isCentimetre || m_positions.stated() != ColumnUnit::none);
}

float CtfSectionAudit::meantFactor(const CtfRow& row) const {
  return m_positions.factor().value_or(importFactor(row));
}

void CtfSectionAudit::lookAtPlace(std::size_t local, const CtfRow& row, const float (&meant)[3]) {
  CDipoleszq& dipole = *m_pass.dipole(local);
  const auto make = [&](bool hasColumns, bool hasUnit) {
    return scaledPlace(hasColumns ? meant : row.place, hasUnit ? meantFactor(row) : importFactor(row));
  };
  const Place current = placeOf(dipole);
  const std::optional<Steps> steps = stepsOf(current, make, isSame);
  const int slot = m_pass.slotOf(local);
  if (!steps) {
    m_misplaced.add(slot, row.line);
    return;
  }
  const bool hasColumns = steps->first || m_pass.repairs(FindingCode::movingColumns);
  const bool isUnitKnown = m_positions.factor().has_value();
  const bool hasUnit = steps->second || (isUnitKnown && m_pass.repairs(FindingCode::unit));
  const bool isOpen = isUnitOpen(row);
  const Place wanted = make(hasColumns, hasUnit);
  if (!isSame(wanted, current)) {
    setPlace(dipole, wanted);
    (isOpen ? m_unit : m_statedUnit).changed += hasUnit != steps->second ? 1 : 0;
    m_columns.changed += hasColumns != steps->first ? 1 : 0;
  }
  if (!isOpen && !hasUnit) {
    m_statedUnit.add(slot, row.line);
  } else if (!isOpen && m_positions.stated() == ColumnUnit::millimetre && !m_pass.file().unit) {
    m_millimetre.add(slot, row.line);
  } else if (isOpen && (!isUnitKnown || !hasUnit)) {
    m_unit.add(slot, row.line);
    for (const float value : meant) {
      m_largest = (std::max)(m_largest, std::abs(value));
    }
  }
  if (!hasColumns) {
    m_columns.add(slot, row.line);
    m_otherValues.add(ShownValue::place);
  }
}

void CtfSectionAudit::lookAtColumns(std::size_t local, const CtfRow& row, const Told& told, bool hasFit) {
  CDipoleszq& dipole = *m_pass.dipole(local);
  const int slot = m_pass.slotOf(local);
  constexpr FindingCode code = FindingCode::movingColumns;
  const bool isFitHere = m_isMoving && !hasFit;
  const CString label = told.label.empty() ? noLabel() : m_encoding.asMeant(told.label);
  m_otherValues.add(ShownValue::orientation, orientationOf(dipole) != told.orientation);
  m_otherValues.add(ShownValue::moment, dipole.m_moment != told.moment);
  m_otherValues.add(ShownValue::latency, isFitHere && dipole.m_latency != told.latency);
  m_otherValues.add(ShownValue::fitError, isFitHere && dipole.m_fitError != told.fitError);
  m_otherValues.add(ShownValue::label, dipole.m_label != label);
  bool isChanged = false;
  bool isSettled = m_pass.settleMoment(code, dipole, told.moment, told.orientation, isChanged);
  if (isFitHere) {
    isSettled = m_pass.settle(code, dipole.m_latency, told.latency, isChanged) && isSettled;
    isSettled = m_pass.settle(code, dipole.m_fitError, told.fitError, isChanged) && isSettled;
  }
  isSettled = m_pass.settle(code, dipole.m_label, label, isChanged) && isSettled;
  Gathered& gathered = m_hasOtherColumns ? m_columns : m_unnamed;
  gathered.changed += isChanged ? 1 : 0;
  if (!isSettled) {
    gathered.add(slot, row.line);
  }
  if (isSettled) {
    const std::pair<bool, DipoleValue> values[] = {
        {told.hasMoment, DipoleValue::moment},
        {told.hasOrientation, DipoleValue::orientation},
        {told.hasError || !isFitHere, DipoleValue::fitError},
        {told.hasLatency || !isFitHere, DipoleValue::latency},
        {m_places.has(Column::label) && m_hasOtherColumns, DipoleValue::label}};
    for (const auto& [isKnown, value] : values) {
      if (!isKnown) {
        m_pass.markUnknown(slot, value);
      }
    }
  }
}

void CtfSectionAudit::lookAtLatency(std::size_t local, const CtfRow& row, const RowFields& fields) {
  const std::optional<double> meant = latencyOf(row, fields);
  bool isChanged = false;
  const bool isSettled =
      meant && m_pass.settle(FindingCode::latencyUnit, m_pass.dipole(local)->m_latency, *meant, isChanged);
  m_latency.changed += isChanged ? 1 : 0;
  if (!isSettled) {
    m_latency.add(m_pass.slotOf(local), row.line);
  } else if (!row.isSecond && m_heading.unitOf(Column::latency) == ColumnUnit::none) {
    m_openLatency.add(m_pass.slotOf(local), row.line);
  }
}

void CtfSectionAudit::lookAtLabel(std::size_t local, const CtfRow& row, const RowFields& fields) {
  CDipoleszq& dipole = *m_pass.dipole(local);
  const int slot = m_pass.slotOf(local);
  const int place = m_places[Column::label];
  const std::string_view word = fields[place];
  if (word.empty()) {
    bool isChanged = false;
    if (!m_pass.settle(FindingCode::labels, dipole.m_label, noLabel(), isChanged)) {
      m_borrowed.add(slot, row.line);
    }
    m_borrowed.changed += isChanged ? 1 : 0;
    return;
  }
  std::string_view whole = fields.from(place);
  const bool isNamed = m_heading.count() == place + 1;                           // the last column
  const bool isCell = row.fields.find('\t') < row.fields.size() - whole.size();  // tabs between the fields
  const bool isOther = m_heading.count() > place + 1;                            // what follows is no label
  whole = isCell ? whole.substr(0, whole.find('\t')) : isNamed ? whole : word;
  const auto make = [&](bool isWhole, bool isMeant) {
    const std::string_view text = isWhole ? whole : word;
    return isMeant ? m_encoding.asMeant(text) : TextEncoding::asAnsi(text);
  };
  const std::optional<Steps> steps = stepsOf(dipole.m_label, make);
  if (steps) {
    const bool isWhole = steps->first || m_pass.repairs(FindingCode::labels);
    const bool isMeant = steps->second || m_pass.repairs(FindingCode::encoding);
    m_cut.changed += isWhole != steps->first ? 1 : 0;
    m_encoded.changed += isMeant != steps->second ? 1 : 0;
    dipole.m_label = make(isWhole, isMeant);
    if (!isWhole) {
      m_cut.add(slot, row.line);
    }
    if (!isMeant) {
      m_encoded.add(slot, row.line);
    }
  }
  if (whole == word && fields.count() > place + 1 && !isCell && !isOther) {
    m_cutOpen.add(slot, row.line);
  }
}

std::unique_ptr<CDipoleszq> CtfSectionAudit::makeDipole(const CtfRow& row) const {
  const std::optional<Told> told = read(row, RowFields(row.fields));
  if (!told) {
    return nullptr;
  }
  auto dipole = std::make_unique<CDipoleszq>();
  setPlace(*dipole, scaledPlace(told->place, importFactor(row)));
  setOrientation(*dipole, told->orientation);
  dipole->m_moment = told->moment;
  dipole->m_label = told->label.empty() ? noLabel() : m_encoding.asMeant(told->label);
  return dipole;
}

}  // namespace host
