// The way of messages, commands and notifications to members of classes.
#include <afxcmn.h>

#include <gtest/gtest.h>
#include <stdexcept>

#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"
#include "tests/support/Promising.h"
#include "tests/support/ScriptedOperator.h"

namespace {

class ReflectingList : public CListCtrl {
 public:
  int clicked = -1;
  int doubleClicks = 0;
  std::vector<UINT> keys;

 protected:
  afx_msg void OnColumnClick(NMHDR* header, LRESULT* result) {
    clicked = reinterpret_cast<NMLISTVIEW*>(header)->iSubItem;
    *result = 42;
  }
  afx_msg void OnLButtonDblClk(UINT flags, CPoint point) {
    ++doubleClicks;
    CListCtrl::OnLButtonDblClk(flags, point);
  }
  afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags) {
    keys.push_back(key);
    CListCtrl::OnKeyDown(key, repeat, flags);
  }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ReflectingList, CListCtrl)
ON_NOTIFY_REFLECT(LVN_COLUMNCLICK, &ReflectingList::OnColumnClick)
ON_WM_LBUTTONDBLCLK()
ON_WM_KEYDOWN()
END_MESSAGE_MAP()

class BaseDialog : public CDialog {
 public:
  int first = 0;
  int second = 0;
  std::vector<UINT> ranged;

 protected:
  afx_msg void OnFirst() { ++first; }
  afx_msg void OnSecond() { ++second; }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(BaseDialog, CDialog)
ON_COMMAND(ID_FIRST, &BaseDialog::OnFirst)
ON_COMMAND(ID_SECOND, &BaseDialog::OnSecond)
END_MESSAGE_MAP()

class ListDialog : public BaseDialog {
 public:
  ReflectingList list;
  int secondHere = 0;
  int columnClicks = 0;
  int changes = 0;
  int checks = 0;
  std::vector<CPoint> sizes;
  bool sizedBeforeList = false;
  CPoint menuAt;
  CWnd* menuFor = nullptr;
  int doubleClicks = 0;
  CPoint clickedAt;
  WPARAM got = 0;

 protected:
  void DoDataExchange(CDataExchange* exchange) override {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_LIST, list);
  }
  afx_msg void OnSecondHere() { ++secondHere; }
  afx_msg void OnRange(UINT id) { ranged.push_back(id); }
  afx_msg void OnColumnClick(NMHDR* /*header*/, LRESULT* /*result*/) { ++columnClicks; }
  afx_msg void OnChanged(NMHDR* header, LRESULT* result) {
    EXPECT_EQ(header->hwndFrom, list.m_hWnd);
    ++changes;
    *result = 0;
  }
  afx_msg void OnCheck() { ++checks; }
  afx_msg void OnSize(UINT type, int width, int height) {
    CDialog::OnSize(type, width, height);
    sizedBeforeList = sizedBeforeList || list.m_hWnd == nullptr;
    sizes.emplace_back(width, height);
  }
  afx_msg void OnContextMenu(CWnd* window, CPoint point) {
    menuFor = window;
    menuAt = point;
  }
  afx_msg void OnLButtonDblClk(UINT flags, CPoint point) {
    ++doubleClicks;
    clickedAt = point;
    CDialog::OnLButtonDblClk(flags, point);
  }
  afx_msg LRESULT OnOwn(WPARAM wParam, LPARAM lParam) {
    got = wParam;
    return lParam + 1;
  }
  afx_msg LRESULT OnThrow(WPARAM wParam, LPARAM /*lParam*/) {
    if (wParam == 0) {
      AfxThrowResourceException();
    }
    throw std::runtime_error("broken");
  }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ListDialog, BaseDialog)
ON_COMMAND(ID_SECOND, &ListDialog::OnSecondHere)
ON_COMMAND_RANGE(3000, 3002, &ListDialog::OnRange)
ON_NOTIFY(LVN_COLUMNCLICK, IDC_LIST, &ListDialog::OnColumnClick)
ON_NOTIFY(LVN_ITEMCHANGED, IDC_LIST, &ListDialog::OnChanged)
ON_BN_CLICKED(IDC_CHECK, &ListDialog::OnCheck)
ON_WM_SIZE()
ON_WM_CONTEXTMENU()
ON_WM_LBUTTONDBLCLK()
ON_MESSAGE(WM_APP, &ListDialog::OnOwn)
ON_MESSAGE(WM_APP + 1, &ListDialog::OnThrow)
END_MESSAGE_MAP()

class MessageMaps : public testing::Test {
 protected:
  MessageMaps() {
    EXPECT_TRUE(m_dialog.Create(IDD_LIST));
    m_dialog.list.InsertColumn(0, _T("A"), LVCFMT_LEFT, 80);
    m_dialog.list.InsertColumn(1, _T("B"), LVCFMT_LEFT, 80);
  }
  ListDialog m_dialog;
};

TEST_F(MessageMaps, CommandsReachTheNearestClass) {
  m_dialog.SendMessage(WM_COMMAND, ID_FIRST);
  m_dialog.SendMessage(WM_COMMAND, ID_SECOND);
  EXPECT_EQ(m_dialog.first, 1);
  EXPECT_EQ(m_dialog.second, 0);
  EXPECT_EQ(m_dialog.secondHere, 1);
}

TEST_F(MessageMaps, RangesHoldTheirEnds) {
  for (const UINT id : {2999U, 3000U, 3002U, 3003U}) {
    m_dialog.SendMessage(WM_COMMAND, id);
  }
  EXPECT_EQ(m_dialog.ranged, (std::vector<UINT>{3000, 3002}));
}

TEST_F(MessageMaps, ButtonsReportTheirClicks) {
  press(m_dialog.m_hWnd, IDC_CHECK);
  EXPECT_EQ(m_dialog.checks, 1);
  EXPECT_EQ(m_dialog.IsDlgButtonChecked(IDC_CHECK), 1U);
}

TEST_F(MessageMaps, AControlTakesItsNotificationBeforeItsParent) {
  NMLISTVIEW click = {};
  click.hdr.hwndFrom = m_dialog.list.m_hWnd;
  click.hdr.idFrom = IDC_LIST;
  click.hdr.code = static_cast<UINT>(LVN_COLUMNCLICK);
  click.iSubItem = 1;
  EXPECT_EQ(m_dialog.SendMessage(WM_NOTIFY, IDC_LIST, reinterpret_cast<LPARAM>(&click)), 42);
  EXPECT_EQ(m_dialog.list.clicked, 1);
  EXPECT_EQ(m_dialog.columnClicks, 0);
}

TEST_F(MessageMaps, OtherNotificationsReachTheParent) {
  m_dialog.list.InsertItem(0, _T("row"));
  m_dialog.changes = 0;
  m_dialog.list.SetItemState(0, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_EQ(m_dialog.changes, 1);
}

TEST_F(MessageMaps, SizesComeFromTheStart) {
  EXPECT_TRUE(m_dialog.sizedBeforeList);
  m_dialog.sizes.clear();
  RECT rect = {0, 0, 321, 123};
  ::AdjustWindowRectEx(&rect, m_dialog.GetStyle(), FALSE, m_dialog.GetExStyle());
  m_dialog.MoveWindow(&rect);
  ASSERT_EQ(m_dialog.sizes.size(), 1U);
  EXPECT_EQ(m_dialog.sizes[0], CPoint(321, 123));
}

TEST_F(MessageMaps, ContextMenuBringsItsWindowAndPoint) {
  const HWND list = m_dialog.list.m_hWnd;
  m_dialog.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), MAKELPARAM(-1, -1));
  EXPECT_EQ(m_dialog.menuFor, &m_dialog.list);
  EXPECT_EQ(m_dialog.menuAt, CPoint(-1, -1));
}

TEST_F(MessageMaps, MouseAndKeysReachTheirWindow) {
  m_dialog.SendMessage(WM_LBUTTONDBLCLK, 0, MAKELPARAM(-3, 300));
  EXPECT_EQ(m_dialog.doubleClicks, 1);
  EXPECT_EQ(m_dialog.clickedAt, CPoint(-3, 300));
  m_dialog.list.InsertItem(0, _T("row"));
  m_dialog.list.InsertItem(1, _T("row"));
  m_dialog.list.SetItemState(0, LVIS_FOCUSED, LVIS_FOCUSED);
  m_dialog.list.SendMessage(WM_KEYDOWN, VK_DOWN);
  EXPECT_EQ(m_dialog.list.keys, std::vector<UINT>{VK_DOWN});
  EXPECT_EQ(m_dialog.list.GetItemState(1, LVIS_SELECTED), UINT{LVIS_SELECTED});  // the default went on
}

TEST_F(MessageMaps, OwnMessagesBringTheirResult) {
  EXPECT_EQ(m_dialog.SendMessage(WM_APP, 7, 8), 9);
  EXPECT_EQ(m_dialog.got, 7U);
}

TEST_F(MessageMaps, ExceptionsAreToldAndEndThere) {
  const Promising promising(Promising::more);
  ScriptedOperator user;
  EXPECT_EQ(m_dialog.SendMessage(WM_APP + 1, 0), 0);
  EXPECT_EQ(m_dialog.SendMessage(WM_APP + 1, 1), 0);
  EXPECT_EQ(user.texts(),
            (std::vector<std::string>{"A resource that the program needs is not there.", "broken"}));
}

}  // namespace
