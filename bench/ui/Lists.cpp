#include "bench/ui/Lists.h"

namespace {

constexpr int columns = 11;

CString fourDecimals(double value) {
  CString text;
  text.Format(_T("%.4f"), value);
  return text;
}

}  // namespace

ComparedList::ComparedList(DWORD style, CWnd* owner) {
  const DWORD kind = owner == nullptr ? WS_OVERLAPPEDWINDOW : WS_CHILD | WS_BORDER;
  const CRect place = owner == nullptr ? CRect(20, 600, 720, 800) : CRect(0, 0, 700, 200);
  CreateEx(0, WC_LISTVIEWW, _T("Compared"), LVS_REPORT | WS_VISIBLE | kind | style, place, owner, 0);
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

void ComparedList::lookLike(HWND list) {
  SetExtendedStyle(ListView_GetExtendedListViewStyle(list));
  ListView_SetImageList(m_hWnd, ListView_GetImageList(list, LVSIL_SMALL), LVSIL_SMALL);
  const int rows = ListView_GetCountPerPage(list);
  CRect place;
  GetWindowRect(&place);
  int height = place.Height();
  while (GetCountPerPage() > rows && height > 0) {
    SetWindowPos(nullptr, 0, 0, place.Width(), --height, SWP_NOMOVE | SWP_NOZORDER);
  }
}

void ComparedList::chooseRow(int row) {
  SetItemState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  SetSelectionMark(row);
  EnsureVisible(row, FALSE);
  UpdateWindow();
}

void ComparedList::setCount(int rows) {
  DeleteAllItems();
  SetItemCount(rows);
  UpdateWindow();
}

TextOwner::TextOwner() {
  CreateEx(0, AfxRegisterWndClass(0), _T("Compared"), WS_OVERLAPPEDWINDOW | WS_VISIBLE,
           CRect(20, 600, 740, 900), nullptr, 0);
}

TextOwner::~TextOwner() {
  DestroyWindow();
}

BOOL TextOwner::OnNotify(WPARAM /*id*/, LPARAM header, LRESULT* result) {
  auto& asked = *reinterpret_cast<NMLVDISPINFO*>(header);
  *result = 0;
  if (asked.hdr.code == LVN_GETDISPINFO && (asked.item.mask & LVIF_TEXT) != 0) {
    ::lstrcpyn(asked.item.pszText, _T("-123.4567"), asked.item.cchTextMax);
  }
  if (asked.hdr.code == LVN_GETDISPINFO && (asked.item.mask & LVIF_IMAGE) != 0) {
    asked.item.iImage = 0;
  }
  return TRUE;
}
