#include "host/session/CarriedRepair.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include "host/audit/AuditPass.h"
#include "host/undo/MemberImage.h"

namespace host {

namespace {

// Where the numbers of a thing stand, each element of an array by itself, and its texts.
struct MemberPlaces {
  struct Number {
    std::byte* at;
    std::size_t width;
  };

  template <typename Value>
  void operator()(Value& value) {
    constexpr std::size_t width = sizeof(std::remove_all_extents_t<Value>);
    auto* const first = reinterpret_cast<std::byte*>(&value);
    for (std::size_t at = 0; at < sizeof value; at += width) {
      numbers.push_back({first + at, width});
    }
  }
  void operator()(CString& text) { texts.push_back(&text); }

  std::vector<Number> numbers;
  std::vector<CString*> texts;
};

MemberPlaces placesOf(CDipoleszq& dipole) {
  MemberPlaces places;
  visitDipoleNumbers(dipole, places);
  visitDipoleTexts(dipole, [&](CString& text) { places.texts.push_back(&text); });
  return places;
}

MemberPlaces placesOf(CDipoleFace9File& set) {
  MemberPlaces places;
  visitSetNumbers(set, places);
  visitSetTexts(set, [&](CString& text) { places.texts.push_back(&text); });
  return places;
}

bool isSame(const MemberPlaces::Number& a, const MemberPlaces::Number& b) {
  return std::memcmp(a.at, b.at, a.width) == 0;
}

// Hands each member that a repair changed to `number` or `text`: now, before and after.
template <typename Number, typename Text>
void visitChanges(const MemberPlaces& now, const MemberPlaces& before, const MemberPlaces& after,
                  Number number, Text text) {
  for (std::size_t i = 0; i < now.numbers.size(); ++i) {
    if (!isSame(before.numbers[i], after.numbers[i])) {
      number(now.numbers[i], before.numbers[i], after.numbers[i]);
    }
  }
  for (std::size_t i = 0; i < now.texts.size(); ++i) {
    if (!isSameText(*before.texts[i], *after.texts[i])) {
      text(*now.texts[i], *before.texts[i], *after.texts[i]);
    }
  }
}

// Numbers that come of the place in the set, which is another one here.
bool isOfPlace(const MemberPlaces::Number& number, const CDipoleszq& dipole) {
  return number.at == reinterpret_cast<const std::byte*>(&dipole.m_number);
}
bool isOfPlace(const MemberPlaces::Number& number, const CDipoleFace9File& set) {
  const void* const members[] = {&set.m_currentDipole, &set.m_totalDipoles, &set.m_importFirst,
                                 &set.m_importEnd};
  return std::find(std::begin(members), std::end(members), static_cast<const void*>(number.at)) !=
         std::end(members);
}

bool fitsDipole(CDipoleszq& now, CDipoleszq& before, CDipoleszq& after) {
  bool fits = true;
  visitChanges(
      placesOf(now), placesOf(before), placesOf(after),
      [&](const auto& place, const auto& was, const auto&) {
        fits = fits && (isOfPlace(place, now) || isSame(place, was));
      },
      [&](const CString& text, const CString& was, const CString&) { fits = fits && isSameText(text, was); });
  return fits;
}

// What is not as it was before stays.
template <typename Thing>
void carry(Thing& now, Thing& before, Thing& after) {
  visitChanges(
      placesOf(now), placesOf(before), placesOf(after),
      [&](const auto& place, const auto& was, const auto& is) {
        if (!isOfPlace(place, now) && isSame(place, was)) {
          std::memcpy(place.at, is.at, place.width);
        }
      },
      [](CString& text, const CString& was, const CString& is) {
        if (isSameText(text, was)) {
          text = is;
        }
      });
}

// `late` have the slots behind which they come. Numbers that are those of the slots stay so; else dipoles
// that came get numbers that nobody has. The current dipole stays the current one.
void insertLate(CDipoleFace9File& set, std::vector<LateDipole>&& late) {
  std::stable_sort(late.begin(), late.end(),
                   [](const LateDipole& a, const LateDipole& b) { return a.slot < b.slot; });
  int current = set.m_currentDipole;
  std::vector<bool> areLate(static_cast<std::size_t>(set.m_totalDipoles) + late.size());
  for (std::size_t i = 0; i < late.size(); ++i) {
    current += late[i].slot < set.m_currentDipole ? 1 : 0;
    late[i].slot += 1 + static_cast<int>(i);
    areLate[static_cast<std::size_t>(late[i].slot)] = true;
  }
  std::vector<int> numbers;
  int highest = 0;
  bool isInOrder = true;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* const dipole = set.m_dipoles[slot]) {
      numbers.push_back(dipole->m_number);
      highest = (std::max)(highest, dipole->m_number);
      isInOrder = isInOrder && dipole->m_number == slot + 1;
    }
  }
  const bool wasEmpty = numbers.empty();
  insertDipoles(set, std::move(late));
  set.m_currentDipole = wasEmpty ? set.m_currentDipole : current;
  auto number = numbers.begin();
  for (int slot = 0; slot < set.m_totalDipoles && !isInOrder; ++slot) {
    if (CDipoleszq* const dipole = set.m_dipoles[slot]) {
      dipole->m_number = areLate[static_cast<std::size_t>(slot)] ? ++highest : *number++;
    }
  }
}

}  // namespace

int CarriedRepair::slotNow(std::size_t slotAfter) const {
  const int origin = origins[slotAfter];
  return origin != none ? slots[static_cast<std::size_t>(origin)] : none;
}

// Dipoles that come would stand beside others that have been moved.
bool CarriedRepair::fits(const CDipoleFace9File& set) const {
  const bool hasLate = std::find(origins.begin(), origins.end(), none) != origins.end();
  for (std::size_t slot = 0; slot < origins.size(); ++slot) {
    const int now = slotNow(slot);
    if (now == none) {
      continue;
    }
    CDipoleszq& dipole = *set.m_dipoles[now];
    CDipoleszq& own = *before.m_dipoles[origins[slot]];
    if ((hasLate && !isSame(placeOf(dipole), placeOf(own))) ||
        !fitsDipole(dipole, own, *after.m_dipoles[static_cast<int>(slot)])) {
      return false;
    }
  }
  return true;
}

std::vector<const CDipoleszq*> CarriedRepair::carryOut(CDipoleFace9File& set) const {
  std::vector<const CDipoleszq*> dipoles;
  std::vector<LateDipole> late;
  const auto first = std::find_if(slots.begin(), slots.end(), [](int slot) { return slot != none; });
  int behind = (first != slots.end() ? *first : set.m_totalDipoles) - 1;
  for (std::size_t slot = 0; slot < origins.size(); ++slot) {
    CDipoleszq& repaired = *after.m_dipoles[static_cast<int>(slot)];
    const int now = slotNow(slot);
    if (origins[slot] == none) {
      late.push_back({behind, std::make_unique<CDipoleszq>(repaired)});
      dipoles.push_back(late.back().dipole.get());
    } else if (now != none) {
      carry(*set.m_dipoles[now], *before.m_dipoles[origins[slot]], repaired);
      dipoles.push_back(set.m_dipoles[now]);
      behind = now;
    } else {
      dipoles.push_back(nullptr);
    }
  }
  carry(set, before, after);
  insertLate(set, std::move(late));
  return dipoles;
}

}  // namespace host
