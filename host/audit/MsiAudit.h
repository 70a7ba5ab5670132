// The audit of a 4D/MSI dipole table, see FileAudit.h.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/audit/AuditPass.h"
#include "host/audit/MsiReading.h"
#include "host/audit/PositionUnit.h"
#include "host/audit/ShownValues.h"

namespace host {

class MsiAudit {
 public:
  MsiAudit(AuditPass& pass, const TextEncoding& encoding);

  void run();

 private:
  // What a row says, by the columns that the heading names.
  struct Told {
    float place[3] = {};  // file axes, unscaled
    Place orientation = {};
    double latency = 0.0;
    double moment = 0.0;
    double fitError = 0.0;
    std::string_view label;  // empty: "Non"
  };

  void settleGoodness();
  void settlePositions();
  bool isRepairedByRows() const;
  std::vector<LateDipole> refusedDipoles() const;
  void insertRows();
  void look(std::size_t local, const MsiRow& row);
  void lookClosely(std::size_t local, const MsiRow& row);
  void lookAtPlace(std::size_t local, const MsiRow& row, const Told& told);
  void lookAtValues(std::size_t local, const MsiRow& row, const Told& told);
  void lookAtLabel(std::size_t local, const MsiRow& row, const Told& told);
  std::optional<Told> read(const MsiRow& row) const;
  double fitErrorOf(float goodness, bool isPercent) const;
  std::unique_ptr<CDipoleszq> makeDipole(const MsiRow& row) const;
  float meantFactor() const;

  void lookAtLostRows();
  void lookAtTable();
  void lookAtHeader(const MsiHeaderLine& line, const CString& key, CString CDipoleFace::*member,
                    std::string_view what);
  void finish();
  void finishUnit();
  void finishStatedUnit();

  enum class Goodness { fraction, percent, open };

  AuditPass& m_pass;
  const TextEncoding& m_encoding;
  MsiReading m_reading;
  Goodness m_goodness = Goodness::fraction;
  PositionUnit m_positions;
  bool m_isUnitOpen = false;  // none is stated that could be right, and cm cannot be either or is not stated
  bool m_isSimple = false;    // nothing but the place of a plain row needs a look

  Gathered m_unit;
  Gathered m_latency;
  Gathered m_columns;
  ShownValues m_otherValues;  // of other columns
  Gathered m_openColumns;
  Gathered m_percent;
  Gathered m_openPercent;
  Gathered m_noNumbers;
  Gathered m_misplaced;
  Gathered m_encoded;
};

}  // namespace host
