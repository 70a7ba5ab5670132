#include "host/panes/GreySlice.h"

namespace host {

bool GreySlice::isSampled(const Head& head, const SampleGrid& grid) const {
  return m_key && m_key->volume == head.volume && m_key->frame == head.frame && m_key->grid == grid;
}

const Image& GreySlice::picture(const Head& head, const SampleGrid& grid, const GreyWindow& window) {
  const bool isNew = !isSampled(head, grid);
  if (isNew) {
    m_key.reset();
    m_values = sampleSlice(*head.volume, head.frame, grid);
  }
  if (isNew || m_window != window) {
    m_picture = greyPicture(m_values, grid.columns, grid.rows, window);
    m_window = window;
  }
  m_key = Key{head.volume, head.frame, grid};
  return m_picture;
}

}  // namespace host
