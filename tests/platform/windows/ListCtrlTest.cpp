// A list in a real dialog: columns, rows, selection, pictures, and rows whose texts are asked for.
#include <afxcmn.h>

#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"

namespace {

class RowsDialog : public CDialog {
 public:
  CListCtrl list;

 protected:
  void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, IDC_LIST, list); }
  afx_msg void OnGetText(NMHDR* header, LRESULT* result) {
    LVITEM& item = reinterpret_cast<NMLVDISPINFO*>(header)->item;
    if ((item.mask & LVIF_TEXT) != 0) {
      CString text;
      text.Format(_T("row %d, %d"), item.iItem, item.iSubItem);
      ::lstrcpynW(item.pszText, text, item.cchTextMax);
    }
    *result = 0;
  }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(RowsDialog, CDialog)
ON_NOTIFY(LVN_GETDISPINFO, IDC_LIST, &RowsDialog::OnGetText)
END_MESSAGE_MAP()

class Rows : public testing::Test {
 protected:
  Rows() {
    EXPECT_TRUE(m_dialog.Create(IDD_LIST));
    m_list.InsertColumn(0, _T("Second"), LVCFMT_LEFT, 70, 1);
    m_list.InsertColumn(0, _T("First"), LVCFMT_LEFT, 80);
  }
  void fill(int rows) {
    for (int i = 0; i < rows; ++i) {
      CString text;
      text.Format(_T("%d"), i);
      EXPECT_EQ(m_list.InsertItem(i, text, i % 2), i);
    }
  }
  std::string text(int row, int column) { return toUtf8(m_list.GetItemText(row, column)); }

  RowsDialog m_dialog;
  CListCtrl& m_list = m_dialog.list;
};

TEST_F(Rows, ColumnsHaveHeadingsAndWidths) {
  TCHAR heading[20] = {};
  LVCOLUMN column = {};
  column.mask = LVCF_TEXT | LVCF_FMT;
  column.pszText = heading;
  column.cchTextMax = 20;
  ASSERT_TRUE(m_list.GetColumn(0, &column));
  EXPECT_EQ(toUtf8(heading), "First");
  EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_LEFT);
  EXPECT_EQ(m_list.GetColumnWidth(0), 80);
  EXPECT_EQ(m_list.GetColumnWidth(1), 70);
  EXPECT_TRUE(m_list.SetColumnWidth(1, 33));
  EXPECT_EQ(m_list.GetColumnWidth(1), 33);
  EXPECT_TRUE(m_list.DeleteColumn(1));
  EXPECT_FALSE(m_list.GetColumn(1, &column));
}

TEST_F(Rows, HoldTextsPicturesAndData) {
  fill(3);
  EXPECT_TRUE(m_list.SetItemText(1, 1, _T("né")));
  EXPECT_EQ(text(1, 0), "1");
  EXPECT_EQ(text(1, 1), "né");
  const CString longText(_T('x'), 1000);
  EXPECT_TRUE(m_list.SetItemText(2, 1, longText));
  EXPECT_EQ(m_list.GetItemText(2, 1), longText);
  LVITEM item = {};
  item.mask = LVIF_IMAGE;
  item.iItem = 1;
  ASSERT_TRUE(m_list.GetItem(&item));
  EXPECT_EQ(item.iImage, 1);
  EXPECT_TRUE(m_list.SetItemData(2, 77));
  EXPECT_EQ(m_list.GetItemData(2), 77U);
  EXPECT_EQ(m_list.GetItemCount(), 3);
  EXPECT_TRUE(m_list.DeleteItem(0));
  EXPECT_EQ(text(0, 0), "1");
  EXPECT_TRUE(m_list.DeleteAllItems());
  EXPECT_EQ(m_list.GetItemCount(), 0);
}

TEST_F(Rows, KeepTheirIdWhereverTheyMove) {
  fill(3);
  const UINT id = m_list.MapIndexToID(2);
  EXPECT_NE(id, m_list.MapIndexToID(1));
  m_list.DeleteItem(0);
  EXPECT_EQ(m_list.MapIDToIndex(id), 1U);
}

TEST_F(Rows, AreSelected) {
  fill(5);
  EXPECT_EQ(m_list.GetFirstSelectedItemPosition(), nullptr);
  m_list.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
  m_list.SetItemState(4, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  EXPECT_EQ(m_list.GetItemState(1, LVIS_SELECTED), UINT{LVIS_SELECTED});
  EXPECT_EQ(m_list.GetItemState(2, LVIS_SELECTED), 0U);
  EXPECT_EQ(m_list.GetSelectedCount(), 2U);
  EXPECT_EQ(m_list.GetNextItem(-1, LVNI_FOCUSED), 4);
  POSITION position = m_list.GetFirstSelectedItemPosition();
  EXPECT_EQ(m_list.GetNextSelectedItem(position), 1);
  EXPECT_EQ(m_list.GetNextSelectedItem(position), 4);
  EXPECT_EQ(position, nullptr);
  m_list.SetItemState(-1, 0, LVIS_SELECTED);
  EXPECT_EQ(m_list.GetSelectedCount(), 0U);
}

TEST_F(Rows, TextsMayBeAskedFor) {
  m_list.InsertItem(0, LPSTR_TEXTCALLBACK);
  m_list.SetItemText(0, 1, LPSTR_TEXTCALLBACK);
  EXPECT_EQ(text(0, 0), "row 0, 0");
  EXPECT_EQ(text(0, 1), "row 0, 1");
}

TEST_F(Rows, OwnerDataListsAskForEverything) {
  CListCtrl owned;
  const RECT rect = {0, 0, 100, 100};
  const DWORD style = WS_CHILD | LVS_REPORT | LVS_OWNERDATA;
  m_list.DestroyWindow();
  ASSERT_TRUE(owned.Create(style, rect, &m_dialog, IDC_LIST));
  owned.InsertColumn(0, _T("First"), LVCFMT_LEFT, 80);
  owned.SetItemCount(30000);
  EXPECT_EQ(owned.GetItemCount(), 30000);
  EXPECT_EQ(toUtf8(owned.GetItemText(29999, 0)), "row 29999, 0");
}

TEST_F(Rows, StylesAndPictures) {
  m_list.SetExtendedStyle(LVS_EX_FULLROWSELECT);
  EXPECT_EQ(m_list.SetExtendedStyle(LVS_EX_TRACKSELECT), DWORD{LVS_EX_FULLROWSELECT});
  EXPECT_EQ(m_list.GetExtendedStyle(), DWORD{LVS_EX_TRACKSELECT});
  CImageList images;
  ASSERT_TRUE(images.Create(16, 16, ILC_COLOR16, 0, 1));
  EXPECT_FALSE(images.Create(16, 16, ILC_COLOR16, 0, 1));
  EXPECT_EQ(images.Add(::LoadIconW(nullptr, IDI_ERROR)), 0);
  EXPECT_EQ(images.Add(::LoadIconW(nullptr, IDI_QUESTION)), 1);
  EXPECT_EQ(images.GetImageCount(), 2);
  EXPECT_EQ(m_list.SetImageList(&images, LVSIL_SMALL), nullptr);
  EXPECT_EQ(m_list.GetImageList(LVSIL_SMALL), &images);
  EXPECT_EQ(m_list.SetImageList(nullptr, LVSIL_SMALL), &images);
  EXPECT_TRUE(m_list.ModifyStyle(0, LVS_ALIGNLEFT));
  EXPECT_FALSE(m_list.ModifyStyle(0, LVS_ALIGNLEFT));
  EXPECT_NE(m_list.GetStyle() & LVS_ALIGNLEFT, 0U);
}

}  // namespace
