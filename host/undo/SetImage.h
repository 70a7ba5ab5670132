// A whole collection as plain values: what it holds, in which slots, and its set-wide members.
//
// Every slot of the table counts, also those behind the collection's count that an import left filled.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "host/dipoles/UnknownDipoles.h"
#include "host/undo/MemberImage.h"

namespace host {

struct SetImage {
  SetWideImage wide;
  // One entry for each slot that holds a dipole, ascending.
  std::vector<std::uint16_t> slots;
  std::vector<DipoleImage> dipoles;
  // Where the dipole stood in memory when the image was taken; null when it was not taken from a set. Only
  // ever compared, because the dipole may be gone; another one at its place does no harm, as values decide.
  std::vector<const CDipoleszq*> objects;

  // Memory in use, texts included.
  std::size_t bytes() const;
};

// By values, whichever objects hold them.
bool isSame(const SetImage& a, const SetImage& b);
// Likewise, without what windows note for themselves: list rows, selection, the current dipole.
bool isSameButForWindows(const SetImage& a, const SetImage& b);

// These two throw what an allocation throws, and change nothing then.
// Without `unknown` every value is known.
SetImage imageOf(const DipoleSet& set, const UnknownDipoles* unknown = nullptr);
// For each entry of an image the entry of another one for the same object, or -1.
std::vector<int> entriesFor(const SetImage& image, const SetImage& other);

// Brings a set to an image in two steps, so that it is never left half way: the first one gets all the memory
// that is needed, the second one cannot fail. A dipole that the set still has keeps its object; the others
// are made anew.
class SetRestoration {
 public:
  // `now`: the image of the set as it is. Throws what an allocation throws.
  SetRestoration(DipoleSet& set, const SetImage& now, const SetImage& target);

  // What will be unknown then, of the objects that will be there: for UnknownDipoles::hold behind carryOut,
  // to be asked for before it. Throws what an allocation throws.
  UnknownDipoles unknownIn(const SetImage& target) const;
  // Afterwards `target` names the set's objects: pass the image of the constructor.
  void carryOut(SetImage& target) noexcept;

 private:
  void bringToSlots(const std::vector<std::uint16_t>& targetSlots) noexcept;
  void emptyOtherSlots() noexcept;
  void place(SetImage& target) noexcept;

  static constexpr int none = -1;

  DipoleSet& m_set;
  std::vector<int> m_entries;  // of `now`, for each entry of the target
  std::vector<int> m_slotOf;   // where each entry of `now` stands
  std::vector<int> m_entryAt;  // the entry of `now` in each slot
  std::vector<std::unique_ptr<CDipoleszq>> m_made;
  std::vector<std::pair<CString*, CString>> m_texts;  // where each goes
};

}  // namespace host
