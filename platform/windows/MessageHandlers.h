// What stands between a message and the member that handles it: the parameters are taken apart as documented
// for each message. Not MFC names; the macros of MessageMap.h use them.
#pragma once

#include <concepts>
#include <utility>

#include "platform/portable/Geometry.h"
#include "platform/windows/CmdTarget.h"
#include "platform/windows/CmdUI.h"
#include "platform/windows/Menu.h"
#include "platform/windows/ScrollBar.h"
#include "platform/windows/WindowDC.h"
#include "platform/windows/Wnd.h"

namespace handlers {

template <class Class, class Result, class... Parameters>
Class* self(CCmdTarget* target, Result (Class::* /*member*/)(Parameters...)) {
  return static_cast<Class*>(target);
}

// Calls the member. A member that returns BOOL says itself whether the message has been handled.
template <auto member, class... Arguments>
bool run(CCmdTarget* target, Arguments... arguments) {
  auto* const object = self(target, member);
  if constexpr (std::same_as<decltype((object->*member)(arguments...)), BOOL>) {
    return (object->*member)(arguments...) != FALSE;
  } else {
    (object->*member)(arguments...);
    return true;
  }
}

template <auto member>
bool command(CCmdTarget* target, HandlerCall& /*call*/) {
  return run<member>(target);
}
template <auto member>
bool commandWithId(CCmdTarget* target, HandlerCall& call) {
  return run<member>(target, call.id);
}
template <auto member>
bool update(CCmdTarget* target, HandlerCall& call) {
  return run<member>(target, static_cast<CCmdUI*>(call.extra));
}
template <auto member>
bool notify(CCmdTarget* target, HandlerCall& call) {
  return run<member>(target, static_cast<NMHDR*>(call.extra), &call.result);
}
template <auto member>
bool message(CCmdTarget* target, HandlerCall& call) {
  call.result = (self(target, member)->*member)(call.wParam, call.lParam);
  return true;
}

template <auto member>
bool plain(CCmdTarget* target, HandlerCall& /*call*/) {
  (self(target, member)->*member)();
  return true;
}
template <auto member>
bool create(CCmdTarget* target, HandlerCall& call) {
  call.result = (self(target, member)->*member)(reinterpret_cast<LPCREATESTRUCT>(call.lParam));
  return true;
}
template <auto member>
bool erase(CCmdTarget* target, HandlerCall& call) {
  BorrowedDC context(reinterpret_cast<HDC>(call.wParam));
  call.result = (self(target, member)->*member)(&context);
  return true;
}
// Two signed numbers in the words of lParam.
template <auto member>
bool two(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(static_cast<short>(LOWORD(call.lParam)),
                                  static_cast<short>(HIWORD(call.lParam)));
  return true;
}
template <auto member>
bool typeAndTwo(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(static_cast<UINT>(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam));
  return true;
}
template <auto member>
bool show(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(static_cast<BOOL>(call.wParam), static_cast<UINT>(call.lParam));
  return true;
}
template <auto member>
bool enable(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(static_cast<BOOL>(call.wParam));
  return true;
}
template <auto member>
bool minMax(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(reinterpret_cast<MINMAXINFO*>(call.lParam));
  return true;
}
template <auto member>
bool timer(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(static_cast<UINT_PTR>(call.wParam));
  return true;
}
template <auto member>
bool window(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(CWnd::FromHandle(reinterpret_cast<HWND>(call.wParam)));
  return true;
}
template <auto member>
bool contextMenu(CCmdTarget* target, HandlerCall& call) {
  const CPoint point(static_cast<short>(LOWORD(call.lParam)), static_cast<short>(HIWORD(call.lParam)));
  (self(target, member)->*member)(CWnd::FromHandle(reinterpret_cast<HWND>(call.wParam)), point);
  return true;
}
template <auto member>
bool initMenuPopup(CCmdTarget* target, HandlerCall& call) {
  CMenu* const menu = CMenu::FromHandle(reinterpret_cast<HMENU>(call.wParam));
  (self(target, member)->*member)(menu, LOWORD(call.lParam), static_cast<BOOL>(HIWORD(call.lParam)));
  return true;
}
template <auto member>
bool key(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(static_cast<UINT>(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam));
  return true;
}
template <auto member>
bool mouse(CCmdTarget* target, HandlerCall& call) {
  const CPoint point(static_cast<short>(LOWORD(call.lParam)), static_cast<short>(HIWORD(call.lParam)));
  (self(target, member)->*member)(static_cast<UINT>(call.wParam), point);
  return true;
}
template <auto member>
bool wheel(CCmdTarget* target, HandlerCall& call) {
  const CPoint point(static_cast<short>(LOWORD(call.lParam)), static_cast<short>(HIWORD(call.lParam)));
  call.result =
      (self(target, member)->*member)(LOWORD(call.wParam), static_cast<short>(HIWORD(call.wParam)), point);
  return call.result != FALSE;
}
template <auto member>
bool otherWindow(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(CWnd::FromHandle(reinterpret_cast<HWND>(call.lParam)));
  return true;
}
template <auto member>
bool scroll(CCmdTarget* target, HandlerCall& call) {
  auto* const control = static_cast<CScrollBar*>(CWnd::FromHandle(reinterpret_cast<HWND>(call.lParam)));
  (self(target, member)->*member)(LOWORD(call.wParam), HIWORD(call.wParam), control);
  return true;
}
template <auto member>
bool drop(CCmdTarget* target, HandlerCall& call) {
  (self(target, member)->*member)(reinterpret_cast<HDROP>(call.wParam));
  return true;
}
template <auto member>
bool question(CCmdTarget* target, HandlerCall& call) {
  call.result = (self(target, member)->*member)();
  return true;
}

}  // namespace handlers
