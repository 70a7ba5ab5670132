// One pass of an audit over a file and its dipoles, to look or to repair.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/audit/FileAudit.h"

namespace host {

using Place = std::array<double, 3>;

// Values that are no number are the same as each other.
inline bool isSame(const Place& a, const Place& b) {
  return std::equal(a.begin(), a.end(), b.begin(),
                    [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); });
}

// Three values along a file's axes (x to the nose, y to the left ear, z up) along those of the set, each
// multiplied or divided in single precision as the import does.
inline Place scaledPlace(const float (&values)[3], float factor) {
  const auto scaled = [factor](float value) { return static_cast<double>(value * factor); };
  return {scaled(values[1]), scaled(values[2]), scaled(values[0])};
}

// The label of a dipole that has none, as the import gives it.
const CString& noLabel();

// "1 dipole", "7 dipoles".
std::string counted(std::size_t count, std::string_view one);

// What the dipoles concerned by one finding have in common.
struct Gathered {
  std::vector<int> slots;
  int line = 0;             // of the first one
  std::size_t changed = 0;  // by a repair

  // In rising order; a slot that comes twice in turn counts once.
  void add(int slot, int atLine) {
    if (slots.empty() || slots.back() != slot) {
      slots.push_back(slot);
    }
    line = line == 0 ? atLine : line;
  }
  bool isEmpty() const { return slots.empty(); }
};

class AuditPass {
 public:
  // Without a target it only looks.
  AuditPass(const ImportedText& file, const CDipoleFace9File& set, CDipoleFace9File* target,
            const std::set<FindingCode>& codes)
      : m_file(file), m_set(set), m_target(target), m_codes(codes) {}

  const ImportedText& file() const { return m_file; }
  const CDipoleFace9File& set() const { return m_set; }
  bool repairs(FindingCode code) const { return m_target != nullptr && m_codes.contains(code); }
  CDipoleFace9File& target() { return *m_target; }  // when it repairs something

  // The dipole of the file's n-th slot; null when there is none.
  CDipoleszq* dipole(std::size_t local) const {
    return m_set.m_dipoles[m_file.firstSlot + static_cast<int>(local)];
  }
  int slotOf(std::size_t local) const { return m_file.firstSlot + static_cast<int>(local); }
  int dipolesOfFile() const { return m_set.m_totalDipoles - m_file.firstSlot; }

  // Changes a value when a repair wants it: true when `value` is then, or was already, what is meant.
  template <typename Value>
  bool settle(FindingCode code, Value& value, const Value& meant, bool& isChanged) {
    if (value == meant) {
      return true;
    }
    if (!repairs(code)) {
      return false;
    }
    value = meant;
    isChanged = true;
    return true;
  }

  // Likewise moment and orientation of a dipole.
  bool settleMoment(FindingCode code, CDipoleszq& dipole, double moment, const Place& orientation,
                    bool& isChanged);

  // Decodes a text of the set's header when a repair wants it: true when it is then, or was already, as it
  // is meant.
  bool settleHeader(CString CDipoleFace::*member, const CString& meant, std::string_view what);

  void add(Finding finding);
  // A finding about dipoles, when there are any.
  void add(FindingCode code, Severity severity, std::string_view section, Gathered&& gathered,
           std::string sentence, std::string remedy);
  // That the unit of positions is open: the user must say it.
  void addOpenUnit(Severity severity, std::string_view section, Gathered&& gathered, std::string sentence);
  void tell(std::string sentence) { m_told.push_back(std::move(sentence)); }
  // "7 dipoles: <what>." of those that were changed, when there are any.
  void tellOf(const Gathered& gathered, std::string_view what);
  void markUnknown(int slot, DipoleValue value) { m_unknown.mark(slot, value); }

  // The findings by code and line.
  AuditReport takeReport();
  std::vector<std::string> takeTold() { return std::move(m_told); }

 private:
  const ImportedText& m_file;
  const CDipoleFace9File& m_set;
  CDipoleFace9File* m_target;
  const std::set<FindingCode>& m_codes;
  std::vector<Finding> m_findings;
  UnknownValues m_unknown;
  std::vector<std::string> m_told;
};

// The dipole's location or orientation, as it is shown and as it was first; the latter follows only when it
// was the same.
inline Place placeOf(const CDipoleszq& dipole) {
  return {dipole.m_location[0], dipole.m_location[1], dipole.m_location[2]};
}
void setPlace(CDipoleszq& dipole, const Place& place);
Place orientationOf(const CDipoleszq& dipole);
void setOrientation(CDipoleszq& dipole, const Place& orientation);

// Puts dipoles between those of the set, at slots in rising order, as if the import had found them there.
// They must fit in.
struct LateDipole {
  int slot = 0;
  std::unique_ptr<CDipoleszq> dipole;
};
void insertDipoles(CDipoleFace9File& set, std::vector<LateDipole>&& late);

// The dipoles of those rows of a reading that `isLate`, each made by `make`; none when one cannot be made,
// when the set does not hold what the import took of the file, or has no room for all.
template <typename Reading, typename IsLate, typename Make>
std::vector<LateDipole> lateDipolesOf(const AuditPass& pass, const Reading& reading, IsLate isLate,
                                      Make make) {
  const int room = DipoleTable::capacity - pass.file().firstSlot;
  std::vector<LateDipole> late;
  if (pass.dipolesOfFile() != static_cast<int>(reading.slots.size()) ||
      static_cast<int>(reading.repairedSlots.size()) > room) {
    return late;
  }
  for (std::size_t local = 0; local < reading.repairedSlots.size(); ++local) {
    const auto& row = reading.rows[static_cast<std::size_t>(reading.repairedSlots[local])];
    if (isLate(row)) {
      late.push_back({pass.slotOf(local), make(row)});
      if (late.back().dipole == nullptr) {
        return {};
      }
    }
  }
  return late;
}

}  // namespace host
