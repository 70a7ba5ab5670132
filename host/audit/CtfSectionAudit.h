// The dipoles of one section of a CTF file beside its rows: places, columns, units, labels.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/audit/AuditPass.h"
#include "host/audit/CtfFollowers.h"
#include "host/audit/CtfReading.h"
#include "host/audit/PositionUnit.h"
#include "host/audit/ShownValues.h"

namespace host {

class CtfSectionAudit {
 public:
  CtfSectionAudit(AuditPass& pass, const TextEncoding& encoding, const CtfReading& reading, int section);

  // The dipole of the file's n-th slot beside its row. Latency and fit error of a dipole that has a row of
  // fit information are of that row, and nothing is said here about them.
  void look(std::size_t local, const CtfRow& row, const CtfFollowers& followers);
  // The findings about all of them.
  void finish();

  // A dipole as the import would have made it of a row; null when that holds no numbers.
  std::unique_ptr<CDipoleszq> makeDipole(const CtfRow& row) const;

 private:
  // What a row says, by the columns that the heading names.
  struct Told {
    float place[3] = {};  // file axes, unscaled
    Place orientation = {};
    double moment = 1.0;  // those that no column gives are as in a new dipole, and unknown
    double latency = 0.0;
    double fitError = 0.2;
    std::string_view label;
    bool hasOrientation = false;
    bool hasMoment = false;
    bool hasLatency = false;
    bool hasError = false;
  };

  PositionUnit positionUnitOf(const CtfReading& reading, int section, bool isCentimetre) const;
  bool isUsual(const CtfRow& row) const;
  void lookClosely(std::size_t local, const CtfRow& row, const CtfFollowers& followers);
  std::optional<Told> read(const CtfRow& row, const RowFields& fields) const;
  bool isAligned(int fields) const;
  bool hasUnnamedColumns(const RowFields& fields) const;
  std::optional<double> latencyOf(const CtfRow& row, const RowFields& fields) const;
  float importFactor(const CtfRow& row) const { return row.isCentimetre ? 10.0F : 1.0F; }
  float meantFactor(const CtfRow& row) const;
  bool isUnitOpen(const CtfRow& row) const;

  void lookAtPlace(std::size_t local, const CtfRow& row, const float (&meant)[3]);
  void lookAtColumns(std::size_t local, const CtfRow& row, const Told& told, bool hasFit);
  void lookAtLatency(std::size_t local, const CtfRow& row, const RowFields& fields);
  void lookAtLabel(std::size_t local, const CtfRow& row, const RowFields& fields);
  void finishUnit();
  void finishStatedUnit();
  void finishLatency();
  void finishColumns();
  void finishLabels();

  AuditPass& m_pass;
  const TextEncoding& m_encoding;
  const CtfSection& m_section;
  Heading m_heading;
  ColumnPlaces m_places;  // of the columns that count: the format's or the heading's
  PositionUnit m_positions;
  bool m_isMoving;
  bool m_hasOtherColumns = false;  // than the import takes for granted
  bool m_isSimple = false;         // nothing but the place of a usual row needs a look
  float m_largest = 0.0F;          // coordinate, as written, of those whose unit is open

  Gathered m_unit;        // is open
  Gathered m_statedUnit;  // is another than the one that the import took
  Gathered m_millimetre;  // is what the file states
  Gathered m_columns;
  ShownValues m_otherValues;  // of other columns
  Gathered m_openColumns;     // rows that the heading does not fit
  Gathered m_unnamed;         // rows with columns that no heading names
  Gathered m_latency;
  Gathered m_openLatency;
  Gathered m_noNumbers;
  Gathered m_misplaced;
  Gathered m_borrowed;  // labels of the dipole before
  Gathered m_cut;
  Gathered m_cutOpen;
  Gathered m_encoded;
};

}  // namespace host
