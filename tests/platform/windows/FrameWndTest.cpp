// The main window: its resources, keys, menu updates and end.
#include <afxwin.h>

#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include "platform/Utf.h"
#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"
#include "tests/support/Promising.h"

namespace {

constexpr UINT added = 2020;  // the number of the first item that a handler adds

// What outlives a window that ends its own object.
struct Record {
  int firsts = 0;
  int seconds = 0;
  std::vector<UINT> asked;  // whose state
  bool isGone = false;
};

class Frame : public CFrameWnd {
 public:
  explicit Frame(Record& record) : m_record(record) {}
  ~Frame() override { m_record.isGone = true; }

  enum class Change { none, append, insertBefore, remove };
  Change change = Change::none;

  HMENU popup(int position) { return ::GetSubMenu(::GetMenu(m_hWnd), position); }
  void open(int position, bool isSystemMenu = false) {
    SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup(position)),
                MAKELPARAM(position, isSystemMenu ? TRUE : FALSE));
  }
  UINT state(int position, UINT id) {
    return ::GetMenuState(popup(position), id, MF_BYCOMMAND) & (MF_CHECKED | MF_GRAYED);
  }

 protected:
  afx_msg void OnFirst() { ++m_record.firsts; }
  afx_msg void OnSecond() { ++m_record.seconds; }
  afx_msg void OnUpdate(CCmdUI* item) {
    m_record.asked.push_back(item->m_nID);
    item->Enable(TRUE);
  }
  afx_msg void OnUpdateFirst(CCmdUI* item) {
    m_record.asked.push_back(item->m_nID);
    const Change now = std::exchange(change, Change::none);
    const HMENU menu = item->m_pMenu->m_hMenu;
    if (now == Change::append) {
      item->m_pMenu->AppendMenu(MF_STRING, added, _T("Added"));
      item->m_pMenu->AppendMenu(MF_STRING, added + 1, _T("Added too"));
    } else if (now == Change::insertBefore) {
      ::InsertMenuW(menu, item->m_nIndex++, MF_BYPOSITION | MF_STRING, added, _T("Added"));
    } else if (now == Change::remove) {
      ::DeleteMenu(menu, item->m_nIndex, MF_BYPOSITION);
    }
  }
  afx_msg void OnUpdateRange(CCmdUI* item) { item->SetCheck(item->m_nID == ID_RANGE_LAST ? 0 : 1); }
  DECLARE_MESSAGE_MAP()

 private:
  Record& m_record;
};

BEGIN_MESSAGE_MAP(Frame, CFrameWnd)
ON_COMMAND(ID_FIRST, &Frame::OnFirst)
ON_COMMAND(ID_SECOND, &Frame::OnSecond)
ON_UPDATE_COMMAND_UI(ID_FIRST, &Frame::OnUpdateFirst)
ON_UPDATE_COMMAND_UI(ID_THIRD, &Frame::OnUpdate)
ON_UPDATE_COMMAND_UI_RANGE(added, added + 1, &Frame::OnUpdate)
ON_UPDATE_COMMAND_UI_RANGE(ID_RANGE_FIRST, ID_RANGE_LAST, &Frame::OnUpdateRange)
END_MESSAGE_MAP()

class FrameWnd : public testing::Test {
 protected:
  FrameWnd() { EXPECT_TRUE(m_frame->LoadFrame(IDR_FRAME)); }
  ~FrameWnd() override {
    if (!m_record.isGone) {
      m_frame->DestroyWindow();
    }
    AfxGetApp()->m_pMainWnd = nullptr;
    isQuitPosted();
  }
  // Takes the message that ends a program, if there is one.
  static bool isQuitPosted() {
    MSG message = {};
    return ::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE;
  }
  // A key as the message loop gets it.
  void press(WPARAM key, bool withControl) {
    BYTE keys[256] = {};
    keys[VK_CONTROL] = withControl ? 0x80 : 0;
    ::SetKeyboardState(keys);
    MSG message = {m_frame->m_hWnd, WM_KEYDOWN, key, 1, 0, {}};
    m_isTaken = AfxPreTranslateMessage(&message) != FALSE;
    keys[VK_CONTROL] = 0;
    ::SetKeyboardState(keys);
  }

  Record m_record;
  Frame* m_frame = new Frame(m_record);  // ends itself
  bool m_isTaken = false;
};

TEST_F(FrameWnd, HasTheResourcesOfItsNumber) {
  EXPECT_EQ(captionOf(m_frame->m_hWnd), "A frame");
  ASSERT_NE(m_frame->GetMenu(), nullptr);
  EXPECT_EQ(m_frame->GetMenu()->GetMenuItemCount(), 2U);
  EXPECT_NE(m_frame->m_hAccelTable, nullptr);
  EXPECT_NE(::GetClassLongPtrW(m_frame->m_hWnd, GCLP_HICON), 0U);
  EXPECT_FALSE(m_frame->IsWindowVisible());
  EXPECT_EQ(m_frame->GetStyle() & WS_OVERLAPPEDWINDOW, DWORD{WS_OVERLAPPEDWINDOW});
}

TEST_F(FrameWnd, DoesWithoutResources) {
  Record record;
  auto* const bare = new Frame(record);
  ASSERT_TRUE(bare->LoadFrame(9999));
  EXPECT_EQ(captionOf(bare->m_hWnd), "");
  EXPECT_EQ(::GetMenu(bare->m_hWnd), nullptr);
  EXPECT_EQ(bare->m_hAccelTable, nullptr);
  MSG message = {bare->m_hWnd, WM_KEYDOWN, VK_F8, 1, 0, {}};
  EXPECT_FALSE(bare->PreTranslateMessage(&message));
  bare->DestroyWindow();
  EXPECT_TRUE(record.isGone);
}

TEST_F(FrameWnd, AcceleratorKeysAreCommands) {
  m_frame->ShowWindow(SW_SHOW);
  press(VK_F8, false);
  EXPECT_TRUE(m_isTaken);
  press('F', true);
  EXPECT_TRUE(m_isTaken);
  EXPECT_EQ(m_record.seconds, 1);
  EXPECT_EQ(m_record.firsts, 1);
}

TEST_F(FrameWnd, OtherKeysGoOn) {
  press('F', false);
  EXPECT_FALSE(m_isTaken);
  press(VK_F7, false);
  EXPECT_FALSE(m_isTaken);
  MSG mouse = {m_frame->m_hWnd, WM_LBUTTONDOWN, VK_F8, 1, 0, {}};
  EXPECT_FALSE(m_frame->PreTranslateMessage(&mouse));
  EXPECT_EQ(m_record.firsts + m_record.seconds, 0);
}

TEST_F(FrameWnd, AcceleratorKeysReachItFromItsChildren) {
  m_frame->ShowWindow(SW_SHOW);
  CEdit edit;
  ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 20), m_frame, IDC_TEXT));
  MSG message = {edit.m_hWnd, WM_KEYDOWN, VK_F8, 1, 0, {}};
  EXPECT_TRUE(AfxPreTranslateMessage(&message));
  EXPECT_EQ(m_record.seconds, 1);
}

TEST_F(FrameWnd, OpeningMenuAsksForEveryItem) {
  m_frame->open(0);
  EXPECT_EQ(m_record.asked, (std::vector<UINT>{ID_FIRST, ID_THIRD}));
  EXPECT_EQ(m_frame->state(0, ID_FIRST), 0U);   // it has a handler for its command
  EXPECT_EQ(m_frame->state(0, ID_SECOND), 0U);  // likewise
  EXPECT_EQ(m_frame->state(0, ID_THIRD), 0U);   // its update enables it
  EXPECT_EQ(m_frame->state(0, ID_NOBODYS), UINT{MF_GRAYED});
}

TEST_F(FrameWnd, UpdatesOfARangeKnowTheirItem) {
  m_frame->open(1);
  EXPECT_EQ(m_frame->state(1, ID_RANGE_FIRST) & MF_CHECKED, UINT{MF_CHECKED});
  EXPECT_EQ(m_frame->state(1, ID_RANGE_FIRST + 1) & MF_CHECKED, UINT{MF_CHECKED});
  EXPECT_EQ(m_frame->state(1, ID_RANGE_LAST) & MF_CHECKED, 0U);
}

TEST_F(FrameWnd, ItemsThatAHandlerAppendsAreAskedForToo) {
  m_frame->change = Frame::Change::append;
  m_frame->open(0);
  EXPECT_EQ(m_record.asked, (std::vector<UINT>{ID_FIRST, ID_THIRD, added, added + 1}));
  EXPECT_EQ(m_frame->state(0, ID_NOBODYS), UINT{MF_GRAYED});
}

TEST_F(FrameWnd, HandlerThatInsertsBeforeItselfMovesTheIndex) {
  m_frame->change = Frame::Change::insertBefore;
  m_frame->open(0);
  EXPECT_EQ(m_record.asked, (std::vector<UINT>{ID_FIRST, ID_THIRD}));
  EXPECT_EQ(m_frame->state(0, ID_NOBODYS), UINT{MF_GRAYED});
}

TEST_F(FrameWnd, ItemBehindARemovedOneIsAskedFor) {
  ::DeleteMenu(m_frame->popup(0), ID_SECOND, MF_BYCOMMAND);
  ::DeleteMenu(m_frame->popup(0), 2, MF_BYPOSITION);  // the line: First, Nobody's, Third are left
  m_frame->change = Frame::Change::remove;
  m_frame->open(0);
  EXPECT_EQ(m_record.asked, (std::vector<UINT>{ID_FIRST, ID_THIRD}));
  EXPECT_EQ(m_frame->state(0, ID_NOBODYS), UINT{MF_GRAYED});
}

TEST_F(FrameWnd, SystemMenuIsLeftAlone) {
  m_frame->open(0, true);
  EXPECT_TRUE(m_record.asked.empty());
  EXPECT_EQ(m_frame->state(0, ID_NOBODYS), 0U);
}

TEST_F(FrameWnd, ClosingEndsWindowAndObject) {
  const HWND window = m_frame->m_hWnd;
  m_frame->SendMessage(WM_CLOSE);
  EXPECT_TRUE(m_record.isGone);
  EXPECT_FALSE(::IsWindow(window));
}

TEST_F(FrameWnd, MainWindowEndsTheProgram) {
  AfxGetApp()->m_pMainWnd = m_frame;
  m_frame->SendMessage(WM_CLOSE);
  EXPECT_EQ(AfxGetApp()->m_pMainWnd, nullptr);
  EXPECT_TRUE(isQuitPosted());
}

TEST_F(FrameWnd, AnotherFrameDoesNotEndTheProgram) {
  CStatic main;
  AfxGetApp()->m_pMainWnd = &main;
  m_frame->SendMessage(WM_CLOSE);
  EXPECT_EQ(AfxGetApp()->m_pMainWnd, &main);
  EXPECT_FALSE(isQuitPosted());
}

TEST(RegisterWndClass, GivesOneNameForTheSameArguments) {
  const Promising promising(Promising::more);
  const HCURSOR cross = ::LoadCursorW(nullptr, reinterpret_cast<LPCTSTR>(IDC_CROSS));
  const LPCTSTR name = AfxRegisterWndClass(CS_DBLCLKS, cross);
  EXPECT_EQ(AfxRegisterWndClass(CS_DBLCLKS, cross), name);
  EXPECT_NE(CString(AfxRegisterWndClass(CS_HREDRAW, cross)), CString(name));
  EXPECT_NE(CString(AfxRegisterWndClass(CS_DBLCLKS)), CString(name));
  EXPECT_EQ(AfxRegisterWndClass(CS_DBLCLKS, cross), name);  // the others have not moved it
  WNDCLASSW found = {};
  ASSERT_TRUE(::GetClassInfoW(AfxGetInstanceHandle(), name, &found));
  EXPECT_EQ(found.style, UINT{CS_DBLCLKS});
  EXPECT_EQ(found.hCursor, cross);
}

}  // namespace
