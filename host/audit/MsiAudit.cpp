#include "host/audit/MsiAudit.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace host {

namespace {

constexpr float importFactor = 10.0F;  // always cm

}  // namespace

MsiAudit::MsiAudit(AuditPass& pass, const TextEncoding& encoding)
    : m_pass(pass), m_encoding(encoding), m_reading(pass.file(), encoding) {
  settleGoodness();
  settlePositions();
  const ColumnUnit time = m_reading.heading.unitOf(Column::latency);
  m_isSimple = !m_reading.hasOtherColumns && m_goodness == Goodness::fraction && time != ColumnUnit::second &&
               meantFactor() == importFactor && !m_isUnitOpen && !m_encoding.isUtf8();
}

// A goodness of fit is a part of 1, unless the heading says percent or a value cannot be a part of 1.
void MsiAudit::settleGoodness() {
  constexpr float surelyPercent = 2.0F;
  float goodness = 0.0F;
  for (const MsiRow& row : m_reading.rows) {
    if (row.fate == MsiFate::arrived || row.isReadable) {
      goodness = (std::max)(goodness, row.goodness);
    }
  }
  const bool saysPercent = m_reading.heading.unitOf(Column::goodness) == ColumnUnit::percent;
  m_goodness = goodness > surelyPercent || (saysPercent && goodness > 1.0F) ? Goodness::percent
               : saysPercent || goodness > 1.0F                             ? Goodness::open
                                                                            : Goodness::fraction;
}

// A table that states no unit gives cm, as the format does, unless a position cannot be one.
void MsiAudit::settlePositions() {
  float largest = 0.0F;
  const auto take = [&largest](float value) { largest = (std::max)(largest, std::abs(value)); };
  for (const MsiRow& row : m_reading.rows) {
    if (row.fate != MsiFate::arrived && !row.isReadable) {
      continue;
    }
    if (m_reading.hasOtherColumns) {
      const RowFields fields(row.text);
      for (const Column axis : {Column::x, Column::y, Column::z}) {
        take(fields.numberOrZero(m_reading.places[axis]));
      }
    } else {
      std::for_each(std::begin(row.place), std::end(row.place), take);
    }
  }
  const ColumnUnit stated = m_reading.heading.lengthUnit();
  const bool isOfFormat = stated == ColumnUnit::none && largest <= largestInCentimetre;
  m_positions = {isOfFormat ? ColumnUnit::centimetre : stated, largest, m_pass.file().unit};
  m_isUnitOpen = !m_positions.isCertain();
}

void MsiAudit::run() {
  insertRows();
  const auto come = static_cast<std::size_t>((std::max)(m_pass.dipolesOfFile(), 0));
  const std::vector<int>& slots = isRepairedByRows() ? m_reading.repairedSlots : m_reading.slots;
  if (slots.size() == come) {
    for (std::size_t local = 0; local < slots.size(); ++local) {
      look(local, m_reading.rows[static_cast<std::size_t>(slots[local])]);
    }
  } else {
    m_pass.add({FindingCode::lostRows,
                Severity::wrong,
                {},
                0,
                {},
                {},
                counted(slots.size(), "dipole") + " should have come of this file, but " +
                    std::to_string(come) + " did.",
                {}});
  }
  finish();
  lookAtLostRows();
  lookAtTable();
  lookAtHeader(m_reading.patient, _T("MRI/CT Patient:"), &CDipoleFace::m_patient, "patient");
  lookAtHeader(m_reading.version, _T("Dipole File:"), &CDipoleFace::m_fileVersion, "name of the dipole file");
}

// Whether the set holds the rows that the import refused.
bool MsiAudit::isRepairedByRows() const {
  return m_pass.dipolesOfFile() == static_cast<int>(m_reading.repairedSlots.size());
}

// The dipoles of the rows that the import refused; none when not all of them can be told, or fit in.
std::vector<LateDipole> MsiAudit::refusedDipoles() const {
  return lateDipolesOf(
      m_pass, m_reading, [](const MsiRow& row) { return row.fate != MsiFate::arrived; },
      [this](const MsiRow& row) { return makeDipole(row); });
}

void MsiAudit::insertRows() {
  const FindingCode code = m_encoding.isUtf16() ? FindingCode::encoding : FindingCode::msiColumns;
  if (!m_pass.repairs(code) || isRepairedByRows()) {
    return;
  }
  std::vector<LateDipole> late = refusedDipoles();
  if (late.empty()) {
    return;
  }
  m_pass.tell(counted(late.size(), "dipole") + " that the import had refused came to the set.");
  m_pass.target().m_coordinateType = 3;
  m_pass.target().m_momentInNAm = 1;
  insertDipoles(m_pass.target(), std::move(late));
}

void MsiAudit::look(std::size_t local, const MsiRow& row) {
  const CDipoleszq* const dipole = m_pass.dipole(local);
  if (dipole == nullptr) {
    return;
  }
  const bool isPlain = m_isSimple && row.isPlain && row.fate == MsiFate::arrived;
  if (!isPlain || placeOf(*dipole) != scaledPlace(row.place, importFactor)) {
    lookClosely(local, row);
  }
}

void MsiAudit::lookClosely(std::size_t local, const MsiRow& row) {
  const std::optional<Told> told = read(row);
  if (!told) {
    (m_reading.hasOtherColumns && !m_reading.isAligned(row) ? m_openColumns : m_noNumbers)
        .add(m_pass.slotOf(local), row.line);
    return;
  }
  lookAtPlace(local, row, *told);
  lookAtValues(local, row, *told);
  lookAtLabel(local, row, *told);
}

double MsiAudit::fitErrorOf(float goodness, bool isPercent) const {
  return static_cast<double>(isPercent ? 100.0F - goodness : 100.0F - goodness * 100.0F);
}

std::optional<MsiAudit::Told> MsiAudit::read(const MsiRow& row) const {
  if (m_reading.hasOtherColumns && !m_reading.isAligned(row)) {
    return std::nullopt;
  }
  const RowFields fields(row.text);
  bool areNumbers = true;
  const auto value = [&](Column column) {
    const std::optional<float> number = fields.number(m_reading.places[column]);
    areNumbers = areNumbers && number;
    return number.value_or(0.0F);
  };
  Told told;
  told.place[0] = value(Column::x);
  told.place[1] = value(Column::y);
  told.place[2] = value(Column::z);
  const float orientation[3] = {value(Column::xo) / 10.0F, value(Column::yo) / 10.0F,
                                value(Column::zo) / 10.0F};
  told.orientation = scaledPlace(orientation, 1.0F);
  const bool isSecond = m_reading.heading.unitOf(Column::latency) == ColumnUnit::second;
  const float latency = value(Column::latency);
  told.latency = static_cast<double>(isSecond ? latency * 1000.0F : latency);
  told.moment = static_cast<double>(value(Column::moment));
  told.fitError = fitErrorOf(value(Column::goodness), m_goodness == Goodness::percent);
  const int named = m_reading.hasOtherColumns || row.fate != MsiFate::arrived
                        ? m_reading.heading.places()[Column::label]
                        : msiLabelPlace;
  told.label = fields[named];
  return areNumbers ? std::optional(told) : std::nullopt;
}

float MsiAudit::meantFactor() const {
  return m_positions.factor().value_or(importFactor);
}

// A place may be wrong by its unit and by its columns.
void MsiAudit::lookAtPlace(std::size_t local, const MsiRow& row, const Told& told) {
  CDipoleszq& dipole = *m_pass.dipole(local);
  const int slot = m_pass.slotOf(local);
  const auto make = [&](bool hasColumns, bool hasUnit) {
    return scaledPlace(hasColumns ? told.place : row.place, hasUnit ? meantFactor() : importFactor);
  };
  const Place current = placeOf(dipole);
  bool hasColumns = isSame(current, make(true, true)) || isSame(current, make(true, false));
  bool hasUnit = isSame(current, make(true, true)) || isSame(current, make(false, true));
  if (!hasColumns && !hasUnit && !isSame(current, make(false, false))) {
    m_misplaced.add(slot, row.line);
    return;
  }
  const bool isUnitKnown = m_positions.factor().has_value();
  const bool isUnitChanged = !hasUnit && isUnitKnown && m_pass.repairs(FindingCode::unit);
  const bool areColumnsChanged = !hasColumns && m_pass.repairs(FindingCode::msiColumns);
  hasUnit = hasUnit || isUnitChanged;
  hasColumns = hasColumns || areColumnsChanged;
  if (isUnitChanged || areColumnsChanged) {
    setPlace(dipole, make(hasColumns, hasUnit));
    m_unit.changed += isUnitChanged ? 1 : 0;
  }
  if (!hasColumns) {
    m_columns.add(slot, row.line);
    m_otherValues.add(ShownValue::place);
  }
  if (!hasUnit || !isUnitKnown) {
    m_unit.add(slot, row.line);
  }
}

void MsiAudit::lookAtValues(std::size_t local, const MsiRow& row, const Told& told) {
  CDipoleszq& dipole = *m_pass.dipole(local);
  const int slot = m_pass.slotOf(local);
  constexpr FindingCode columns = FindingCode::msiColumns;
  m_otherValues.add(ShownValue::orientation, orientationOf(dipole) != told.orientation);
  m_otherValues.add(ShownValue::moment, dipole.m_moment != told.moment);
  m_otherValues.add(ShownValue::latency, m_reading.hasOtherColumns && dipole.m_latency != told.latency);
  bool isChanged = false;
  const bool isSettled = m_pass.settleMoment(columns, dipole, told.moment, told.orientation, isChanged);
  const FindingCode latency = m_reading.hasOtherColumns ? columns : FindingCode::latencyUnit;
  bool isLatencyChanged = false;
  if (!m_pass.settle(latency, dipole.m_latency, told.latency, isLatencyChanged)) {
    (m_reading.hasOtherColumns ? m_columns : m_latency).add(slot, row.line);
  }
  m_latency.changed += isLatencyChanged && !m_reading.hasOtherColumns ? 1 : 0;
  isChanged = isChanged || (isLatencyChanged && m_reading.hasOtherColumns);

  // The error may be that of another column, or of percents that were taken for parts of 1, or both.
  const bool isPercent = m_goodness == Goodness::percent;
  const bool hasColumn = dipole.m_fitError == told.fitError ||
                         dipole.m_fitError == fitErrorOf(row.goodness, false) || m_pass.repairs(columns);
  const bool hasPercent =
      !isPercent || dipole.m_fitError == told.fitError || m_pass.repairs(FindingCode::msiPercent);
  if (hasColumn && hasPercent && dipole.m_fitError != told.fitError) {
    dipole.m_fitError = told.fitError;
    m_percent.changed += isPercent ? 1 : 0;
    isChanged = isChanged || m_reading.hasOtherColumns;
  } else if (hasColumn && !hasPercent && m_pass.repairs(columns)) {
    dipole.m_fitError = fitErrorOf(row.goodness, false);
  }
  m_columns.changed += isChanged ? 1 : 0;
  if (!(isSettled && hasColumn)) {
    m_columns.add(slot, row.line);
    m_otherValues.add(ShownValue::fitError, !hasColumn);
  }
  if (!hasPercent) {
    m_percent.add(slot, row.line);
  } else if (m_goodness == Goodness::open) {
    m_openPercent.add(slot, row.line);
  }
}

void MsiAudit::lookAtLabel(std::size_t local, const MsiRow& row, const Told& told) {
  CDipoleszq& dipole = *m_pass.dipole(local);
  const CString meant = told.label.empty() ? noLabel() : m_encoding.asMeant(told.label);
  const bool isAnsi = !told.label.empty() && dipole.m_label == TextEncoding::asAnsi(told.label);
  if (dipole.m_label == meant || !(isAnsi || m_reading.hasOtherColumns)) {
    return;
  }
  const FindingCode code = isAnsi ? FindingCode::encoding : FindingCode::msiColumns;
  Gathered& gathered = isAnsi ? m_encoded : m_columns;
  const int slot = m_pass.slotOf(local);
  if (m_pass.repairs(code)) {
    dipole.m_label = meant;
    gathered.changed += isAnsi ? 1 : 0;
  } else {
    gathered.add(slot, row.line);
    m_otherValues.add(ShownValue::label, !isAnsi);
  }
}

std::unique_ptr<CDipoleszq> MsiAudit::makeDipole(const MsiRow& row) const {
  const std::optional<Told> told = read(row);
  if (!told) {
    return nullptr;
  }
  auto dipole = std::make_unique<CDipoleszq>();
  setPlace(*dipole, scaledPlace(told->place, importFactor));
  setOrientation(*dipole, told->orientation);
  dipole->m_latency = told->latency;
  dipole->m_moment = told->moment;
  dipole->m_fitError = told->fitError;
  dipole->m_label = told->label.empty() ? noLabel() : m_encoding.asMeant(told->label);
  return dipole;
}

}  // namespace host
