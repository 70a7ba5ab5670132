#include "platform/windows/ListCtrl.h"

#include <vector>

namespace {

LPTSTR unchanged(LPCTSTR text) {
  return const_cast<LPTSTR>(text);  // the messages that take it do not write into it
}

// A position is a row's number plus 1: the null pointer is behind the end.
POSITION positionOf(int row) {
  return reinterpret_cast<POSITION>(static_cast<INT_PTR>(row) + 1);
}

}  // namespace

int CListCtrl::InsertColumn(int column, const LVCOLUMN* description) {
  return number(LVM_INSERTCOLUMNW, index(column), reinterpret_cast<LPARAM>(description));
}

int CListCtrl::InsertColumn(int column, LPCTSTR heading, int format, int width, int subItem) {
  LVCOLUMN description = {};
  description.mask = LVCF_TEXT | LVCF_FMT;
  description.pszText = unchanged(heading);
  description.fmt = format;
  if (width != -1) {
    description.mask |= LVCF_WIDTH;
    description.cx = width;
  }
  if (subItem != -1) {
    description.mask |= LVCF_SUBITEM;
    description.iSubItem = subItem;
  }
  return InsertColumn(column, &description);
}

BOOL CListCtrl::GetColumn(int column, LVCOLUMN* description) const {
  return flag(LVM_GETCOLUMNW, index(column), reinterpret_cast<LPARAM>(description));
}

int CListCtrl::InsertItem(const LVITEM* item) {
  return number(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(item));
}

int CListCtrl::InsertItem(int row, LPCTSTR text) {
  LVITEM item = {};
  item.mask = LVIF_TEXT;
  item.iItem = row;
  item.pszText = unchanged(text);
  return InsertItem(&item);
}

int CListCtrl::InsertItem(int row, LPCTSTR text, int image) {
  LVITEM item = {};
  item.mask = LVIF_TEXT | LVIF_IMAGE;
  item.iItem = row;
  item.pszText = unchanged(text);
  item.iImage = image;
  return InsertItem(&item);
}

BOOL CListCtrl::SetItemText(int row, int subItem, LPCTSTR text) {
  LVITEM item = {};
  item.iSubItem = subItem;
  item.pszText = unchanged(text);
  return flag(LVM_SETITEMTEXTW, index(row), reinterpret_cast<LPARAM>(&item));
}

int CListCtrl::GetItemText(int row, int subItem, LPTSTR text, int size) const {
  LVITEM item = {};
  item.iSubItem = subItem;
  item.pszText = text;
  item.cchTextMax = size;
  return number(LVM_GETITEMTEXTW, index(row), reinterpret_cast<LPARAM>(&item));
}

CString CListCtrl::GetItemText(int row, int subItem) const {
  std::vector<TCHAR> text(128);
  for (;;) {
    const int size = static_cast<int>(text.size());
    const int length = GetItemText(row, subItem, text.data(), size);
    if (length < size - 1) {
      return CString(text.data(), length);
    }
    text.resize(text.size() * 2);  // it may have been cut
  }
}

BOOL CListCtrl::SetItemData(int row, DWORD_PTR data) {
  LVITEM item = {};
  item.mask = LVIF_PARAM;
  item.iItem = row;
  item.lParam = static_cast<LPARAM>(data);
  return SetItem(&item);
}

DWORD_PTR CListCtrl::GetItemData(int row) const {
  LVITEM item = {};
  item.mask = LVIF_PARAM;
  item.iItem = row;
  GetItem(&item);
  return static_cast<DWORD_PTR>(item.lParam);
}

BOOL CListCtrl::SetItemState(int row, UINT state, UINT mask) {
  LVITEM item = {};
  item.state = state;
  item.stateMask = mask;
  return SetItemState(row, &item);
}

POSITION CListCtrl::GetFirstSelectedItemPosition() const {
  return positionOf(GetNextItem(-1, LVNI_SELECTED));
}

int CListCtrl::GetNextSelectedItem(POSITION& position) const {
  const int row = static_cast<int>(reinterpret_cast<INT_PTR>(position)) - 1;
  position = positionOf(GetNextItem(row, LVNI_SELECTED));
  return row;
}

CImageList* CListCtrl::SetImageList(CImageList* images, int which) {
  const HIMAGELIST list = images == nullptr ? nullptr : images->m_hImageList;
  const LRESULT before = SendMessage(LVM_SETIMAGELIST, index(which), reinterpret_cast<LPARAM>(list));
  return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(before));
}

CImageList* CListCtrl::GetImageList(int which) const {
  return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(SendMessage(LVM_GETIMAGELIST, index(which))));
}

BOOL CListCtrl::GetItemRect(int row, LPRECT rect, UINT part) const {
  rect->left = static_cast<LONG>(part);
  return flag(LVM_GETITEMRECT, index(row), reinterpret_cast<LPARAM>(rect));
}
