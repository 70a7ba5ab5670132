// What one state of a collection has that another has not: enough to come from the other to the one.
//
// It holds values of the one state alone, and only those that differ: for each number of a dipole the entries
// that differ and their values, likewise texts; where every dipole of the one comes from in the other, if any
// has moved, come or gone; and the set-wide members, if any differs. A dipole that the other has not is told
// by what differs from a new dipole.
#pragma once

#include <memory>
#include <vector>

#include "host/undo/PackedColumn.h"
#include "host/undo/PackedTexts.h"
#include "host/undo/SetImage.h"

namespace host {

class SetDifference {
 public:
  // Both throw what an allocation throws.
  SetDifference(const SetImage& kept, const SetImage& other);
  SetImage appliedTo(const SetImage& other) const;

  // Memory in use.
  std::size_t bytes() const;

 private:
  using Shared = std::shared_ptr<const PackedColumn>;

  struct Numbers {
    std::size_t column;
    Shared entries;
    Shared values;
  };
  struct Texts {
    std::size_t text;
    Shared entries;
    PackedTexts values;
  };

  Shared share(PackedColumn column);
  void noteSetWide(const SetImage& kept, const SetImage& other);
  void noteOrder(const SetImage& kept, const SetImage& other, const std::vector<int>& sources);
  void noteDipoles(const SetImage& kept, const SetImage& other, const std::vector<int>& sources);
  SetImage orderedFrom(const SetImage& other) const;

  std::unique_ptr<const SetWideImage> m_wide;
  Shared m_slots;    // null: all stay where they are
  Shared m_sources;  // the entry of the other state for each slot
  std::vector<Numbers> m_numbers;
  std::vector<Texts> m_texts;
  std::vector<Shared> m_columns;  // each one once: several numbers often differ in the same entries, or alike
};

}  // namespace host
