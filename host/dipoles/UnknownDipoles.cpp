#include "host/dipoles/UnknownDipoles.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <iterator>
#include <new>
#include <utility>

namespace host {

namespace {

constexpr std::uint8_t bit(DipoleValue value) {
  return static_cast<std::uint8_t>(value);
}

// FNV-1a over the code units; a copy of the text would ask for memory.
std::uint64_t hashOf(const CString& text) {
  std::uint64_t hash = 14695981039346656037U;
  for (int i = 0; i < text.GetLength(); ++i) {
    hash = (hash ^ static_cast<std::uint64_t>(text[i])) * 1099511628211U;
  }
  return hash;
}

std::uint64_t bitsOf(double value) {
  return std::bit_cast<std::uint64_t>(value);
}

// The labels that the module gives: "AverageDipole_3" to one that is added, "AverageDipole3" to one that
// replaces its dipoles.
constexpr TCHAR averageLabel[] = _T("AverageDipole");
constexpr int averageLength = static_cast<int>(std::size(averageLabel)) - 1;

bool isAverage(const CString& label) {
  return label.GetLength() >= averageLength &&
         std::equal(averageLabel, averageLabel + averageLength, label.GetString());
}
bool isAddedAverage(const CString& label) {
  return isAverage(label) && label.GetLength() > averageLength && label[averageLength] == _T('_');
}

// Whether an average is that of these dipoles, computed in this order. The manager selects a new average
// alone, and it is its own mean.
bool isMeanOf(const CDipoleszq& average, const std::vector<const CDipoleszq*>& dipoles) {
  const auto count = static_cast<double>(dipoles.size());
  const auto isMean = [&](auto valueOf) {
    double sum = 0.0;
    for (const CDipoleszq* dipole : dipoles) {
      sum += valueOf(*dipole);
    }
    return bitsOf(sum / count) == bitsOf(valueOf(average));
  };
  const bool isOneOfThem = std::find(dipoles.begin(), dipoles.end(), &average) != dipoles.end();
  return !dipoles.empty() && !isOneOfThem && isMean([](const CDipoles& d) { return d.m_location[0]; }) &&
         isMean([](const CDipoles& d) { return d.m_location[1]; }) &&
         isMean([](const CDipoles& d) { return d.m_location[2]; }) &&
         isMean([](const CDipoles& d) { return d.m_moment; });
}

template <typename Visit>
void visitDipoles(const CDipoleFace& set, Visit visit) {
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    if (const CDipoleszq* dipole = set.m_dipoles[slot]) {
      visit(slot, *dipole);
    }
  }
}

std::vector<const CDipoleszq*> selectedOf(const CDipoleFace& set) {
  std::vector<const CDipoleszq*> selected;
  visitDipoles(set, [&](int slot, const CDipoleszq& dipole) {
    if (dipole.m_selected && slot < set.m_totalDipoles) {
      selected.push_back(&dipole);
    }
  });
  return selected;
}

}  // namespace

UnknownDipoles::Values UnknownDipoles::valuesOf(const CDipoles& dipole) {
  return {bitsOf(dipole.m_latency),
          bitsOf(dipole.m_fitError),
          bitsOf(dipole.m_moment),
          {bitsOf(dipole.m_orientation[0]), bitsOf(dipole.m_orientation[1]), bitsOf(dipole.m_orientation[2])},
          hashOf(dipole.m_label)};
}

std::uint8_t UnknownDipoles::changed(const Values& before, const Values& now) {
  int values = 0;
  values |= before.latency != now.latency ? bit(DipoleValue::latency) : 0;
  values |= before.fitError != now.fitError ? bit(DipoleValue::fitError) : 0;
  values |= before.moment != now.moment ? bit(DipoleValue::moment) : 0;
  const bool isTurned = !std::equal(before.orientation, before.orientation + 3, now.orientation);
  values |= isTurned ? bit(DipoleValue::orientation) : 0;
  values |= before.label != now.label ? bit(DipoleValue::label) : 0;
  return static_cast<std::uint8_t>(values);
}

void UnknownDipoles::clear() noexcept {
  m_entries.clear();
  m_selected.clear();
}

std::uint8_t UnknownDipoles::of(const CDipoles& dipole) const {
  if (m_entries.empty()) {
    return 0;
  }
  const auto found = m_entries.find(&dipole);
  if (found == m_entries.end() || found->second.unknown == 0) {
    return 0;
  }
  const std::uint8_t edited = changed(found->second.values, valuesOf(dipole));
  return static_cast<std::uint8_t>(found->second.unknown & ~edited);
}

UnknownValues UnknownDipoles::in(const CDipoleFace& set) const {
  UnknownValues values;
  if (!m_entries.empty()) {
    visitDipoles(set, [&](int slot, const CDipoleszq& dipole) { values.markAll(slot, of(dipole)); });
  }
  return values;
}

void UnknownDipoles::mark(const CDipoleFace& set, const UnknownValues& values) {
  if (values.isEmpty()) {
    return;
  }
  Entries added;
  visitDipoles(set, [&](int slot, const CDipoleszq& dipole) {
    const int unknown = values.of(slot) | of(dipole);
    if (unknown != 0 || isAverage(dipole.m_label)) {
      Entry& entry = added[&dipole];
      entry.held = DipoleTable::Hold(set.m_dipoles, slot);
      entry.unknown = static_cast<std::uint8_t>(unknown);
      entry.values = valuesOf(dipole);
    }
  });
  Dipoles selected = selectedOf(set);
  m_entries.swap(added);
  m_selected.swap(selected);
}

void UnknownDipoles::follow(const CDipoleFace& set) {
  if (m_entries.empty()) {
    return;
  }
  Entries gone = std::exchange(m_entries, Entries());
  try {
    std::vector<int> averages;
    m_entries.reserve(gone.size());
    visitDipoles(set, [&](int slot, const CDipoleszq& dipole) {
      const auto known = gone.find(&dipole);
      if (known != gone.end()) {
        known->second.unknown = static_cast<std::uint8_t>(known->second.unknown &
                                                          ~changed(known->second.values, valuesOf(dipole)));
        m_entries.insert(gone.extract(known));
      } else if (isAverage(dipole.m_label)) {
        averages.push_back(slot);
      }
    });
    std::uint8_t unknownOfGone = 0;
    for (const auto& [dipole, entry] : gone) {
      unknownOfGone = static_cast<std::uint8_t>(unknownOfGone | entry.unknown);
    }
    judge(set, averages, unknownOfGone);
    m_selected = selectedOf(set);
  } catch (...) {
    m_entries.merge(gone);
    throw;
  }
}

void UnknownDipoles::judge(const CDipoleFace& set, const std::vector<int>& averages,
                           std::uint8_t unknownOfGone) {
  for (const int slot : averages) {
    const CDipoleszq& average = *set.m_dipoles[slot];
    const int unknown = unknownOfGone | (isAddedAverage(average.m_label) ? unknownOfAdded(set, average) : 0);
    Entry entry{DipoleTable::Hold(set.m_dipoles, slot), 0, valuesOf(average)};
    // The label is the module's own, and as such known.
    entry.unknown = static_cast<std::uint8_t>(unknown & ~bit(DipoleValue::label));
    m_entries.emplace(&average, std::move(entry));
  }
}

std::uint8_t UnknownDipoles::unknownOfAdded(const CDipoleFace& set, const CDipoleszq& average) const {
  const Dipoles now = selectedOf(set);
  if (isMeanOf(average, now)) {
    return unknownOfAny(now);
  }
  Dipoles byAddress = m_selected;
  std::sort(byAddress.begin(), byAddress.end(), std::less<>());
  Dipoles before;
  visitDipoles(set, [&](int /*slot*/, const CDipoleszq& dipole) {
    if (std::binary_search(byAddress.begin(), byAddress.end(), &dipole, std::less<>())) {
      before.push_back(&dipole);
    }
  });
  if (before.size() == m_selected.size() && isMeanOf(average, before)) {
    return unknownOfAny(before);
  }
  std::uint8_t all = 0;
  for (const auto& [dipole, entry] : m_entries) {
    all = static_cast<std::uint8_t>(all | entry.unknown);
  }
  return all;
}

std::uint8_t UnknownDipoles::unknownOfAny(const Dipoles& dipoles) const {
  std::uint8_t unknown = 0;
  for (const CDipoleszq* dipole : dipoles) {
    unknown = static_cast<std::uint8_t>(unknown | of(*dipole));
  }
  return unknown;
}

void UnknownDipoles::expect(const CDipoleszq* dipole, std::uint8_t values, const CString& label) {
  if (values != 0 || isAverage(label)) {
    m_entries[dipole].unknown = values;
  }
}

// Without memory an entry is not held, and found by its address alone.
void UnknownDipoles::hold(const CDipoleFace& set) noexcept {
  if (m_entries.empty()) {
    return;
  }
  visitDipoles(set, [&](int slot, const CDipoleszq& dipole) {
    const auto found = m_entries.find(&dipole);
    if (found == m_entries.end()) {
      return;
    }
    found->second.values = valuesOf(dipole);
    try {
      found->second.held = DipoleTable::Hold(set.m_dipoles, slot);
    } catch (const std::bad_alloc&) {
    }
  });
}

}  // namespace host
