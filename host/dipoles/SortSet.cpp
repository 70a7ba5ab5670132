#include "host/dipoles/SortSet.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

#include "host/dipoles/UnknownDipoles.h"

namespace host {

namespace {

// By the columns of the manager's list.
std::optional<DipoleValue> valueOfKey(int key) {
  switch (key) {
    case 1:
      return DipoleValue::latency;
    case 5:
    case 6:
    case 7:
      return DipoleValue::orientation;
    case 8:
      return DipoleValue::fitError;
    case 9:
      return DipoleValue::moment;
    default:
      return std::nullopt;
  }
}

std::vector<int> filledSlots(const CDipoleFace& set) {
  std::vector<int> slots;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (set.m_dipoles[slot] != nullptr) {
      slots.push_back(slot);
    }
  }
  return slots;
}

// Among themselves those that are last, and those that are not, keep their order. By exchanges, as the table
// offers nothing else: `at` says which dipole stands in a place by now, `placeOf` the reverse.
template <typename IsLast>
void moveToEnd(CDipoleFace& set, IsLast isLast) {
  const std::vector<int> slots = filledSlots(set);
  std::vector<std::size_t> at(slots.size());
  std::iota(at.begin(), at.end(), std::size_t{0});
  std::vector<std::size_t> placeOf = at;
  std::vector<std::size_t> wanted = at;
  std::stable_partition(wanted.begin(), wanted.end(),
                        [&](std::size_t dipole) { return !isLast(*set.m_dipoles[slots[dipole]]); });
  for (std::size_t place = 0; place < slots.size(); ++place) {
    const std::size_t from = placeOf[wanted[place]];
    set.m_dipoles.swap(slots[place], slots[from]);
    std::swap(at[place], at[from]);
    placeOf[at[place]] = place;
    placeOf[at[from]] = from;
  }
}

}  // namespace

void sortSet(CDipoleFace9File& set, int key, UnknownValues& unknown) {
  UnknownDipoles followed;
  followed.mark(set, unknown);
  (void)set.sortDipoles(key);
  if (const std::optional<DipoleValue> value = valueOfKey(key)) {
    moveToEnd(set, [&](const CDipoleszq& dipole) { return followed.isUnknown(dipole, *value); });
  }
  unknown = followed.in(set);
}

}  // namespace host
