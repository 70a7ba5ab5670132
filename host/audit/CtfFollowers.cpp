#include "host/audit/CtfFollowers.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <tuple>
#include <utility>

namespace host {

namespace {

constexpr int none = -1;

// A row by the number in front of it, within its group of sections.
struct Key {
  int group = 0;
  int number = 0;
  int row = 0;

  friend bool operator<(const Key& a, const Key& b) {
    return std::tie(a.group, a.number) < std::tie(b.group, b.number);
  }
};

bool isSame(const Key& a, const Key& b) {
  return a.group == b.group && a.number == b.number;
}

// In order; false when two are the same.
bool sortUnique(std::vector<Key>& keys) {
  if (!std::is_sorted(keys.begin(), keys.end())) {
    std::sort(keys.begin(), keys.end());
  }
  return std::adjacent_find(keys.begin(), keys.end(), isSame) == keys.end();
}

}  // namespace

CtfFollowers::CtfFollowers(const CtfReading& reading, const std::vector<int>& slots) : m_reading(reading) {
  const bool hasStatic =
      std::any_of(reading.sections.begin(), reading.sections.end(),
                  [](const CtfSection& section) { return section.kind == CtfKind::dipoles; });
  m_target = hasStatic ? CtfKind::dipoles : CtfKind::moving;
  match(CtfKind::flags, slots, m_flags);
  match(CtfKind::fitInfo, slots, m_fits);
}

const CtfFollower* CtfFollowers::of(const Matched& matched, std::size_t local) const {
  const int follower = local < matched.bySlot.size() ? matched.bySlot[local] : none;
  return follower != none ? &m_reading.followers[static_cast<std::size_t>(follower)] : nullptr;
}

bool CtfFollowers::isTarget(const CtfRow& row) const {
  const CtfSection& section = m_reading.sections[static_cast<std::size_t>(row.section)];
  return section.kind == m_target && section.isAccepted && !row.isForeign &&
         (m_target == CtfKind::dipoles || row.fate != RowFate::replaced);
}

// Followers belong to the last section of dipoles before them, or to the first one.
int CtfFollowers::groupOf(int section) const {
  int group = 0;
  for (int i = 0; i <= section; ++i) {
    group += m_reading.sections[static_cast<std::size_t>(i)].kind == m_target ? 1 : 0;
  }
  return (std::max)(group, 1);
}

std::vector<int> CtfFollowers::followersOf(CtfKind kind) const {
  std::vector<int> found;
  for (std::size_t i = 0; i < m_reading.followers.size(); ++i) {
    const auto section = static_cast<std::size_t>(m_reading.followers[i].section);
    if (m_reading.sections[section].kind == kind) {
      found.push_back(static_cast<int>(i));
    }
  }
  return found;
}

int CtfFollowers::firstLine(CtfKind kind) const {
  const std::vector<int> found = followersOf(kind);
  return found.empty() ? 0 : m_reading.followers[static_cast<std::size_t>(found.front())].line;
}

void CtfFollowers::match(CtfKind kind, const std::vector<int>& slots, Matched& matched) const {
  if (followersOf(kind).empty()) {
    return;
  }
  std::vector<int> byRow;
  if (!matchNumbers(kind, false, byRow) && !matchNumbers(kind, true, byRow)) {
    matched.isCertain = isInOrder(kind, slots, matched.bySlot);
    return;
  }
  for (const int row : slots) {
    matched.bySlot.push_back(byRow[static_cast<std::size_t>(row)]);
  }
}

// Each number must be there once among the dipoles and once among the followers, and each follower must have
// a dipole.
bool CtfFollowers::matchNumbers(CtfKind kind, bool inGroups, std::vector<int>& byRow) const {
  byRow.assign(m_reading.rows.size(), none);
  std::vector<int> groups;
  for (std::size_t i = 0; i < m_reading.sections.size(); ++i) {
    groups.push_back(inGroups ? groupOf(static_cast<int>(i)) : 0);
  }
  std::vector<Key> dipoles;
  for (std::size_t i = 0; i < m_reading.rows.size(); ++i) {
    const CtfRow& row = m_reading.rows[i];
    if (isTarget(row)) {
      dipoles.push_back({groups[static_cast<std::size_t>(row.section)], row.number, static_cast<int>(i)});
    }
  }
  std::vector<Key> followers;
  for (const int i : followersOf(kind)) {
    const CtfFollower& follower = m_reading.followers[static_cast<std::size_t>(i)];
    followers.push_back({groups[static_cast<std::size_t>(follower.section)], follower.number, i});
  }
  if (!sortUnique(dipoles) || !sortUnique(followers)) {
    return false;
  }
  auto dipole = dipoles.begin();
  for (const Key& follower : followers) {
    dipole = std::lower_bound(dipole, dipoles.end(), follower);
    if (dipole == dipoles.end() || !isSame(*dipole, follower)) {
      return false;
    }
    byRow[static_cast<std::size_t>(dipole->row)] = follower.row;
  }
  return true;
}

// Numbers that are not unique say nothing against the order when each stands beside its like.
bool CtfFollowers::isInOrder(CtfKind kind, const std::vector<int>& slots, std::vector<int>& bySlot) const {
  const std::vector<int> found = followersOf(kind);
  if (found.size() != slots.size()) {
    return false;
  }
  for (std::size_t i = 0; i < slots.size(); ++i) {
    const CtfRow& row = m_reading.rows[static_cast<std::size_t>(slots[i])];
    if (!isTarget(row) || row.number != m_reading.followers[static_cast<std::size_t>(found[i])].number) {
      return false;
    }
  }
  bySlot = found;
  return true;
}

std::optional<ToldFlags> CtfFollowers::toldFlags(const CtfFollower& row) {
  constexpr float colors[][3] = {{1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {0, 1, 1},
                                 {1, 0, 1}, {1, 1, 1}, {0, 0, 0}, {0, 0, 1}};  // the last: any other code
  constexpr int otherColor = static_cast<int>(std::size(colors)) - 1;
  const RowFields fields(row.fields);
  const std::optional<int> color = fields.wholeNumber(0);
  const std::optional<int> shape = fields.wholeNumber(1);
  if (!color || !shape) {
    return std::nullopt;
  }
  ToldFlags told;
  const int known = *color >= 0 && *color < otherColor ? *color : otherColor;
  std::copy(std::begin(colors[known]), std::end(colors[known]), told.color);
  told.display = *shape == 0 || *shape == 3 ? 1 : *shape == 1 || *shape == 4 ? 2 : 0;
  return told;
}

std::optional<ToldFit> CtfFollowers::toldFit(const CtfFollower& row) const {
  const Heading& heading = m_reading.sections[static_cast<std::size_t>(row.section)].heading;
  const bool isNamed = heading.names(Column::latency) && heading.names(Column::error);
  const ColumnPlaces places = isNamed ? heading.places() : expectedPlaces(CtfKind::fitInfo);
  const RowFields fields(row.fields);
  const std::optional<float> latency = fields.number(places[Column::latency]);
  const std::optional<float> error = fields.number(places[Column::error]);
  if (!latency || !error) {
    return std::nullopt;
  }
  const ColumnUnit unit = heading.unitOf(Column::latency);
  ToldFit told;
  told.id = fields.wholeNumber(places[Column::trial]);
  told.fitTag = fields.wholeNumber(places[Column::sample]);
  told.takenLatency = static_cast<double>(*latency * 1000.0F);
  told.latency = unit == ColumnUnit::millisecond ? static_cast<double>(*latency) : told.takenLatency;
  told.fitError = static_cast<double>(*error);
  told.hasOtherColumns = isNamed && heading.contradicts(expectedPlaces(CtfKind::fitInfo));
  told.isLatencyUnitOpen = unit != ColumnUnit::second && unit != ColumnUnit::millisecond;
  return told;
}

std::optional<ToldFit> CtfFollowers::toldFit(std::size_t local) const {
  const CtfFollower* const row = fit(local);
  return row != nullptr ? toldFit(*row) : std::nullopt;
}

}  // namespace host
