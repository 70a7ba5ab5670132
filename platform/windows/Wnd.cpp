// Handles, creation and the members that are calls of the system. The way of a message is in WndMessages.cpp.
#include "platform/windows/Wnd.h"

#include "platform/portable/WinApp.h"
#include "platform/windows/CreationHook.h"
#include "platform/windows/HandleMap.h"
#include "platform/windows/Menu.h"
#include "platform/windows/WindowDC.h"

namespace {

bool isAlive(HWND window) {
  return ::IsWindow(window) != FALSE;
}

struct TemporaryWnd : CWnd {
  explicit TemporaryWnd(HWND window) { m_hWnd = window; }
  ~TemporaryWnd() override { loseHandle(); }
  void loseHandle() { m_hWnd = nullptr; }
};

using Windows = HandleMap<HWND, CWnd, TemporaryWnd, &isAlive>;

HWND handleOf(const CWnd* window) {
  return window == nullptr ? nullptr : window->m_hWnd;
}

BOOL modifyStyle(HWND window, int which, DWORD remove, DWORD add, UINT flags) {
  const DWORD before = static_cast<DWORD>(::GetWindowLongPtrW(window, which));
  const DWORD after = (before & ~remove) | add;
  if (after == before) {
    return FALSE;
  }
  ::SetWindowLongPtrW(window, which, static_cast<LONG_PTR>(after));
  if (flags != 0) {
    ::SetWindowPos(window, nullptr, 0, 0, 0, 0,
                   SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED | flags);
  }
  return TRUE;
}

RECT workArea(HWND window) {
  MONITORINFO info = {};
  info.cbSize = sizeof info;
  ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
  return info.rcWork;
}

// A borrowed context on the heap, for GetDC: ReleaseDC ends it.
struct WindowContext : CDC {
  explicit WindowContext(HDC context) { m_hDC = context; }
};

}  // namespace

CWnd::CWnd() = default;

CWnd::~CWnd() {
  if (m_hWnd != nullptr) {
    CWnd::DestroyWindow();
  }
}

CWnd* CWnd::FromHandle(HWND window) {
  return Windows::the().find(window);
}

CWnd* CWnd::FromHandlePermanent(HWND window) {
  return Windows::the().findPermanent(window);
}

void CWnd::DeleteTempMap() {
  Windows::the().drop();
}

BOOL CWnd::Attach(HWND window) {
  if (window == nullptr || m_hWnd != nullptr) {
    return FALSE;
  }
  Windows::the().add(window, this);
  m_hWnd = window;
  return TRUE;
}

HWND CWnd::Detach() {
  const HWND window = m_hWnd;
  if (window != nullptr) {
    Windows::the().remove(window);
  }
  m_hWnd = nullptr;
  return window;
}

BOOL CWnd::Create(LPCTSTR className, LPCTSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                  void* context) {
  return CreateEx(0, className, title, style | WS_CHILD, rect, parent, id, context);
}

BOOL CWnd::CreateEx(DWORD extendedStyle, LPCTSTR className, LPCTSTR title, DWORD style, const RECT& rect,
                    CWnd* parent, UINT id, LPVOID parameter) {
  const CreationHook hook(this);
  const HWND made =
      ::CreateWindowExW(extendedStyle, className, title, style, rect.left, rect.top, rect.right - rect.left,
                        rect.bottom - rect.top, handleOf(parent), reinterpret_cast<HMENU>(UINT_PTR{id}),
                        ::GetModuleHandleW(nullptr), parameter);
  hook.rethrow();
  return made != nullptr ? TRUE : FALSE;
}

BOOL CWnd::DestroyWindow() {
  if (m_hWnd == nullptr) {
    return FALSE;
  }
  const HWND window = m_hWnd;
  const bool permanent = FromHandlePermanent(window) == this;
  const BOOL done = ::DestroyWindow(window);
  // A window whose messages this object does not take says nothing when it goes.
  if (permanent && FromHandlePermanent(window) == this) {
    Detach();
  }
  return done;
}

void CWnd::takeMessages() {
  const auto previous = ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc));
  const auto behind = reinterpret_cast<WNDPROC>(previous);
  if (behind != &AfxWndProc) {
    m_behind = behind;
  }
}

void CWnd::giveMessagesBack() {
  const auto now = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(m_hWnd, GWLP_WNDPROC));
  if (m_behind != nullptr && now == &AfxWndProc) {
    ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_behind));
  }
  m_behind = nullptr;
}

BOOL CWnd::SubclassWindow(HWND window) {
  if (!Attach(window)) {
    return FALSE;
  }
  PreSubclassWindow();
  takeMessages();
  return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
  const HWND control = ::GetDlgItem(handleOf(parent), static_cast<int>(id));
  return control != nullptr ? SubclassWindow(control) : FALSE;
}

HWND CWnd::UnsubclassWindow() {
  giveMessagesBack();
  return Detach();
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT flags) {
  return modifyStyle(m_hWnd, GWL_STYLE, remove, add, flags);
}

BOOL CWnd::ModifyStyleEx(DWORD remove, DWORD add, UINT flags) {
  return modifyStyle(m_hWnd, GWL_EXSTYLE, remove, add, flags);
}

void CWnd::SetWindowText(LPCTSTR text) {
  ::SetWindowTextW(m_hWnd, text);
}

void CWnd::GetWindowText(CString& text) const {
  const int length = GetWindowTextLength();
  const int got = ::GetWindowTextW(m_hWnd, text.GetBuffer(length), length + 1);
  text.ReleaseBuffer(got);
}

int CWnd::MessageBox(LPCTSTR text, LPCTSTR caption, UINT type) {
  return ::MessageBoxW(m_hWnd, text, caption == nullptr ? AfxGetApp()->m_pszAppName : caption, type);
}

HICON CWnd::SetIcon(HICON icon, BOOL big) {
  const WPARAM which = big != FALSE ? ICON_BIG : ICON_SMALL;
  return reinterpret_cast<HICON>(SendMessage(WM_SETICON, which, reinterpret_cast<LPARAM>(icon)));
}

void CWnd::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
  ::MoveWindow(m_hWnd, x, y, width, height, repaint);
}

void CWnd::MoveWindow(LPCRECT rect, BOOL repaint) {
  MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
}

BOOL CWnd::SetWindowPos(const CWnd* behind, int x, int y, int width, int height, UINT flags) {
  return ::SetWindowPos(m_hWnd, handleOf(behind), x, y, width, height, flags);
}

BOOL CWnd::GetWindowPlacement(WINDOWPLACEMENT* placement) const {
  placement->length = sizeof *placement;
  return ::GetWindowPlacement(m_hWnd, placement);
}

BOOL CWnd::SetWindowPlacement(const WINDOWPLACEMENT* placement) {
  WINDOWPLACEMENT whole = *placement;
  whole.length = sizeof whole;
  return ::SetWindowPlacement(m_hWnd, &whole);
}

void CWnd::CenterWindow(CWnd* over) {
  HWND reference = handleOf(over) != nullptr ? handleOf(over) : ::GetParent(m_hWnd);
  RECT area = workArea(m_hWnd);
  if (reference != nullptr && ::IsWindowVisible(reference) != FALSE) {
    ::GetWindowRect(reference, &area);
  }
  RECT own = {};
  ::GetWindowRect(m_hWnd, &own);
  POINT corner = {(area.left + area.right - (own.right - own.left)) / 2,
                  (area.top + area.bottom - (own.bottom - own.top)) / 2};
  if ((GetStyle() & WS_CHILD) != 0) {
    ::ScreenToClient(::GetParent(m_hWnd), &corner);
  }
  ::SetWindowPos(m_hWnd, nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL CWnd::RedrawWindow(LPCRECT rect, HRGN region, UINT flags) {
  return ::RedrawWindow(m_hWnd, rect, region, flags);
}

CDC* CWnd::GetDC() {
  const HDC context = ::GetDC(m_hWnd);
  return context == nullptr ? nullptr : new WindowContext(context);
}

int CWnd::ReleaseDC(CDC* context) {
  if (context == nullptr) {
    return 0;
  }
  const HDC handle = context->m_hDC;
  context->m_hDC = nullptr;
  delete context;
  return ::ReleaseDC(m_hWnd, handle);
}

CMenu* CWnd::GetMenu() const {
  return CMenu::FromHandle(::GetMenu(m_hWnd));
}

BOOL CWnd::SetMenu(CMenu* menu) {
  return ::SetMenu(m_hWnd, menu == nullptr ? nullptr : menu->m_hMenu);
}

int CWnd::GetDlgItemText(int id, CString& text) const {
  const HWND control = ::GetDlgItem(m_hWnd, id);
  text.Empty();
  if (control != nullptr) {
    FromHandle(control)->GetWindowText(text);
  }
  return text.GetLength();
}
