#include "host/undo/SetImage.h"

#include <algorithm>
#include <cstddef>
#include <functional>

namespace host {

namespace {

// An empty slot of the table is left out, wherever it is.
template <typename Visit>
void visitFilledSlots(const DipoleSet& set, Visit visit) {
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    if (const CDipoleszq* dipole = set.m_dipoles[slot]) {
      visit(slot, *dipole);
    }
  }
}

template <std::size_t count>
std::size_t textBytes(const std::array<CString, count>& texts) {
  std::size_t bytes = 0;
  for (const CString& text : texts) {
    if (!text.IsEmpty()) {
      bytes += (static_cast<std::size_t>(text.GetLength()) + 1) * sizeof(TCHAR);
    }
  }
  return bytes;
}

// A copy of each text that differs, for its member.
template <std::size_t count>
void planTexts(const std::array<CString, count>& now, const std::array<CString, count>& wanted,
               const std::array<CString*, count>& places, std::vector<std::pair<CString*, CString>>& plan) {
  for (std::size_t i = 0; i < count; ++i) {
    if (!isSameText(now[i], wanted[i])) {
      plan.emplace_back(places[i], wanted[i]);
    }
  }
}

template <std::size_t count, typename Collect>
std::array<CString*, count> placesOf(Collect collect) {
  std::array<CString*, count> places{};
  collect([place = places.begin()](CString& text) mutable { *place++ = &text; });
  return places;
}

std::array<CString*, 3> textsOf(CDipoleszq& dipole) {
  return placesOf<3>([&](auto note) { visitDipoleTexts(dipole, note); });
}

std::array<CString*, std::tuple_size_v<decltype(SetWideImage::texts)>> textsOf(DipoleSet& set) {
  return placesOf<std::tuple_size_v<decltype(SetWideImage::texts)>>(
      [&](auto note) { visitSetTexts(set, note); });
}

// Whether the images of two dipoles, or of two sets' members, agree from a byte on and in their texts.
template <typename Image>
bool areSameBehind(const Image& a, const Image& b, std::size_t first) {
  return std::memcmp(a.numbers.data() + first, b.numbers.data() + first, a.numbers.size() - first) == 0 &&
         areSameTexts(a.texts, b.texts);
}

// By values, whichever objects hold them.
bool areSame(const SetImage& a, const SetImage& b, std::size_t firstOfSet, std::size_t firstOfDipole) {
  return a.slots == b.slots && areSameBehind(a.wide, b.wide, firstOfSet) &&
         std::equal(a.dipoles.begin(), a.dipoles.end(), b.dipoles.begin(),
                    [firstOfDipole](const DipoleImage& one, const DipoleImage& other) {
                      return areSameBehind(one, other, firstOfDipole);
                    });
}

void writeNumbers(const DipoleImage& image, CDipoleszq& dipole) {
  BitWriter writer{image.numbers.data()};
  visitDipoleNumbers(dipole, writer);
}

}  // namespace

std::size_t SetImage::bytes() const {
  std::size_t bytes = sizeof *this + textBytes(wide.texts) + slots.capacity() * sizeof slots[0] +
                      dipoles.capacity() * sizeof dipoles[0] + objects.capacity() * sizeof(void*);
  for (const DipoleImage& dipole : dipoles) {
    bytes += textBytes(dipole.texts);
  }
  return bytes;
}

SetImage imageOf(const DipoleSet& set, const UnknownDipoles* unknown) {
  SetImage image;
  BitReader reader{image.wide.numbers.data()};
  visitSetNumbers(set, reader);
  visitSetTexts(set, [text = image.wide.texts.begin()](const CString& member) mutable { *text++ = member; });
  std::size_t count = 0;
  visitFilledSlots(set, [&](int /*slot*/, const CDipoleszq& /*dipole*/) { ++count; });
  image.slots.reserve(count);
  image.objects.reserve(count);
  image.dipoles.resize(count);
  visitFilledSlots(set, [&](int slot, const CDipoleszq& dipole) {
    readDipole(dipole, unknown == nullptr ? std::uint8_t{0} : unknown->of(dipole),
               image.dipoles[image.slots.size()]);
    image.slots.push_back(static_cast<std::uint16_t>(slot));
    image.objects.push_back(&dipole);
  });
  return image;
}

bool isSame(const SetImage& a, const SetImage& b) {
  return areSame(a, b, 0, 0);
}

bool isSameButForWindows(const SetImage& a, const SetImage& b) {
  return areSame(a, b, currentDipoleBytes, windowBytes);
}

std::vector<int> entriesFor(const SetImage& image, const SetImage& other) {
  std::vector<int> entries(image.objects.size(), -1);
  std::vector<std::pair<const CDipoleszq*, int>> byObject;  // only when some have moved
  const auto find = [&](const CDipoleszq* object) {
    if (byObject.empty()) {
      byObject.reserve(other.objects.size());
      for (const CDipoleszq* known : other.objects) {
        byObject.emplace_back(known, static_cast<int>(byObject.size()));
      }
      std::sort(byObject.begin(), byObject.end(), [](const auto& a, const auto& b) {
        return std::less<const CDipoleszq*>()(a.first, b.first);
      });
    }
    const auto at = std::lower_bound(byObject.begin(), byObject.end(), object,
                                     [](const auto& known, const CDipoleszq* wanted) {
                                       return std::less<const CDipoleszq*>()(known.first, wanted);
                                     });
    return at != byObject.end() && at->first == object ? at->second : -1;
  };
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const CDipoleszq* object = image.objects[i];
    if (object == nullptr) {
      continue;
    }
    const bool isThere = i < other.objects.size() && other.objects[i] == object;
    entries[i] = isThere ? static_cast<int>(i) : find(object);
  }
  return entries;
}

SetRestoration::SetRestoration(DipoleSet& set, const SetImage& now, const SetImage& target)
    : m_set(set),
      m_entries(entriesFor(target, now)),
      m_slotOf(now.slots.begin(), now.slots.end()),
      m_entryAt(DipoleTable::capacity, none),
      m_made(target.slots.size()) {
  for (std::size_t entry = 0; entry < now.slots.size(); ++entry) {
    m_entryAt[now.slots[entry]] = static_cast<int>(entry);
  }
  planTexts(now.wide.texts, target.wide.texts, textsOf(set), m_texts);
  for (std::size_t i = 0; i < target.slots.size(); ++i) {
    if (m_entries[i] == none) {
      m_made[i] = std::make_unique<CDipoleszq>();
      const std::array<CString*, 3> places = textsOf(*m_made[i]);
      for (std::size_t text = 0; text < places.size(); ++text) {
        *places[text] = target.dipoles[i].texts[text];
      }
      continue;
    }
    const auto entry = static_cast<std::size_t>(m_entries[i]);
    planTexts(now.dipoles[entry].texts, target.dipoles[i].texts, textsOf(*set.m_dipoles[now.slots[entry]]),
              m_texts);
  }
}

UnknownDipoles SetRestoration::unknownIn(const SetImage& target) const {
  UnknownDipoles unknown;
  if (std::none_of(target.dipoles.begin(), target.dipoles.end(),
                   [](const DipoleImage& dipole) { return unknownOf(dipole) != 0; })) {
    return unknown;
  }
  for (std::size_t i = 0; i < target.dipoles.size(); ++i) {
    const auto entry = static_cast<std::size_t>(m_entries[i]);
    const CDipoleszq* const dipole = m_made[i] ? m_made[i].get() : m_set.m_dipoles[m_slotOf[entry]];
    unknown.expect(dipole, unknownOf(target.dipoles[i]), target.dipoles[i].texts[0]);
  }
  return unknown;
}

void SetRestoration::carryOut(SetImage& target) noexcept {
  bringToSlots(target.slots);
  emptyOtherSlots();
  place(target);
  for (auto& [text, wanted] : m_texts) {
    *text = std::move(wanted);
  }
  BitWriter writer{target.wide.numbers.data()};
  visitSetNumbers(m_set, writer);
}

// By exchanges, so that no dipole leaves the table on its way. A slot that has got its dipole is not touched
// again: later exchanges are between a slot of their own and one that holds a dipole still to be moved.
void SetRestoration::bringToSlots(const std::vector<std::uint16_t>& targetSlots) noexcept {
  for (std::size_t i = 0; i < targetSlots.size(); ++i) {
    if (m_entries[i] == none) {
      continue;
    }
    int& from = m_slotOf[static_cast<std::size_t>(m_entries[i])];
    const int to = targetSlots[i];
    if (from == to) {
      continue;
    }
    m_set.m_dipoles.swap(from, to);
    std::swap(m_entryAt[static_cast<std::size_t>(from)], m_entryAt[static_cast<std::size_t>(to)]);
    const int displaced = m_entryAt[static_cast<std::size_t>(from)];
    if (displaced != none) {
      m_slotOf[static_cast<std::size_t>(displaced)] = from;
    }
    from = to;
  }
}

void SetRestoration::emptyOtherSlots() noexcept {
  for (const int entry : m_entries) {
    if (entry != none) {
      m_entryAt[static_cast<std::size_t>(m_slotOf[static_cast<std::size_t>(entry)])] = none;
    }
  }
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    if (m_entryAt[static_cast<std::size_t>(slot)] != none) {
      m_set.m_dipoles.clear(slot);
    }
  }
}

void SetRestoration::place(SetImage& target) noexcept {
  for (std::size_t i = 0; i < target.slots.size(); ++i) {
    const int slot = target.slots[i];
    if (m_made[i]) {
      m_set.m_dipoles.store(slot, std::move(m_made[i]));
    }
    writeNumbers(target.dipoles[i], *m_set.m_dipoles[slot]);
    target.objects[i] = m_set.m_dipoles[slot];
  }
}

}  // namespace host
