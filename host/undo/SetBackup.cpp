#include "host/undo/SetBackup.h"

#include <algorithm>
#include <utility>

namespace host {

namespace {

// A text that is the same keeps its memory.
void putBack(CString& text, CString& before) {
  if (!isSameText(text, before)) {
    text = std::move(before);
  }
}

}  // namespace

SetBackup::SetBackup(DipoleSet& set) : m_set(set), m_image(imageOf(set)) {
  const auto behind = std::lower_bound(m_image.slots.begin(), m_image.slots.end(), set.m_totalDipoles);
  m_spare.resize(static_cast<std::size_t>(m_image.slots.end() - behind));
  for (std::unique_ptr<CDipoleszq>& dipole : m_spare) {
    dipole = std::make_unique<CDipoleszq>();
  }
}

void SetBackup::restore() noexcept {
  std::size_t entry = 0;
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    if (entry < m_image.slots.size() && m_image.slots[entry] == slot) {
      restoreSlot(slot, entry++);
    } else if (m_set.m_dipoles[slot] != nullptr) {
      m_set.m_dipoles.clear(slot);
    }
  }
  BitWriter writer{m_image.wide.numbers.data()};
  visitSetNumbers(m_set, writer);
  visitSetTexts(m_set,
                [before = m_image.wide.texts.begin()](CString& text) mutable { putBack(text, *before++); });
}

void SetBackup::restoreSlot(int slot, std::size_t entry) noexcept {
  const std::size_t firstSpare = m_image.slots.size() - m_spare.size();
  if (m_set.m_dipoles[slot] != m_image.objects[entry] && entry >= firstSpare) {
    m_set.m_dipoles.store(slot, std::move(m_spare[entry - firstSpare]));
  }
  CDipoleszq& dipole = *m_set.m_dipoles[slot];
  DipoleImage& image = m_image.dipoles[entry];
  BitWriter writer{image.numbers.data()};
  visitDipoleNumbers(dipole, writer);
  visitDipoleTexts(dipole,
                   [before = image.texts.begin()](CString& text) mutable { putBack(text, *before++); });
}

}  // namespace host
