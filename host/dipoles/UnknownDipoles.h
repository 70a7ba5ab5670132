// Which values of which dipoles of a set are unknown, wherever the dipoles go.
//
// The module has no member to keep it, so it is kept beside the set, by the dipole itself: sorting, deleting
// and closing gaps move a dipole from slot to slot, but it stays the same object. Objects that have an entry
// here are held (DipoleTable::Hold), so that no other dipole can get the address of one that was deleted. An
// entry costs some hundred bytes; a set without any costs nothing.
//
// A value that has changed since it was marked was edited, and is known from then on. An average, which the
// module labels "AverageDipole...", knows what all of its dipoles know, see follow.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "host/dipoles/UnknownValues.h"
#include "module/dipole.h"

namespace host {

class UnknownDipoles {
 public:
  // Every value is known.
  void clear() noexcept;

  // The marks of slots are added to those that are there; averages that the set has already are taken for
  // known but for these. Throws what an allocation throws, and changes nothing then.
  void mark(const CDipoleFace& set, const UnknownValues& values);

  // Takes note of what happened to the set: forgets dipoles that are gone and values that were edited, and
  // looks for averages that have come. One that replaces its dipoles is made of those that are gone. One that
  // is added is made of the dipoles that are selected, or were when this was called last, if their mean is
  // that average; else what is unknown of any dipole is unknown of the average. Call it after each command.
  // Throws what an allocation throws; it may be called again then.
  void follow(const CDipoleFace& set);

  // The sum of the DipoleValues that are unknown of a dipole of the set. A value that differs from what was
  // marked counts as known at once.
  std::uint8_t of(const CDipoles& dipole) const;
  bool isUnknown(const CDipoles& dipole, DipoleValue value) const {
    return (of(dipole) & static_cast<std::uint8_t>(value)) != 0;
  }
  bool isEmpty() const { return m_entries.empty(); }

  // By the slots of today.
  UnknownValues in(const CDipoleFace& set) const;

  // For a set that is about to become another one, in two steps of which the second cannot fail: an empty
  // object expects the dipoles of which something will be unknown, and holds them once they are there.
  void expect(const CDipoleszq* dipole, std::uint8_t values, const CString& label);
  void hold(const CDipoleFace& set) noexcept;

 private:
  // What was marked, so that an edit is seen. Bits, not numbers: also that of a nan counts.
  struct Values {
    std::uint64_t latency = 0;
    std::uint64_t fitError = 0;
    std::uint64_t moment = 0;
    std::uint64_t orientation[3] = {};
    std::uint64_t label = 0;  // a hash
  };
  struct Entry {
    DipoleTable::Hold held;
    std::uint8_t unknown = 0;  // 0: an average that was judged
    Values values;
  };
  using Entries = std::unordered_map<const CDipoles*, Entry>;

  static Values valuesOf(const CDipoles& dipole);
  static std::uint8_t changed(const Values& before, const Values& now);
  using Dipoles = std::vector<const CDipoleszq*>;

  void judge(const CDipoleFace& set, const std::vector<int>& averages, std::uint8_t unknownOfGone);
  std::uint8_t unknownOfAdded(const CDipoleFace& set, const CDipoleszq& average) const;
  std::uint8_t unknownOfAny(const Dipoles& dipoles) const;

  Entries m_entries;
  Dipoles m_selected;  // when follow was called last; only compared, they may be gone
};

}  // namespace host
