#include "platform/windows/FrameWnd.h"

#include <map>

#include "platform/LeastPromise.h"
#include "platform/portable/WinApp.h"
#include "platform/windows/DynLinkLibrary.h"
#include "platform/windows/MessageMap.h"
#include "platform/windows/WindowExceptions.h"

namespace {

// The name of a class of these arguments. It stays where it is.
LPCTSTR registered(UINT style, HCURSOR cursor, HBRUSH background, HICON icon) {
  static std::map<CString, ATOM> classes;  // their names stay where they are
  CString name;
  name.Format(_T("Platform:%x:%p:%p:%p"), style, static_cast<void*>(cursor), static_cast<void*>(background),
              static_cast<void*>(icon));
  const auto found = classes.find(name);
  if (found != classes.end()) {
    return found->first;
  }
  WNDCLASSW description = {};
  description.style = style;
  description.lpfnWndProc = &::DefWindowProcW;
  description.hInstance = AfxGetInstanceHandle();
  description.hIcon = icon;
  description.hCursor = cursor;
  description.hbrBackground = background;
  description.lpszClassName = name;
  const ATOM atom = ::RegisterClassW(&description);
  if (atom == 0) {
    AfxThrowResourceException();
  }
  return classes.emplace(name, atom).first->first;
}

}  // namespace

LPCTSTR AfxRegisterWndClass(UINT style, HCURSOR cursor, HBRUSH background, HICON icon) {
  const LPCTSTR name = registered(style, cursor, background, icon);
  if (!isLeastPromised()) {
    return name;
  }
  static TCHAR onlyUntilNext[64];
  ::lstrcpynW(onlyUntilNext, name, 64);
  return onlyUntilNext;
}

const MessageMap* CFrameWnd::GetMessageMap() const {
  return GetThisMessageMap();
}

const MessageMap* CFrameWnd::GetThisMessageMap() {
  using ThisClass = CFrameWnd;
  static const MessageEntry entries[] = {ON_WM_CLOSE() ON_WM_INITMENUPOPUP(){0, 0, 0, 0, nullptr}};
  static const MessageMap map = {CWnd::GetThisMessageMap(), entries};
  return &map;
}

CFrameWnd::CFrameWnd() = default;

CFrameWnd::~CFrameWnd() = default;

BOOL CFrameWnd::LoadFrame(UINT id, DWORD style, CWnd* parent, void* /*context*/) {
  const LPCTSTR name = MAKEINTRESOURCEW(id);
  const HINSTANCE resources = AfxGetResourceHandle();
  TCHAR title[256] = {};
  ::LoadStringW(resources, id, title, 256);
  const HICON icon = ::LoadIconW(resources, name);
  const LPCTSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)),
                                                reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1), icon);
  const RECT place = {CW_USEDEFAULT, CW_USEDEFAULT, 0, 0};
  m_hAccelTable = ::LoadAcceleratorsW(resources, name);
  if (!CreateEx(0, className, title, style, place, parent, 0)) {
    return FALSE;
  }
  ::SetMenu(m_hWnd, ::LoadMenuW(resources, name));  // goes with the window
  return TRUE;
}

BOOL CFrameWnd::PreTranslateMessage(MSG* message) {
  return m_hAccelTable != nullptr && message->message >= WM_KEYFIRST && message->message <= WM_KEYLAST &&
         ::TranslateAcceleratorW(m_hWnd, m_hAccelTable, message) != 0;
}

void CFrameWnd::OnClose() {
  DestroyWindow();
}

void CFrameWnd::OnInitMenuPopup(CMenu* menu, UINT /*index*/, BOOL systemMenu) {
  if (menu == nullptr || systemMenu != FALSE) {
    return;
  }
  CCmdUI state;
  state.m_pMenu = menu;
  state.m_nIndexMax = menu->GetMenuItemCount();
  for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; ++state.m_nIndex) {
    state.m_nID = menu->GetMenuItemID(static_cast<int>(state.m_nIndex));
    if (state.m_nID != 0 && state.m_nID != UINT_MAX) {
      state.DoUpdate(this, TRUE);
    }
    const UINT count = menu->GetMenuItemCount();
    if (count < state.m_nIndexMax) {
      state.m_nIndex -= state.m_nIndexMax - count;  // the next item moved up
    }
    state.m_nIndexMax = count;
  }
}

void CFrameWnd::PostNcDestroy() {
  CWinApp* const program = AfxGetApp();
  if (program->m_pMainWnd == this) {
    program->m_pMainWnd = nullptr;
    ::PostQuitMessage(0);
  }
  delete this;
}
