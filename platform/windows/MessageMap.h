// Message maps: the macros that tie messages, commands and notifications to members of a class.
//
//   class CMyDialog : public CDialog {
//     afx_msg void OnApply();
//     DECLARE_MESSAGE_MAP()
//   };
//   BEGIN_MESSAGE_MAP(CMyDialog, CDialog)
//     ON_BN_CLICKED(IDC_APPLY, &CMyDialog::OnApply)
//   END_MESSAGE_MAP()
//
// A handler is given as a pointer to a member, with the documented signature; the ON_WM_ macros take the
// member of the documented name. The compiler refuses a handler whose signature does not fit.
#pragma once

#include "platform/windows/MessageHandlers.h"

#define afx_msg

#define DECLARE_MESSAGE_MAP()                       \
 protected:                                         \
  const MessageMap* GetMessageMap() const override; \
  static const MessageMap* GetThisMessageMap();

#define BEGIN_MESSAGE_MAP(theClass, baseClass)        \
  const MessageMap* theClass::GetMessageMap() const { \
    return GetThisMessageMap();                       \
  }                                                   \
  const MessageMap* theClass::GetThisMessageMap() {   \
    using ThisClass [[maybe_unused]] = theClass;      \
    using BaseClass = baseClass;                      \
    static const MessageEntry entries[] = {
#define END_MESSAGE_MAP()                                                  \
  { 0, 0, 0, 0, nullptr }                                                  \
  }                                                                        \
  ;                                                                        \
  static const MessageMap map = {BaseClass::GetThisMessageMap(), entries}; \
  return &map;                                                             \
  }

// Commands of menus and controls: void f(), and void f(UINT id) for ranges.
#define ON_CONTROL(code, id, member)                                                  \
  {WM_COMMAND, static_cast<UINT>(code), static_cast<UINT>(id), static_cast<UINT>(id), \
   &handlers::command<member>},
#define ON_CONTROL_RANGE(code, id, last, member)                                        \
  {WM_COMMAND, static_cast<UINT>(code), static_cast<UINT>(id), static_cast<UINT>(last), \
   &handlers::commandWithId<member>},
#define ON_COMMAND(id, member) ON_CONTROL(CN_COMMAND, id, member)
#define ON_COMMAND_RANGE(id, last, member) ON_CONTROL_RANGE(CN_COMMAND, id, last, member)
#define ON_BN_CLICKED(id, member) ON_CONTROL(BN_CLICKED, id, member)
#define ON_BN_DOUBLECLICKED(id, member) ON_CONTROL(BN_DOUBLECLICKED, id, member)
#define ON_EN_CHANGE(id, member) ON_CONTROL(EN_CHANGE, id, member)
#define ON_EN_UPDATE(id, member) ON_CONTROL(EN_UPDATE, id, member)
#define ON_EN_SETFOCUS(id, member) ON_CONTROL(EN_SETFOCUS, id, member)
#define ON_EN_KILLFOCUS(id, member) ON_CONTROL(EN_KILLFOCUS, id, member)
#define ON_STN_CLICKED(id, member) ON_CONTROL(STN_CLICKED, id, member)
#define ON_CBN_SELCHANGE(id, member) ON_CONTROL(CBN_SELCHANGE, id, member)

// void f(CCmdUI*)
#define ON_UPDATE_COMMAND_UI(id, member) \
  {updateMessage, 0, static_cast<UINT>(id), static_cast<UINT>(id), &handlers::update<member>},
#define ON_UPDATE_COMMAND_UI_RANGE(id, last, member) \
  {updateMessage, 0, static_cast<UINT>(id), static_cast<UINT>(last), &handlers::update<member>},

// void f(NMHDR*, LRESULT*); the _EX forms return BOOL, FALSE to pass the message on.
#define ON_NOTIFY(code, id, member)                                                  \
  {WM_NOTIFY, static_cast<UINT>(code), static_cast<UINT>(id), static_cast<UINT>(id), \
   &handlers::notify<member>},
#define ON_NOTIFY_EX(code, id, member) ON_NOTIFY(code, id, member)
#define ON_NOTIFY_REFLECT(code, member) \
  {reflectedMessages + WM_NOTIFY, static_cast<UINT>(code), 0, UINT_MAX, &handlers::notify<member>},
#define ON_NOTIFY_REFLECT_EX(code, member) ON_NOTIFY_REFLECT(code, member)
// void f(); the _EX form returns BOOL.
#define ON_CONTROL_REFLECT(code, member) \
  {reflectedMessages + WM_COMMAND, static_cast<UINT>(code), 0, UINT_MAX, &handlers::command<member>},
#define ON_CONTROL_REFLECT_EX(code, member) ON_CONTROL_REFLECT(code, member)

// LRESULT f(WPARAM, LPARAM)
#define ON_MESSAGE(number, member) {number, 0, 0, UINT_MAX, &handlers::message<member>},

#define PLATFORM_ON_WM(message, adaptor, member) \
  {message, 0, 0, UINT_MAX, &handlers::adaptor<&ThisClass::member>},

#define ON_WM_CREATE() PLATFORM_ON_WM(WM_CREATE, create, OnCreate)
#define ON_WM_DESTROY() PLATFORM_ON_WM(WM_DESTROY, plain, OnDestroy)
#define ON_WM_NCDESTROY() PLATFORM_ON_WM(WM_NCDESTROY, plain, OnNcDestroy)
#define ON_WM_CLOSE() PLATFORM_ON_WM(WM_CLOSE, plain, OnClose)
#define ON_WM_PAINT() PLATFORM_ON_WM(WM_PAINT, plain, OnPaint)
#define ON_WM_ERASEBKGND() PLATFORM_ON_WM(WM_ERASEBKGND, erase, OnEraseBkgnd)
#define ON_WM_SIZE() PLATFORM_ON_WM(WM_SIZE, typeAndTwo, OnSize)
#define ON_WM_MOVE() PLATFORM_ON_WM(WM_MOVE, two, OnMove)
#define ON_WM_SHOWWINDOW() PLATFORM_ON_WM(WM_SHOWWINDOW, show, OnShowWindow)
#define ON_WM_ENABLE() PLATFORM_ON_WM(WM_ENABLE, enable, OnEnable)
#define ON_WM_GETMINMAXINFO() PLATFORM_ON_WM(WM_GETMINMAXINFO, minMax, OnGetMinMaxInfo)
#define ON_WM_TIMER() PLATFORM_ON_WM(WM_TIMER, timer, OnTimer)
#define ON_WM_SETFOCUS() PLATFORM_ON_WM(WM_SETFOCUS, window, OnSetFocus)
#define ON_WM_KILLFOCUS() PLATFORM_ON_WM(WM_KILLFOCUS, window, OnKillFocus)
#define ON_WM_CONTEXTMENU() PLATFORM_ON_WM(WM_CONTEXTMENU, contextMenu, OnContextMenu)
#define ON_WM_INITMENUPOPUP() PLATFORM_ON_WM(WM_INITMENUPOPUP, initMenuPopup, OnInitMenuPopup)
#define ON_WM_KEYDOWN() PLATFORM_ON_WM(WM_KEYDOWN, key, OnKeyDown)
#define ON_WM_KEYUP() PLATFORM_ON_WM(WM_KEYUP, key, OnKeyUp)
#define ON_WM_CHAR() PLATFORM_ON_WM(WM_CHAR, key, OnChar)
#define ON_WM_MOUSEMOVE() PLATFORM_ON_WM(WM_MOUSEMOVE, mouse, OnMouseMove)
#define ON_WM_LBUTTONDOWN() PLATFORM_ON_WM(WM_LBUTTONDOWN, mouse, OnLButtonDown)
#define ON_WM_LBUTTONUP() PLATFORM_ON_WM(WM_LBUTTONUP, mouse, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() PLATFORM_ON_WM(WM_LBUTTONDBLCLK, mouse, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() PLATFORM_ON_WM(WM_RBUTTONDOWN, mouse, OnRButtonDown)
#define ON_WM_RBUTTONUP() PLATFORM_ON_WM(WM_RBUTTONUP, mouse, OnRButtonUp)
#define ON_WM_MBUTTONDOWN() PLATFORM_ON_WM(WM_MBUTTONDOWN, mouse, OnMButtonDown)
#define ON_WM_MBUTTONUP() PLATFORM_ON_WM(WM_MBUTTONUP, mouse, OnMButtonUp)
#define ON_WM_MOUSEWHEEL() PLATFORM_ON_WM(WM_MOUSEWHEEL, wheel, OnMouseWheel)
#define ON_WM_CAPTURECHANGED() PLATFORM_ON_WM(WM_CAPTURECHANGED, otherWindow, OnCaptureChanged)
#define ON_WM_HSCROLL() PLATFORM_ON_WM(WM_HSCROLL, scroll, OnHScroll)
#define ON_WM_VSCROLL() PLATFORM_ON_WM(WM_VSCROLL, scroll, OnVScroll)
#define ON_WM_DROPFILES() PLATFORM_ON_WM(WM_DROPFILES, drop, OnDropFiles)
#define ON_WM_QUERYENDSESSION() PLATFORM_ON_WM(WM_QUERYENDSESSION, question, OnQueryEndSession)
