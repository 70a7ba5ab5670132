#include "tests/host/viewer/windows/ViewerUser.h"

#include <cstring>
#include <shlobj.h>

#include "platform/Utf.h"
#include "tests/platform/windows/Robot.h"

namespace {

constexpr ULONGLONG quiet = 400;  // ms, longer than the viewer waits for a module that says nothing

LPARAM placeOf(CPoint point) {
  return MAKELPARAM(point.x, point.y);
}

// A key that the system says is not pressed, whatever the last test left.
void releaseModifiers() {
  BYTE keys[256] = {};
  ::SetKeyboardState(keys);
}

}  // namespace

ViewerUser::ViewerUser() {
  releaseModifiers();
  m_app.makeFrame();
  wait();
}

ViewerUser::~ViewerUser() {
  if (isOpen()) {
    frame().DestroyWindow();
    MSG message = {};  // the message that ends a program, which goes on here
    while (::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE) {
    }
  }
}

void ViewerUser::wait() {
  pump();
  if (isOpen()) {
    m_app.OnIdle(0);
    pump();
  }
}

void ViewerUser::waitQuiet() {
  const ULONGLONG end = ::GetTickCount64() + quiet;
  while (::GetTickCount64() < end) {
    wait();
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
  }
}

void ViewerUser::run() {
  const ULONGLONG end = ::GetTickCount64() + quiet;
  while (::GetTickCount64() < end) {
    MSG message = {};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
      if (!m_app.PreTranslateMessage(&message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
      }
    }
    m_app.OnIdle(0);
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
  }
}

void ViewerUser::postKey(HWND window, UINT key, bool control) {
  BYTE keys[256] = {};
  keys[VK_CONTROL] = control ? 0x80 : 0;
  ::SetKeyboardState(keys);
  ::PostMessageW(window, WM_KEYDOWN, key, 1);
  run();
  releaseModifiers();
}

void ViewerUser::choose(UINT command) {
  frame().SendMessage(WM_COMMAND, command);
  if (isOpen()) {
    wait();
  }
}

void ViewerUser::close() {
  frame().SendMessage(WM_CLOSE);
}

void ViewerUser::key(int pane, UINT key) {
  frame().pane(pane).SendMessage(WM_KEYDOWN, key, 1);
  wait();
}

void ViewerUser::wheel(int pane, int notches, bool control) {
  CPoint at = middleOf(pane);
  frame().pane(pane).ClientToScreen(&at);
  frame().pane(pane).SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(control ? MK_CONTROL : 0, notches * WHEEL_DELTA),
                                 placeOf(at));
  wait();
}

void ViewerUser::press(int pane, CPoint at) {
  frame().pane(pane).SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, placeOf(at));
  frame().pane(pane).SendMessage(WM_LBUTTONUP, 0, placeOf(at));
  wait();
}

void ViewerUser::drag(int pane, CPoint from, CPoint to, bool rightButton) {
  host::PaneWindow& window = frame().pane(pane);
  window.SendMessage(rightButton ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, 0, placeOf(from));
  constexpr int steps = 5;
  for (int step = 1; step <= steps; ++step) {
    const CPoint at(static_cast<int>(from.x + (to.x - from.x) * step / steps),
                    static_cast<int>(from.y + (to.y - from.y) * step / steps));
    window.SendMessage(WM_MOUSEMOVE, 0, placeOf(at));
  }
  window.SendMessage(rightButton ? WM_RBUTTONUP : WM_LBUTTONUP, 0, placeOf(to));
  wait();
}

void ViewerUser::drop(const std::vector<std::string>& files) {
  CString names;
  for (const std::string& file : files) {
    names += fromUtf8(file.c_str());
    names += TCHAR{0};
  }
  names += TCHAR{0};
  const std::size_t bytes = static_cast<std::size_t>(names.GetLength()) * sizeof(TCHAR);
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + bytes);
  auto* const list = static_cast<DROPFILES*>(::GlobalLock(memory));
  list->pFiles = sizeof(DROPFILES);
  list->fWide = TRUE;
  std::memcpy(list + 1, names.GetString(), bytes);
  ::GlobalUnlock(memory);
  frame().SendMessage(WM_DROPFILES, reinterpret_cast<WPARAM>(memory));  // frees the memory
  wait();
}

HWND ViewerUser::panel() {
  return ::FindWindowExW(frame().m_hWnd, nullptr, L"#32770", nullptr);
}

void ViewerUser::setField(int field, const std::string& text) {
  type(panel(), field, text);
  wait();
}

void ViewerUser::setSlider(int slider, int position) {
  const HWND control = ::GetDlgItem(panel(), slider);
  ::SendMessageW(control, TBM_SETPOS, TRUE, position);
  ::SendMessageW(panel(), WM_HSCROLL, TB_ENDTRACK, reinterpret_cast<LPARAM>(control));
  wait();
}

void ViewerUser::clickPanel(int button) {
  ::press(panel(), button);
  wait();
}

void ViewerUser::chooseColourBy(int entry) {
  const HWND control = ::GetDlgItem(panel(), IDC_COLOR_BY);
  ::SendMessageW(control, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
  ::SendMessageW(panel(), WM_COMMAND, MAKEWPARAM(IDC_COLOR_BY, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(control));
  wait();
}

std::string ViewerUser::title() {
  return captionOf(frame().m_hWnd);
}

std::string ViewerUser::status(int part) {
  return toUtf8(frame().statusText(part));
}

std::string ViewerUser::field(int control) {
  return textOf(panel(), control);
}

HMENU ViewerUser::menuOf(HMENU menu, UINT command) {
  for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
    if (::GetMenuItemID(menu, i) == command) {
      return menu;
    }
    if (const HMENU below = ::GetSubMenu(menu, i)) {
      frame().SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(below), MAKELPARAM(i, FALSE));
      if (const HMENU found = menuOf(below, command)) {
        return found;
      }
    }
  }
  return nullptr;
}

UINT ViewerUser::menuState(UINT command) {
  return ::GetMenuState(menuOf(::GetMenu(frame().m_hWnd), command), command, MF_BYCOMMAND);
}

bool ViewerUser::isChecked(UINT command) {
  return (menuState(command) & MF_CHECKED) != 0;
}

bool ViewerUser::isEnabled(UINT command) {
  return (menuState(command) & MF_GRAYED) == 0;
}

std::string ViewerUser::menuText(UINT command) {
  TCHAR text[512] = {};
  ::GetMenuStringW(menuOf(::GetMenu(frame().m_hWnd), command), command, text, 512, MF_BYCOMMAND);
  return toUtf8(text);
}

HWND ViewerUser::manager() {
  const CDialog* const dialog = dipoles().getDlgDipoleList();
  return dialog == nullptr ? nullptr : dialog->m_hWnd;
}

HWND ViewerUser::list() {
  return ::FindWindowExW(manager(), nullptr, WC_LISTVIEWW, nullptr);
}

void ViewerUser::chooseRow(int row) {
  ::SetCursorPos(0, 0);  // nothing that happens to lie under it takes part
  ::SetFocus(list());
  ListView_SetItemState(list(), -1, 0, LVIS_SELECTED);
  ListView_SetItemState(list(), row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  ::SendMessageW(list(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
  wait();
}

std::vector<int> ViewerUser::selectedRows() {
  std::vector<int> rows;
  int row = -1;
  while ((row = static_cast<int>(
              ::SendMessageW(list(), LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED))) >= 0) {
    rows.push_back(row);
  }
  return rows;
}

CPoint ViewerUser::middleOf(int pane) {
  CRect area;
  frame().pane(pane).GetClientRect(&area);
  return {area.Width() / 2, area.Height() / 2};
}
