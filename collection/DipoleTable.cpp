#include "collection/DipoleTable.h"

#include <algorithm>
#include <iterator>
#include <utility>

DipoleTable::DipoleTable(const DipoleTable& other) {
  share(other);
}

DipoleTable& DipoleTable::operator=(DipoleTable&& other) noexcept {
  std::swap(m_slots, other.m_slots);
  std::swap(m_holders, other.m_holders);
  return *this;
}

DipoleTable::~DipoleTable() {
  clearAll();
}

void DipoleTable::store(int slot, std::unique_ptr<CDipoleszq> dipole) {
  letGo(std::exchange(m_slots[slot], dipole.release()));
}

void DipoleTable::clear(int slot) {
  letGo(std::exchange(m_slots[slot], nullptr));
}

void DipoleTable::clearAll() {
  for (CDipoleszq*& dipole : m_slots) {
    if (dipole != nullptr) {
      letGo(std::exchange(dipole, nullptr));
    }
  }
}

void DipoleTable::move(int from, int to) {
  if (from != to) {
    letGo(std::exchange(m_slots[to], std::exchange(m_slots[from], nullptr)));
  }
}

void DipoleTable::share(const DipoleTable& other) {
  if (!other.m_holders) {
    other.m_holders = std::make_shared<Holders>();
  }
  // Every entry first, which may run out of memory; then the counts, which cannot.
  Holders& holders = *other.m_holders;
  for (const CDipoleszq* dipole : other.m_slots) {
    if (dipole != nullptr) {
      holders.try_emplace(dipole, 1);
    }
  }
  for (const CDipoleszq* dipole : other.m_slots) {
    if (dipole != nullptr) {
      ++holders.find(dipole)->second;
    }
  }
  std::copy(std::begin(other.m_slots), std::end(other.m_slots), m_slots);
  m_holders = other.m_holders;
}

void DipoleTable::letGo(CDipoleszq* dipole) {
  if (dipole == nullptr) {
    return;
  }
  if (m_holders) {
    const auto entry = m_holders->find(dipole);
    if (entry != m_holders->end()) {
      if (--entry->second > 0) {
        return;
      }
      m_holders->erase(entry);
    }
  }
  const std::unique_ptr<CDipoleszq> last(dipole);
}
