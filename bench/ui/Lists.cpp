#include "bench/ui/Lists.h"

namespace {

constexpr int columns = 11;

CString fourDecimals(double value) {
  CString text;
  text.Format(_T("%.4f"), value);
  return text;
}

}  // namespace

ComparedList::ComparedList(DWORD style) {
  CreateEx(0, WC_LISTVIEWW, _T("Compared"), LVS_REPORT | WS_OVERLAPPEDWINDOW | WS_VISIBLE | style,
           {20, 600, 720, 800}, nullptr, 0);
  for (int column = 0; column < columns; ++column) {
    InsertColumn(column, _T("Column"), LVCFMT_LEFT, 80);
  }
}

ComparedList::~ComparedList() {
  DestroyWindow();
}

template <typename Insert>
void ComparedList::fill(const CDipoleFacezq& face, Insert insertRow) {
  SetRedraw(FALSE);
  DeleteAllItems();
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    insertRow(slot, *face.getDipole(slot));
  }
  SetRedraw(TRUE);
  UpdateWindow();
}

void ComparedList::fillWithTexts(const CDipoleFacezq& face) {
  fill(face, [this](int row, const CDipoleszq& dipole) {
    CString index;
    index.Format(_T("%d"), dipole.m_number);
    InsertItem(row, index, dipole.m_show != 0 ? 0 : 1);
    SetItemText(row, 1, fourDecimals(dipole.m_latency));
    for (int axis = 0; axis < 3; ++axis) {
      SetItemText(row, 2 + axis, fourDecimals(dipole.m_location[axis]));
      SetItemText(row, 5 + axis, fourDecimals(dipole.m_orientation[axis]));
    }
    SetItemText(row, 8, fourDecimals(dipole.m_fitError));
    SetItemText(row, 9, fourDecimals(dipole.m_moment));
    SetItemText(row, 10, dipole.m_label);
  });
}

void ComparedList::fillWithCallbacks(const CDipoleFacezq& face) {
  fill(face, [this](int row, const CDipoleszq& /*dipole*/) {
    InsertItem(row, LPSTR_TEXTCALLBACKW, I_IMAGECALLBACK);
    for (int column = 1; column < columns; ++column) {
      SetItemText(row, column, LPSTR_TEXTCALLBACKW);
    }
  });
}

void ComparedList::setCount(int rows) {
  DeleteAllItems();
  SetItemCount(rows);
  UpdateWindow();
}
