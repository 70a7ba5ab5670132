// The fixed table of dipoles inside a collection: 30000 slots, each empty or holding one dipole.
//
// The table owns what its slots hold. A copy of a table holds the same dipole objects: tables that share
// dipoles count together how many of them hold each one, and a dipole is destroyed when the last table lets
// it go. So tables may be destroyed in any order, and none sees a dipole vanish that it still holds.
#pragma once

#include <memory>
#include <unordered_map>
#include <utility>

#include "record/Dipoleszq.h"

class AFX_EXT_CLASS DipoleTable {
  using Holders = std::unordered_map<const CDipoleszq*, int>;

 public:
  static constexpr int capacity = 30000;

  DipoleTable() = default;
  DipoleTable(const DipoleTable& other);
  DipoleTable& operator=(DipoleTable&& other) noexcept;  // exchanges what the two hold
  ~DipoleTable();

  // The dipole of a slot, null when it is empty. The slot must be 0 .. capacity-1.
  CDipoleszq* operator[](int slot) const { return m_slots[slot]; }

  // Puts a dipole into a slot and lets whatever was there go.
  void store(int slot, std::unique_ptr<CDipoleszq> dipole);

  // Empties a slot.
  void clear(int slot);
  void clearAll();

  // Moves what a slot holds into another one, lets go of what was there, and empties the first.
  void move(int from, int to);

  // Exchanges what two slots hold.
  void swap(int first, int second) { std::swap(m_slots[first], m_slots[second]); }

  // Holds one dipole as a table does, for somebody who has to know it again: as long as it is held, no other
  // one can have its address.
  class AFX_EXT_CLASS Hold {  // the mark of the table does not reach it
   public:
    Hold() = default;  // none
    // What a slot holds, which may be nothing. Memory may run out.
    Hold(const DipoleTable& table, int slot);
    Hold(Hold&& other) noexcept;
    Hold& operator=(Hold&& other) noexcept;
    ~Hold();

    const CDipoleszq* get() const { return m_dipole; }

   private:
    std::shared_ptr<Holders> m_holders;
    CDipoleszq* m_dipole = nullptr;
  };

 private:
  Holders& holders() const;
  void share(const DipoleTable& other);
  static void letGo(Holders* holders, CDipoleszq* dipole);

  CDipoleszq* m_slots[capacity] = {};
  // How many hold a dipole; one that it does not know is held by one table. Null as long as nobody shared
  // anything with this table.
  mutable std::shared_ptr<Holders> m_holders;
};
