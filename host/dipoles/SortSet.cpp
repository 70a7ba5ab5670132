#include "host/dipoles/SortSet.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/dipoles/UnknownDipoles.h"
#include "host/text/PathText.h"

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
    case sortByLabel:
      return DipoleValue::label;
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

// What the module sorts by.
double numberOf(int key, const CDipoleszq& dipole) {
  switch (key) {
    case 1:
      return dipole.m_latency;
    case 2:
    case 3:
    case 4:
      return dipole.m_location[key - 2];
    case 5:
    case 6:
    case 7:
      return dipole.m_orientation[key - 5];
    case 8:
      return dipole.m_fitError;
    case 9:
      return dipole.m_moment;
    default:
      return 0.0;
  }
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// The digits that a text begins with, without zeros in front, and how many characters they are.
std::pair<std::string_view, std::size_t> numberAt(std::string_view text) {
  const auto end =
      static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
  const std::size_t zeros = (std::min)(text.find_first_not_of('0'), end);
  return {text.substr(zeros, end - zeros), end};
}

// spike_2 before spike_10; else by characters.
bool isLabelBefore(std::string_view one, std::string_view other) {
  while (!one.empty() && !other.empty()) {
    if (isDigit(one.front()) && isDigit(other.front())) {
      const auto [a, lengthOfA] = numberAt(one);
      const auto [b, lengthOfB] = numberAt(other);
      if (a != b) {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
      }
      one.remove_prefix(lengthOfA);
      other.remove_prefix(lengthOfB);
    } else if (one.front() != other.front()) {
      return static_cast<unsigned char>(one.front()) < static_cast<unsigned char>(other.front());
    } else {
      one.remove_prefix(1);
      other.remove_prefix(1);
    }
  }
  return one.empty() && !other.empty();
}

// By exchanges, as the table offers nothing else: `wanted` has numbers of slots that are filled, in their new
// order. `at` says which dipole stands in a place by now, `placeOf` the reverse.
void reorder(CDipoleFace& set, const std::vector<int>& slots, const std::vector<std::size_t>& wanted) {
  std::vector<std::size_t> at(slots.size());
  std::iota(at.begin(), at.end(), std::size_t{0});
  std::vector<std::size_t> placeOf = at;
  for (std::size_t place = 0; place < slots.size(); ++place) {
    const std::size_t from = placeOf[wanted[place]];
    set.m_dipoles.swap(slots[place], slots[from]);
    std::swap(at[place], at[from]);
    placeOf[at[place]] = place;
    placeOf[at[from]] = from;
  }
}

// Of the filled slots.
std::vector<std::string> labelsIn(const CDipoleFace& set, const std::vector<int>& slots) {
  std::vector<std::string> labels;
  labels.reserve(slots.size());
  for (const int slot : slots) {
    labels.push_back(utf8Of(set.m_dipoles[slot]->m_label));
  }
  return labels;
}

}  // namespace

void sortSet(CDipoleFace9File& set, int key, UnknownValues& unknown, SortOrder order) {
  UnknownDipoles followed;
  followed.mark(set, unknown);
  (void)set.sortDipoles(key);
  const std::vector<int> slots = filledSlots(set);
  std::vector<std::size_t> wanted(slots.size());
  std::iota(wanted.begin(), wanted.end(), std::size_t{0});
  std::vector<std::string> labels;
  if (key == sortByLabel) {
    labels = labelsIn(set, slots);
    std::stable_sort(wanted.begin(), wanted.end(), [&](std::size_t one, std::size_t other) {
      return isLabelBefore(labels[one], labels[other]);
    });
  }
  const std::optional<DipoleValue> value = valueOfKey(key);
  const auto last = std::stable_partition(wanted.begin(), wanted.end(), [&](std::size_t place) {
    const CDipoleszq& dipole = *set.m_dipoles[slots[place]];
    const bool isNothing = key == sortByLabel ? labels[place].empty() : std::isnan(numberOf(key, dipole));
    return !isNothing && !(value && followed.isUnknown(dipole, *value));
  });
  if (order == SortOrder::descending) {
    std::reverse(wanted.begin(), last);
  }
  reorder(set, slots, wanted);
  unknown = followed.in(set);
}

}  // namespace host
