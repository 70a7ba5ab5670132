// The way of a message: from the system to a handler, to the control that it came from, or to what stands
// behind the object.
#include <exception>

#include "platform/LeastPromise.h"
#include "platform/Utf.h"
#include "platform/portable/WinApp.h"
#include "platform/windows/DataExchange.h"
#include "platform/windows/WindowExceptions.h"
#include "platform/windows/Wnd.h"

namespace {

// The message that is being handled; handlers may send others meanwhile.
thread_local MSG current = {};

class CurrentMessage {
 public:
  CurrentMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) : m_before(current) {
    current.hwnd = window;
    current.message = message;
    current.wParam = wParam;
    current.lParam = lParam;
  }
  ~CurrentMessage() { current = m_before; }
  CurrentMessage(const CurrentMessage&) = delete;
  CurrentMessage& operator=(const CurrentMessage&) = delete;

 private:
  MSG m_before;
};

// The window whose controls are being written: what they report meanwhile is not the user's.
HWND locked = nullptr;

class NotificationLock {
 public:
  explicit NotificationLock(HWND window) : m_before(locked) { locked = window; }
  ~NotificationLock() { locked = m_before; }
  NotificationLock(const NotificationLock&) = delete;
  NotificationLock& operator=(const NotificationLock&) = delete;

 private:
  HWND m_before;
};

bool isLocked(HWND window) {
  return locked == window && !isLeastPromised();
}

// The framework's own exceptions may leave the handlers of two messages, nothing else may leave any.
void mayLeaveHandler(UINT message) {
  if (isLeastPromised() && message != WM_CREATE && message != WM_PAINT) {
    endUnpromised("an exception leaves a handler");
  }
}

}  // namespace

LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  CWnd* const object = CWnd::FromHandlePermanent(window);
  if (object == nullptr) {
    return ::DefWindowProcW(window, message, wParam, lParam);
  }
  const LRESULT result = object->handleGuarded(message, wParam, lParam);
  if (message == WM_NCDESTROY && CWnd::FromHandlePermanent(window) == object) {
    object->giveMessagesBack();
    object->Detach();
    object->onWindowGone();
    object->PostNcDestroy();  // may end the object
  }
  return result;
}

// No exception may pass through the system's frames: it is told and ends here.
LRESULT CWnd::handleGuarded(UINT message, WPARAM wParam, LPARAM lParam) {
  const CurrentMessage handled(m_hWnd, message, wParam, lParam);
  try {
    return WindowProc(message, wParam, lParam);
  } catch (CException* exception) {
    mayLeaveHandler(message);
    exception->ReportError();
    exception->Delete();
  } catch (const std::exception& exception) {
    mayLeaveHandler(0);
    AfxMessageBox(fromUtf8(exception.what()), MB_ICONSTOP);
  }
  return message == WM_CREATE ? -1 : 0;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  LRESULT result = 0;
  if (OnWndMsg(message, wParam, lParam, &result)) {
    return result;
  }
  return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  if (m_behind != nullptr) {
    return ::CallWindowProcW(m_behind, m_hWnd, message, wParam, lParam);
  }
  return ::DefWindowProcW(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
  return DefWindowProc(current.message, current.wParam, current.lParam);
}

const MSG* CWnd::GetCurrentMessage() {
  return &current;
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
  if (message == WM_COMMAND) {
    *result = 0;
    return OnCommand(wParam, lParam);
  }
  if (message == WM_NOTIFY) {
    return OnNotify(wParam, lParam, result);
  }
  HandlerCall call;
  call.wParam = wParam;
  call.lParam = lParam;
  if (!handle(message, 0, call)) {
    return FALSE;
  }
  *result = call.result;
  return TRUE;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
  const UINT id = LOWORD(wParam);
  const HWND control = reinterpret_cast<HWND>(lParam);
  if (control == nullptr) {
    return OnCmdMsg(id, CN_COMMAND, nullptr, nullptr);
  }
  if (isLocked(m_hWnd)) {
    return TRUE;
  }
  CWnd* const sender = FromHandlePermanent(control);
  LRESULT result = 0;
  if (sender != nullptr && sender->OnChildNotify(WM_COMMAND, wParam, lParam, &result)) {
    return TRUE;
  }
  return OnCmdMsg(id, HIWORD(wParam), nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
  auto* const header = reinterpret_cast<NMHDR*>(lParam);
  if (isLocked(m_hWnd)) {
    return TRUE;
  }
  CWnd* const sender = FromHandlePermanent(header->hwndFrom);
  if (sender != nullptr && sender->OnChildNotify(WM_NOTIFY, wParam, lParam, result)) {
    return TRUE;
  }
  NotifyExtra extra = {header, result};
  const int code = static_cast<int>(MAKELONG(header->code, WM_NOTIFY));
  return OnCmdMsg(static_cast<UINT>(header->idFrom), code, &extra, nullptr);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
  HandlerCall call;
  call.wParam = wParam;
  call.lParam = lParam;
  if (message == WM_NOTIFY) {
    auto* const header = reinterpret_cast<NMHDR*>(lParam);
    call.extra = header;
    const bool handled = handle(reflectedMessages + WM_NOTIFY, header->code, call);
    *result = call.result;
    return handled ? TRUE : FALSE;
  }
  if (message == WM_COMMAND) {
    return handle(reflectedMessages + WM_COMMAND, HIWORD(wParam), call) ? TRUE : FALSE;
  }
  return FALSE;
}

BOOL CWnd::UpdateData(BOOL saveAndValidate) {
  CDataExchange exchange(this, saveAndValidate);
  const NotificationLock lock(m_hWnd);
  try {
    DoDataExchange(&exchange);
    return TRUE;
  } catch (CUserException* exception) {
    exception->Delete();
  }
  return FALSE;
}

void CWnd::DoDataExchange(CDataExchange* /*exchange*/) {}

void CWnd::PreSubclassWindow() {}

void CWnd::PostNcDestroy() {}

BOOL CWnd::PreTranslateMessage(MSG* /*message*/) {
  return FALSE;
}

BOOL AfxPreTranslateMessage(MSG* message) {
  for (HWND window = message->hwnd; window != nullptr; window = ::GetParent(window)) {
    CWnd* const object = CWnd::FromHandlePermanent(window);
    if (object != nullptr && object->PreTranslateMessage(message) != FALSE) {
      return TRUE;
    }
  }
  return FALSE;
}

int CWnd::OnCreate(LPCREATESTRUCT /*create*/) {
  return static_cast<int>(Default());
}
void CWnd::OnDestroy() {
  Default();
}
void CWnd::OnNcDestroy() {
  Default();
}
void CWnd::OnClose() {
  Default();
}
void CWnd::OnPaint() {
  Default();
}
BOOL CWnd::OnEraseBkgnd(CDC* /*context*/) {
  return static_cast<BOOL>(Default());
}
void CWnd::OnSize(UINT /*type*/, int /*width*/, int /*height*/) {
  Default();
}
void CWnd::OnMove(int /*x*/, int /*y*/) {
  Default();
}
void CWnd::OnShowWindow(BOOL /*show*/, UINT /*status*/) {
  Default();
}
void CWnd::OnEnable(BOOL /*enable*/) {
  Default();
}
void CWnd::OnGetMinMaxInfo(MINMAXINFO* /*info*/) {
  Default();
}
void CWnd::OnTimer(UINT_PTR /*id*/) {
  Default();
}
void CWnd::OnSetFocus(CWnd* /*before*/) {
  Default();
}
void CWnd::OnKillFocus(CWnd* /*next*/) {
  Default();
}
void CWnd::OnContextMenu(CWnd* /*window*/, CPoint /*point*/) {
  Default();
}
void CWnd::OnInitMenuPopup(CMenu* /*menu*/, UINT /*index*/, BOOL /*systemMenu*/) {
  Default();
}
void CWnd::OnKeyDown(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
  Default();
}
void CWnd::OnKeyUp(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
  Default();
}
void CWnd::OnChar(UINT /*unit*/, UINT /*repeat*/, UINT /*flags*/) {
  Default();
}
void CWnd::OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
  Default();
}
void CWnd::OnLButtonDown(UINT /*flags*/, CPoint /*point*/) {
  Default();
}
void CWnd::OnLButtonUp(UINT /*flags*/, CPoint /*point*/) {
  Default();
}
void CWnd::OnLButtonDblClk(UINT /*flags*/, CPoint /*point*/) {
  Default();
}
void CWnd::OnRButtonDown(UINT /*flags*/, CPoint /*point*/) {
  Default();
}
void CWnd::OnRButtonUp(UINT /*flags*/, CPoint /*point*/) {
  Default();
}
void CWnd::OnMButtonDown(UINT /*flags*/, CPoint /*point*/) {
  Default();
}
void CWnd::OnMButtonUp(UINT /*flags*/, CPoint /*point*/) {
  Default();
}
BOOL CWnd::OnMouseWheel(UINT /*flags*/, short /*delta*/, CPoint /*point*/) {
  return static_cast<BOOL>(Default());
}
void CWnd::OnCaptureChanged(CWnd* /*next*/) {
  Default();
}
void CWnd::OnHScroll(UINT /*code*/, UINT /*position*/, CScrollBar* /*control*/) {
  Default();
}
void CWnd::OnVScroll(UINT /*code*/, UINT /*position*/, CScrollBar* /*control*/) {
  Default();
}
void CWnd::OnDropFiles(HDROP /*files*/) {
  Default();
}
BOOL CWnd::OnQueryEndSession() {
  return static_cast<BOOL>(Default());
}
