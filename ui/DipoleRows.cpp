#include "ui/DipoleRows.h"

#include <iterator>

DipoleRows::Row::Row(const CDipoleszq& source)
    : dipole(&source),
      number(source.m_number),
      shown(source.m_show != 0),
      values{source.m_latency,        source.m_location[0],    source.m_location[1],
             source.m_location[2],    source.m_orientation[0], source.m_orientation[1],
             source.m_orientation[2], source.m_fitError,       source.m_moment},
      label(source.m_label) {}

LPCTSTR DipoleRows::heading(int column) {
  static constexpr LPCTSTR headings[] = {_T("Index"),          _T("Latency(ms)"),    _T("Position X(mm)"),
                                         _T("Position Y(mm)"), _T("Position Z(mm)"), _T("Orientation X"),
                                         _T("Orientation Y"),  _T("Orientation Z"),  _T("Fit Error"),
                                         _T("Moment"),         _T("Label")};
  static_assert(std::size(headings) == columns);
  return headings[column];
}

DipoleRows::DipoleRows(const CDipoleFace& face) {
  m_rows.reserve(face.getTotalDipoles());
  for (int slot = 0; slot < face.m_totalDipoles && face.getDipole(slot) != nullptr; ++slot) {
    m_rows.emplace_back(*face.getDipole(slot));
  }
}

void DipoleRows::giveItemIds(CDipoleFace& face) const {
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    face.setDipoleListItemID(slot, slot < count() ? slot : -1);
  }
}

bool DipoleRows::isOf(int row, const CDipoleszq* dipole) const {
  return has(row) && m_rows[static_cast<std::size_t>(row)].dipole == dipole;
}

CString DipoleRows::text(int row, int column) const {
  const Row& shown = m_rows[static_cast<std::size_t>(row)];
  CString cell;
  if (column == 0) {
    cell.Format(_T("%d"), shown.number);
  } else if (column == columns - 1) {
    cell = shown.label;
  } else {
    cell.Format(_T("%.4f"), shown.values[column - 1]);
  }
  return cell;
}

int DipoleRows::image(int row) const {
  return m_rows[static_cast<std::size_t>(row)].shown ? shownImage : hiddenImage;
}

int DipoleRows::find(const CString& beginning, bool whole, int start) const {
  for (int step = 0; step < count(); ++step) {
    const int row = (start + step) % count();
    const CString number = text(row, 0);
    if ((whole ? number : number.Left(beginning.GetLength())) == beginning) {
      return row;
    }
  }
  return -1;
}
