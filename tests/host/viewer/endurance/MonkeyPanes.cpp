// What the monkey does in the panes, in the view panel and with the window itself.
#include <gtest/gtest.h>
#include <iterator>

#include "tests/host/viewer/endurance/ViewerMonkey.h"
#include "tests/platform/windows/Robot.h"

namespace {

template <class Value, std::size_t count>
Value oneOf(Chance& chance, const Value (&values)[count]) {
  return values[chance.below(static_cast<int>(count))];
}

}  // namespace

int ViewerMonkey::anyPane() {
  return m_chance.below(host::MainFrame::paneCount);
}

// Now and then beside the pane, where a captured mouse goes.
CPoint ViewerMonkey::anyPoint(int pane) {
  CRect area;
  m_user->frame().pane(pane).GetClientRect(&area);
  const int beyond = m_chance.oneIn(10) ? 200 : 0;
  return {m_chance.below(area.Width() + 2 * beyond) - beyond,
          m_chance.below(area.Height() + 2 * beyond) - beyond};
}

void ViewerMonkey::send(int pane, UINT message, WPARAM keys, CPoint at) {
  m_user->frame().pane(pane).SendMessage(message, keys, MAKELPARAM(at.x, at.y));
}

void ViewerMonkey::clickPane() {
  const int pane = anyPane();
  m_user->press(pane, anyPoint(pane));
}

void ViewerMonkey::dragPane() {
  const int pane = anyPane();
  m_user->drag(pane, anyPoint(pane), anyPoint(pane));
}

void ViewerMonkey::dragGreyOrZoom() {
  const int pane = anyPane();
  m_user->drag(pane, anyPoint(pane), anyPoint(pane), true);
}

// By the middle button, or by the left one with Shift; now and then another window takes the mouse away.
void ViewerMonkey::panPane() {
  const int pane = anyPane();
  const CPoint from = anyPoint(pane);
  const CPoint to = anyPoint(pane);
  const bool isMiddle = m_chance.oneIn(2);
  send(pane, isMiddle ? WM_MBUTTONDOWN : WM_LBUTTONDOWN, isMiddle ? 0 : MK_SHIFT, from);
  if (m_chance.oneIn(5)) {
    ::ReleaseCapture();
  }
  send(pane, WM_MOUSEMOVE, 0, to);
  send(pane, isMiddle ? WM_MBUTTONUP : WM_LBUTTONUP, 0, to);
  m_user->wait();
}

void ViewerMonkey::wheelPane() {
  m_user->wheel(anyPane(), m_chance.below(9) - 4, m_chance.oneIn(3));
}

void ViewerMonkey::doubleClickPane() {
  const int pane = anyPane();
  const CPoint at = anyPoint(pane);
  m_user->press(pane, at);
  send(pane, WM_LBUTTONDBLCLK, MK_LBUTTON, at);
  send(pane, WM_LBUTTONUP, 0, at);
  m_user->wait();
}

void ViewerMonkey::keyInPane() {
  constexpr UINT keys[] = {VK_LEFT, VK_RIGHT,  VK_UP,  VK_DOWN,     VK_PRIOR,    VK_NEXT,
                           VK_HOME, VK_ADD,    VK_END, VK_SUBTRACT, VK_OEM_PLUS, VK_SPACE,
                           VK_TAB,  VK_RETURN, 'X',    VK_F4,       VK_ESCAPE};
  BYTE pressed[256] = {};
  pressed[VK_SHIFT] = m_chance.oneIn(3) ? 0x80 : 0;
  ::SetKeyboardState(pressed);
  const int pane = anyPane();
  const UINT key = oneOf(m_chance, keys);
  const int times = m_chance.oneIn(10) ? 40 : 1;  // a key that is held down
  for (int i = 0; i < times; ++i) {
    m_user->frame().pane(pane).SendMessage(WM_KEYDOWN, key, 1);
  }
  pressed[VK_SHIFT] = 0;
  ::SetKeyboardState(pressed);
  m_user->wait();
}

void ViewerMonkey::pointInPane() {
  const int pane = anyPane();
  send(pane, WM_MOUSEMOVE, 0, anyPoint(pane));
  m_user->wait();
  EXPECT_EQ(m_user->status(host::MainFrame::pointerPart).find("nan"), std::string::npos);
}

void ViewerMonkey::typeInPanel() {
  constexpr const char* texts[] = {
      "0",   "5",   "-3",    "100.5", "1e3", "x",         "",
      "1,5", "nan", "1e999", " 7 ",   "-",   "0.0000001", "99999999999999999999"};
  const int field = IDC_LATENCY_FROM + m_chance.below(IDC_FILTER_LATENCY_MOST - IDC_LATENCY_FROM + 1);
  m_user->setField(field, oneOf(m_chance, texts));
}

void ViewerMonkey::moveSlider() {
  constexpr int sliders[] = {IDC_TOLERANCE, IDC_GLYPH_SIZE, IDC_BALL_SIZE};
  m_user->setSlider(oneOf(m_chance, sliders), m_chance.below(40));
}

void ViewerMonkey::colourBy() {
  m_user->chooseColourBy(m_chance.below(5));
}

void ViewerMonkey::checkBoxOfPanel() {
  constexpr int boxes[] = {ID_VIEW_SHOW_DIPOLES, ID_VIEW_CURRENT_ONLY,   ID_VIEW_ARROWS, ID_VIEW_FIDUCIALS,
                           ID_VIEW_OVERLAP,      ID_VIEW_LATENCY_WINDOW, ID_VIEW_LEGEND};
  const int box = oneOf(m_chance, boxes);
  if (::IsWindowEnabled(::GetDlgItem(m_user->panel(), box)) != FALSE) {
    m_user->clickPanel(box);
    EXPECT_EQ(m_user->isChecked(static_cast<UINT>(box)),
              ::IsDlgButtonChecked(m_user->panel(), box) == BST_CHECKED)
        << box;
  }
}

void ViewerMonkey::clearFilter() {
  m_user->clickPanel(IDC_FILTER_CLEAR);
  EXPECT_FALSE(m_user->session().view().filter.isSet());
}

void ViewerMonkey::resize() {
  m_user->frame().SetWindowPos(nullptr, 0, 0, 200 + m_chance.below(1400), 100 + m_chance.below(1100),
                               SWP_NOMOVE | SWP_NOZORDER);
  m_user->wait();
}

void ViewerMonkey::minimiseAndRestore() {
  m_user->frame().ShowWindow(SW_MINIMIZE);
  m_user->wait();
  m_user->frame().ShowWindow(SW_RESTORE);
  m_user->wait();
}

// The answer to the question may keep it open; else the next user sits down.
void ViewerMonkey::closeViewer() {
  m_user->close();
  if (!m_user->isOpen()) {
    pump();  // with the message that ends a program
    m_user.reset();
    m_user = std::make_unique<ViewerUser>();
  }
}

void ViewerMonkey::waitQuiet() {
  m_user->waitQuiet();
}
