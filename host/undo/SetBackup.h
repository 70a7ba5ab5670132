// What a set was before an import, for going back when the import fails, without memory if need be.
#pragma once

#include <memory>
#include <vector>

#include "host/undo/SetImage.h"

namespace host {

class SetBackup {
 public:
  // Throws what an allocation throws.
  explicit SetBackup(DipoleSet& set);

  // Brings every member back, once. It undoes what an import does: new dipoles in any slots, other values of
  // those that were there, and other dipoles where the set had some behind its count.
  void restore() noexcept;

 private:
  void restoreSlot(int slot, std::size_t entry) noexcept;

  DipoleSet& m_set;
  SetImage m_image;
  std::vector<std::unique_ptr<CDipoleszq>>
      m_spare;  // for the last entries of the image, those behind the count
};

}  // namespace host
