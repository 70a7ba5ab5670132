#include "tests/collection/CollectionModel.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

bool same(double a, double b) {
  return a == b || (std::isnan(a) && std::isnan(b));
}

template <class Values, class Value>
bool sameTriple(const Values& values, const Value (&members)[3]) {
  return std::equal(std::begin(members), std::end(members), values.begin(),
                    [](Value a, Value b) { return same(static_cast<double>(a), static_cast<double>(b)); });
}

double sortKey(const ModelDipole& dipole, int key) {
  const double keys[] = {static_cast<double>(dipole.number),
                         dipole.latency,
                         dipole.location[0],
                         dipole.location[1],
                         dipole.location[2],
                         dipole.orientation[0],
                         dipole.orientation[1],
                         dipole.orientation[2],
                         dipole.fitError,
                         dipole.moment};
  return keys[key];
}

}  // namespace

bool ModelDipole::describesItsObject() const {
  const CDipoleszq& o = *object;
  const double mark = backedUp ? 1.0 : 0.0;
  return o.m_id == id && o.m_number == number && o.m_listItemId == listItemId && o.m_selected == selected &&
         o.m_color == color && sameTriple(colorF, o.m_colorF) && sameTriple(location, o.m_location) &&
         sameTriple(orientation, o.m_orientation) && same(o.m_moment, moment) &&
         same(o.m_fitError, fitError) && same(o.m_latency, latency) && o.m_fitTag == fitTag &&
         o.m_display == display && o.m_label == label && o.m_rawLocation.m_radius == mark &&
         o.m_rawOrientation.m_radius == mark && sameTriple(rawLocation, o.m_rawLocation.m_center) &&
         sameTriple(rawOrientation, o.m_rawOrientation.m_center);
}

CollectionModel::Dipole CollectionModel::named(int index) const {
  const int slot = index == -1 ? current : index;
  return slot >= 0 && slot < total ? slots[static_cast<std::size_t>(slot)] : nullptr;
}

int CollectionModel::add(Dipole dipole) {
  slots[static_cast<std::size_t>(total)] = std::move(dipole);
  current = total;
  return ++total;
}

// The rest moves down by one; both the slot it leaves and the one behind the old count end empty.
void CollectionModel::closeGap(int slot) {
  slots.erase(slots.begin() + slot);
  slots.insert(slots.begin() + total - 1, nullptr);
  slots[static_cast<std::size_t>(total)] = nullptr;
  --total;
  current = (std::min)(current, total - 1);
}

void CollectionModel::deleteCurrent() {
  if (current >= 0 && current < total) {
    closeGap(current);
  }
}

void CollectionModel::deleteAt(int index, int shift) {
  if (total < 1) {
    return;
  }
  const int slot = std::clamp(index, 0, total - 1);
  slots[static_cast<std::size_t>(slot)] = nullptr;
  if (shift != 0) {
    closeGap(slot);
  }
}

void CollectionModel::clean() {
  std::fill(slots.begin(), slots.end(), nullptr);
  total = 0;
  current = -1;
}

void CollectionModel::compact() {
  const auto end = slots.begin() + total;
  const auto kept = std::stable_partition(slots.begin(), end, [](const Dipole& d) { return d != nullptr; });
  total = static_cast<int>(kept - slots.begin());
  if (current >= total) {
    current = total - 1;
  }
}

void CollectionModel::reOrder() {
  compact();
  for (int slot = 0; slot < total; ++slot) {
    slots[static_cast<std::size_t>(slot)]->number = slot + 1;
  }
}

void CollectionModel::reSort() {
  compact();
  if (current <= 0) {
    current = 0;
  }
}

CollectionModel::Dipole CollectionModel::step(int by) {
  if (total < 1) {
    return nullptr;
  }
  current += by;
  if (current < 0 || current >= total) {
    current = by > 0 ? 0 : total - 1;
  }
  return slots[static_cast<std::size_t>(current)];
}

void CollectionModel::select(int index) {
  if (total >= 1) {
    current = index >= total ? total - 1 : index < 0 ? 0 : index;
  }
}

void CollectionModel::backUp(int from) {
  for (int slot = from; slot < total; ++slot) {
    const Dipole& dipole = slots[static_cast<std::size_t>(slot)];
    if (dipole != nullptr && !dipole->backedUp) {
      dipole->backedUp = true;
      dipole->rawLocation = dipole->location;
      dipole->rawOrientation = dipole->orientation;
    }
  }
}

void CollectionModel::sort(int key) {
  for (int i = 0; i < total; ++i) {
    Dipole& first = slots[static_cast<std::size_t>(i)];
    if (first == nullptr) {
      continue;
    }
    int choice = i;
    double minimum = sortKey(*first, key);
    minimum = key == 0 ? minimum : static_cast<double>(static_cast<float>(minimum));
    for (int j = i; j < total; ++j) {
      const Dipole& other = slots[static_cast<std::size_t>(j)];
      if (other != nullptr && sortKey(*other, key) < minimum) {
        choice = j;
        minimum = sortKey(*other, key);
        minimum = key == 0 ? minimum : static_cast<double>(static_cast<float>(minimum));
      }
    }
    std::swap(first, slots[static_cast<std::size_t>(choice)]);
  }
}

float CollectionModel::range() const {
  std::vector<const ModelDipole*> held;
  for (int slot = 0; slot < total; ++slot) {
    if (const Dipole& dipole = slots[static_cast<std::size_t>(slot)]) {
      held.push_back(dipole.get());
    }
  }
  if (held.empty()) {
    return 0.0F;
  }
  float low[3];
  float high[3];
  for (std::size_t axis = 0; axis < 3; ++axis) {
    low[axis] = high[axis] = static_cast<float>(held[0]->location[axis]);
  }
  for (const ModelDipole* dipole : held) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double deciding = dipole->location[axis == 1 ? 0 : axis];
      const auto value = static_cast<float>(dipole->location[axis]);
      if (dipole != held[0]) {
        high[axis] = deciding > static_cast<double>(high[axis]) ? value : high[axis];
        low[axis] = deciding < static_cast<double>(low[axis]) ? value : low[axis];
      }
    }
  }
  float largest = 0.0F;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    largest = (std::max)({largest, std::fabs(low[axis]), std::fabs(high[axis])});
  }
  return largest;
}
