// CListCtrl: a list of rows with texts and pictures. Rows and columns count from 0; widths are pixels.
#pragma once

#include "platform/windows/ImageList.h"
#include "platform/windows/Wnd.h"

class CListCtrl : public CWnd {
 public:
  virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(WC_LISTVIEWW, nullptr, style, rect, parent, id);
  }

  // Columns. The number of the new column, or -1.
  int InsertColumn(int column, const LVCOLUMN* description);
  int InsertColumn(int column, LPCTSTR heading, int format = LVCFMT_LEFT, int width = -1, int subItem = -1);
  BOOL DeleteColumn(int column) { return flag(LVM_DELETECOLUMN, index(column)); }
  BOOL GetColumn(int column, LVCOLUMN* description) const;
  int GetColumnWidth(int column) const { return number(LVM_GETCOLUMNWIDTH, index(column)); }
  BOOL SetColumnWidth(int column, int width) { return flag(LVM_SETCOLUMNWIDTH, index(column), width); }

  // Rows. The number of the new row, or -1. LPSTR_TEXTCALLBACK as a text asks the parent (LVN_GETDISPINFO).
  int InsertItem(const LVITEM* item);
  int InsertItem(int row, LPCTSTR text);
  int InsertItem(int row, LPCTSTR text, int image);
  BOOL DeleteItem(int row) { return flag(LVM_DELETEITEM, index(row)); }
  BOOL DeleteAllItems() { return flag(LVM_DELETEALLITEMS); }
  int GetItemCount() const { return number(LVM_GETITEMCOUNT); }
  // Owner data: how many rows there are. Else: room for so many, before they are inserted.
  void SetItemCount(int rows) { SendMessage(LVM_SETITEMCOUNT, index(rows)); }
  BOOL SetItemCountEx(int rows, DWORD flags = LVSICF_NOINVALIDATEALL) {
    return flag(LVM_SETITEMCOUNT, index(rows), static_cast<LPARAM>(flags));
  }
  BOOL GetItem(LVITEM* item) const { return flag(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(item)); }
  BOOL SetItem(const LVITEM* item) { return flag(LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(item)); }
  BOOL SetItemText(int row, int subItem, LPCTSTR text);
  CString GetItemText(int row, int subItem) const;
  int GetItemText(int row, int subItem, LPTSTR text,
                  int size) const;  // returns the length
  BOOL SetItemData(int row, DWORD_PTR data);
  DWORD_PTR GetItemData(int row) const;
  UINT MapIndexToID(UINT row) const { return static_cast<UINT>(SendMessage(LVM_MAPINDEXTOID, row)); }
  UINT MapIDToIndex(UINT id) const { return static_cast<UINT>(SendMessage(LVM_MAPIDTOINDEX, id)); }
  BOOL SortItems(PFNLVCOMPARE compare, DWORD_PTR data) {
    return flag(LVM_SORTITEMS, data, reinterpret_cast<LPARAM>(compare));
  }
  int FindItem(LVFINDINFO* what, int start = -1) const {
    return number(LVM_FINDITEMW, index(start), reinterpret_cast<LPARAM>(what));
  }

  // State and selection. Row -1 means every row.
  BOOL SetItemState(int row, UINT state, UINT mask);
  BOOL SetItemState(int row, LVITEM* item) {
    return flag(LVM_SETITEMSTATE, index(row), reinterpret_cast<LPARAM>(item));
  }
  UINT GetItemState(int row, UINT mask) const {
    return static_cast<UINT>(number(LVM_GETITEMSTATE, index(row), static_cast<LPARAM>(mask)));
  }
  int GetNextItem(int row, int flags) const {
    return number(LVM_GETNEXTITEM, index(row), MAKELPARAM(flags, 0));
  }
  POSITION GetFirstSelectedItemPosition() const;
  int GetNextSelectedItem(POSITION& position) const;
  UINT GetSelectedCount() const { return static_cast<UINT>(number(LVM_GETSELECTEDCOUNT)); }
  int GetSelectionMark() const { return number(LVM_GETSELECTIONMARK); }
  int SetSelectionMark(int row) { return number(LVM_SETSELECTIONMARK, 0, row); }

  // Looks. SetImageList returns the list before; lists stay the caller's with LVS_SHAREIMAGELISTS only.
  CImageList* SetImageList(CImageList* images,
                           int which);  // LVSIL_NORMAL, LVSIL_SMALL
  CImageList* GetImageList(int which) const;
  DWORD SetExtendedStyle(DWORD style) {
    return static_cast<DWORD>(SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style)));
  }
  DWORD GetExtendedStyle() const { return static_cast<DWORD>(SendMessage(LVM_GETEXTENDEDLISTVIEWSTYLE)); }
  BOOL EnsureVisible(int row, BOOL partialOk) { return flag(LVM_ENSUREVISIBLE, index(row), partialOk); }
  BOOL RedrawItems(int first, int last) { return flag(LVM_REDRAWITEMS, index(first), last); }
  BOOL Update(int row) { return flag(LVM_UPDATE, index(row)); }
  int GetTopIndex() const { return number(LVM_GETTOPINDEX); }
  int GetCountPerPage() const { return number(LVM_GETCOUNTPERPAGE); }
  BOOL GetItemRect(int row, LPRECT rect, UINT part) const;  // LVIR_BOUNDS, ...
  int HitTest(LVHITTESTINFO* where) const { return number(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(where)); }
  int SubItemHitTest(LVHITTESTINFO* where) {
    return number(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(where));
  }

 private:
  using CWnd::Create;
  static WPARAM index(int number) { return static_cast<WPARAM>(number); }
  int number(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return static_cast<int>(SendMessage(message, wParam, lParam));
  }
  BOOL flag(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessage(message, wParam, lParam) != 0 ? TRUE : FALSE;
  }
};
