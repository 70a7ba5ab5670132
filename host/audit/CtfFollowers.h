// Which row of the flags and of the fit information belongs to which dipole of a CTF file. The import counts;
// here the numbers in front of the rows decide.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "host/audit/CtfReading.h"

namespace host {

struct ToldFlags {
  float color[3] = {1.0F, 1.0F, 0.0F};  // as a dipole without flags has it
  int display = 1;
};

struct ToldFit {
  std::optional<int> id;
  std::optional<int> fitTag;
  double latency = 0.0;  // ms
  double fitError = 0.2;
  double takenLatency = 0.0;       // as the import reads it, always from seconds
  bool hasOtherColumns = false;    // than the import takes for granted, by the heading
  bool isLatencyUnitOpen = false;  // no heading gives it
};

class CtfFollowers {
 public:
  // `slots` names the row of each dipole of the file.
  CtfFollowers(const CtfReading& reading, const std::vector<int>& slots);

  // Whether the numbers say for certain which row belongs to which dipole.
  bool areFlagsCertain() const { return m_flags.isCertain; }
  bool areFitsCertain() const { return m_fits.isCertain; }

  // The follower of a slot; null when the file has none for it.
  const CtfFollower* flags(std::size_t local) const { return of(m_flags, local); }
  const CtfFollower* fit(std::size_t local) const { return of(m_fits, local); }

  // What a row says; nothing when its fields are no numbers.
  static std::optional<ToldFlags> toldFlags(const CtfFollower& row);
  std::optional<ToldFit> toldFit(const CtfFollower& row) const;
  std::optional<ToldFit> toldFit(std::size_t local) const;  // of a slot's row

  int firstLine(CtfKind kind) const;  // of its first row; 0 when there is none

 private:
  struct Matched {
    bool isCertain = true;
    std::vector<int> bySlot;  // the follower, -1: none
  };

  const CtfFollower* of(const Matched& matched, std::size_t local) const;
  void match(CtfKind kind, const std::vector<int>& slots, Matched& matched) const;
  bool matchNumbers(CtfKind kind, bool inGroups, std::vector<int>& byRow) const;
  bool isInOrder(CtfKind kind, const std::vector<int>& slots, std::vector<int>& bySlot) const;
  int groupOf(int section) const;
  bool isTarget(const CtfRow& row) const;
  std::vector<int> followersOf(CtfKind kind) const;

  const CtfReading& m_reading;
  CtfKind m_target = CtfKind::dipoles;  // the sections of dipoles that the followers belong to
  Matched m_flags;
  Matched m_fits;
};

}  // namespace host
