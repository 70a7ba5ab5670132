#include "collection/DipoleTable.h"

#include <algorithm>
#include <iterator>
#include <utility>

DipoleTable::DipoleTable(const DipoleTable& other) {
  share(other);
}

DipoleTable& DipoleTable::operator=(const DipoleTable& other) {
  if (this != &other) {
    clearAll();
    share(other);
  }
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
  for (int slot = 0; slot < capacity; ++slot) {
    clear(slot);
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
  auto& holders = *other.m_holders;
  // Room for every entry first: from here on nothing can fail and leave a dipole half shared.
  holders.reserve(holders.size() + capacity);
  for (CDipoleszq* dipole : other.m_slots) {
    if (dipole != nullptr) {
      ++holders.try_emplace(dipole, 1).first->second;
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
      if (--entry->second == 1) {
        m_holders->erase(entry);
      }
      return;
    }
  }
  const std::unique_ptr<CDipoleszq> last(dipole);
}
