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
  letGo(m_holders.get(), std::exchange(m_slots[slot], dipole.release()));
}

void DipoleTable::clear(int slot) {
  letGo(m_holders.get(), std::exchange(m_slots[slot], nullptr));
}

void DipoleTable::clearAll() {
  for (CDipoleszq*& dipole : m_slots) {
    if (dipole != nullptr) {
      letGo(m_holders.get(), std::exchange(dipole, nullptr));
    }
  }
}

void DipoleTable::move(int from, int to) {
  if (from != to) {
    letGo(m_holders.get(), std::exchange(m_slots[to], std::exchange(m_slots[from], nullptr)));
  }
}

DipoleTable::Hold::Hold(const DipoleTable& table, int slot) {
  if (table[slot] != nullptr) {
    ++table.holders().try_emplace(table[slot], 1).first->second;
    m_holders = table.m_holders;
    m_dipole = table[slot];
  }
}

DipoleTable::Hold::Hold(Hold&& other) noexcept {
  *this = std::move(other);
}

DipoleTable::Hold& DipoleTable::Hold::operator=(Hold&& other) noexcept {
  std::swap(m_holders, other.m_holders);
  std::swap(m_dipole, other.m_dipole);
  return *this;
}

DipoleTable::Hold::~Hold() {
  letGo(m_holders.get(), m_dipole);
}

DipoleTable::Holders& DipoleTable::holders() const {
  if (!m_holders) {
    m_holders = std::make_shared<Holders>();
  }
  return *m_holders;
}

void DipoleTable::share(const DipoleTable& other) {
  // Every entry first, which may run out of memory; then the counts, which cannot.
  Holders& holders = other.holders();
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

void DipoleTable::letGo(Holders* holders, CDipoleszq* dipole) {
  if (dipole == nullptr) {
    return;
  }
  if (holders != nullptr) {
    const auto entry = holders->find(dipole);
    if (entry != holders->end()) {
      if (--entry->second > 0) {
        return;
      }
      holders->erase(entry);
    }
  }
  const std::unique_ptr<CDipoleszq> last(dipole);
}
