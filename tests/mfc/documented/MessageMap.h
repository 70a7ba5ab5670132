// Message maps. Nothing runs here: a map is a function whose body tells whether each handler has the
// documented result and parameters.
#pragma once

#include <type_traits>

#include "documented/Window.h"

// Members that follow it need an access specifier of their own.
#define DECLARE_MESSAGE_MAP()    \
 protected:                      \
  static void checkMessageMap(); \
                                 \
 private:

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                     \
  void theClass::checkMessageMap() {                                                               \
    using ThisClass [[maybe_unused]] = theClass;                                                   \
    static_assert(std::is_base_of_v<baseClass, theClass> && !std::is_same_v<baseClass, theClass>); \
    baseClass::checkMessageMap();

#define END_MESSAGE_MAP() }

#define HANDLED_BY(Target, memberFxn, Result, ...) \
  static_cast<void>(static_cast<Result (Target::*)(__VA_ARGS__)>(memberFxn));
#define NUMBERED_HANDLER(number, Target, memberFxn, Result, ...) \
  static_cast<void>(static_cast<UINT>(number));                  \
  HANDLED_BY(Target, memberFxn, Result, __VA_ARGS__)

// Commands and notifications.
#define ON_COMMAND(commandId, memberFxn) NUMBERED_HANDLER(commandId, CCmdTarget, memberFxn, void)
#define ON_COMMAND_EX(commandId, memberFxn) NUMBERED_HANDLER(commandId, CCmdTarget, memberFxn, BOOL, UINT)
#define ON_COMMAND_RANGE(id1, id2, memberFxn) \
  static_cast<void>(static_cast<UINT>(id1));  \
  NUMBERED_HANDLER(id2, CCmdTarget, memberFxn, void, UINT)
#define ON_UPDATE_COMMAND_UI(commandId, memberFxn) \
  NUMBERED_HANDLER(commandId, CCmdTarget, memberFxn, void, CCmdUI*)
#define ON_UPDATE_COMMAND_UI_RANGE(id1, id2, memberFxn) \
  static_cast<void>(static_cast<UINT>(id1));            \
  NUMBERED_HANDLER(id2, CCmdTarget, memberFxn, void, CCmdUI*)
#define ON_CONTROL(wNotifyCode, commandId, memberFxn) \
  static_cast<void>(static_cast<UINT>(wNotifyCode));  \
  NUMBERED_HANDLER(commandId, CCmdTarget, memberFxn, void)
#define ON_CONTROL_RANGE(wNotifyCode, id1, id2, memberFxn) \
  static_cast<void>(static_cast<UINT>(wNotifyCode));       \
  static_cast<void>(static_cast<UINT>(id1));               \
  NUMBERED_HANDLER(id2, CCmdTarget, memberFxn, void, UINT)
#define ON_NOTIFY(wNotifyCode, id, memberFxn)        \
  static_cast<void>(static_cast<UINT>(wNotifyCode)); \
  NUMBERED_HANDLER(id, CCmdTarget, memberFxn, void, NMHDR*, LRESULT*)
#define ON_NOTIFY_RANGE(wNotifyCode, id1, id2, memberFxn) \
  static_cast<void>(static_cast<UINT>(wNotifyCode));      \
  static_cast<void>(static_cast<UINT>(id1));              \
  NUMBERED_HANDLER(id2, CCmdTarget, memberFxn, void, UINT, NMHDR*, LRESULT*)
#define ON_NOTIFY_REFLECT(wNotifyCode, memberFxn) \
  NUMBERED_HANDLER(wNotifyCode, CCmdTarget, memberFxn, void, NMHDR*, LRESULT*)
#define ON_NOTIFY_REFLECT_EX(wNotifyCode, memberFxn) \
  NUMBERED_HANDLER(wNotifyCode, CCmdTarget, memberFxn, BOOL, NMHDR*, LRESULT*)
#define ON_CONTROL_REFLECT(wNotifyCode, memberFxn) NUMBERED_HANDLER(wNotifyCode, CCmdTarget, memberFxn, void)
#define ON_CONTROL_REFLECT_EX(wNotifyCode, memberFxn) \
  NUMBERED_HANDLER(wNotifyCode, CCmdTarget, memberFxn, BOOL)
#define ON_UPDATE_COMMAND_UI_REFLECT(memberFxn) HANDLED_BY(CCmdTarget, memberFxn, void, CCmdUI*)
#define ON_MESSAGE(message, memberFxn) NUMBERED_HANDLER(message, CWnd, memberFxn, LRESULT, WPARAM, LPARAM)
#define ON_REGISTERED_MESSAGE(nMessageVariable, memberFxn) \
  NUMBERED_HANDLER(nMessageVariable, CWnd, memberFxn, LRESULT, WPARAM, LPARAM)

// Notifications of buttons and edit fields.
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_BN_SETFOCUS(id, memberFxn) ON_CONTROL(BN_SETFOCUS, id, memberFxn)
#define ON_BN_KILLFOCUS(id, memberFxn) ON_CONTROL(BN_KILLFOCUS, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn) ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_EN_SETFOCUS(id, memberFxn) ON_CONTROL(EN_SETFOCUS, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_EN_ERRSPACE(id, memberFxn) ON_CONTROL(EN_ERRSPACE, id, memberFxn)
#define ON_EN_MAXTEXT(id, memberFxn) ON_CONTROL(EN_MAXTEXT, id, memberFxn)
#define ON_EN_HSCROLL(id, memberFxn) ON_CONTROL(EN_HSCROLL, id, memberFxn)
#define ON_EN_VSCROLL(id, memberFxn) ON_CONTROL(EN_VSCROLL, id, memberFxn)
#define ON_STN_CLICKED(id, memberFxn) ON_CONTROL(STN_CLICKED, id, memberFxn)
#define ON_STN_DBLCLK(id, memberFxn) ON_CONTROL(STN_DBLCLK, id, memberFxn)

// Messages of the system.
#define ON_WM_ACTIVATE() HANDLED_BY(CWnd, &ThisClass::OnActivate, void, UINT, CWnd*, BOOL)
#define ON_WM_ACTIVATEAPP() HANDLED_BY(CWnd, &ThisClass::OnActivateApp, void, BOOL, DWORD)
#define ON_WM_APPCOMMAND() HANDLED_BY(CWnd, &ThisClass::OnAppCommand, void, CWnd*, UINT, UINT, UINT)
#define ON_WM_ASKCBFORMATNAME() HANDLED_BY(CWnd, &ThisClass::OnAskCbFormatName, void, UINT, LPTSTR)
#define ON_WM_CANCELMODE() HANDLED_BY(CWnd, &ThisClass::OnCancelMode, void)
#define ON_WM_CAPTURECHANGED() HANDLED_BY(CWnd, &ThisClass::OnCaptureChanged, void, CWnd*)
#define ON_WM_CHANGECBCHAIN() HANDLED_BY(CWnd, &ThisClass::OnChangeCbChain, void, HWND, HWND)
#define ON_WM_CHANGEUISTATE() HANDLED_BY(CWnd, &ThisClass::OnChangeUIState, void, UINT, UINT)
#define ON_WM_CHAR() HANDLED_BY(CWnd, &ThisClass::OnChar, void, UINT, UINT, UINT)
#define ON_WM_CHARTOITEM() HANDLED_BY(CWnd, &ThisClass::OnCharToItem, int, UINT, CListBox*, UINT)
#define ON_WM_CHILDACTIVATE() HANDLED_BY(CWnd, &ThisClass::OnChildActivate, void)
#define ON_WM_CLIPBOARDUPDATE() HANDLED_BY(CWnd, &ThisClass::OnClipboardUpdate, void)
#define ON_WM_CLOSE() HANDLED_BY(CWnd, &ThisClass::OnClose, void)
#define ON_WM_COMPACTING() HANDLED_BY(CWnd, &ThisClass::OnCompacting, void, UINT)
#define ON_WM_COMPAREITEM() HANDLED_BY(CWnd, &ThisClass::OnCompareItem, int, int, LPCOMPAREITEMSTRUCT)
#define ON_WM_CONTEXTMENU() HANDLED_BY(CWnd, &ThisClass::OnContextMenu, void, CWnd*, CPoint)
#define ON_WM_COPYDATA() HANDLED_BY(CWnd, &ThisClass::OnCopyData, BOOL, CWnd*, COPYDATASTRUCT*)
#define ON_WM_CREATE() HANDLED_BY(CWnd, &ThisClass::OnCreate, int, LPCREATESTRUCT)
#define ON_WM_CTLCOLOR() HANDLED_BY(CWnd, &ThisClass::OnCtlColor, HBRUSH, CDC*, CWnd*, UINT)
#define ON_WM_DEADCHAR() HANDLED_BY(CWnd, &ThisClass::OnDeadChar, void, UINT, UINT, UINT)
#define ON_WM_DELETEITEM() HANDLED_BY(CWnd, &ThisClass::OnDeleteItem, void, int, LPDELETEITEMSTRUCT)
#define ON_WM_DESTROY() HANDLED_BY(CWnd, &ThisClass::OnDestroy, void)
#define ON_WM_DESTROYCLIPBOARD() HANDLED_BY(CWnd, &ThisClass::OnDestroyClipboard, void)
#define ON_WM_DEVICECHANGE() HANDLED_BY(CWnd, &ThisClass::OnDeviceChange, BOOL, UINT, DWORD_PTR)
#define ON_WM_DEVMODECHANGE() HANDLED_BY(CWnd, &ThisClass::OnDevModeChange, void, LPTSTR)
#define ON_WM_DRAWCLIPBOARD() HANDLED_BY(CWnd, &ThisClass::OnDrawClipboard, void)
#define ON_WM_DRAWITEM() HANDLED_BY(CWnd, &ThisClass::OnDrawItem, void, int, LPDRAWITEMSTRUCT)
#define ON_WM_DROPFILES() HANDLED_BY(CWnd, &ThisClass::OnDropFiles, void, HDROP)
#define ON_WM_DWMCOLORIZATIONCOLORCHANGED() \
  HANDLED_BY(CWnd, &ThisClass::OnColorizationColorChanged, void, DWORD, BOOL)
#define ON_WM_DWMCOMPOSITIONCHANGED() HANDLED_BY(CWnd, &ThisClass::OnCompositionChanged, void)
#define ON_WM_DWMNCRENDERINGCHANGED() HANDLED_BY(CWnd, &ThisClass::OnNcRenderingChanged, void, BOOL)
#define ON_WM_DWMWINDOWMAXIMIZEDCHANGE() HANDLED_BY(CWnd, &ThisClass::OnWindowMaximizedChanged, void, BOOL)
#define ON_WM_ENABLE() HANDLED_BY(CWnd, &ThisClass::OnEnable, void, BOOL)
#define ON_WM_ENDSESSION() HANDLED_BY(CWnd, &ThisClass::OnEndSession, void, BOOL)
#define ON_WM_ENTERIDLE() HANDLED_BY(CWnd, &ThisClass::OnEnterIdle, void, UINT, CWnd*)
#define ON_WM_ENTERMENULOOP() HANDLED_BY(CWnd, &ThisClass::OnEnterMenuLoop, void, BOOL)
#define ON_WM_ENTERSIZEMOVE() HANDLED_BY(CWnd, &ThisClass::OnEnterSizeMove, void)
#define ON_WM_ERASEBKGND() HANDLED_BY(CWnd, &ThisClass::OnEraseBkgnd, BOOL, CDC*)
#define ON_WM_EXITMENULOOP() HANDLED_BY(CWnd, &ThisClass::OnExitMenuLoop, void, BOOL)
#define ON_WM_EXITSIZEMOVE() HANDLED_BY(CWnd, &ThisClass::OnExitSizeMove, void)
#define ON_WM_FONTCHANGE() HANDLED_BY(CWnd, &ThisClass::OnFontChange, void)
#define ON_WM_GETDLGCODE() HANDLED_BY(CWnd, &ThisClass::OnGetDlgCode, UINT)
#define ON_WM_GETMINMAXINFO() HANDLED_BY(CWnd, &ThisClass::OnGetMinMaxInfo, void, MINMAXINFO*)
#define ON_WM_HELPINFO() HANDLED_BY(CWnd, &ThisClass::OnHelpInfo, BOOL, HELPINFO*)
#define ON_WM_HOTKEY() HANDLED_BY(CWnd, &ThisClass::OnHotKey, void, UINT, UINT, UINT)
#define ON_WM_HSCROLL() HANDLED_BY(CWnd, &ThisClass::OnHScroll, void, UINT, UINT, CScrollBar*)
#define ON_WM_HSCROLLCLIPBOARD() HANDLED_BY(CWnd, &ThisClass::OnHScrollClipboard, void, CWnd*, UINT, UINT)
#define ON_WM_ICONERASEBKGND() HANDLED_BY(CWnd, &ThisClass::OnIconEraseBkgnd, void, CDC*)
#define ON_WM_INITMENU() HANDLED_BY(CWnd, &ThisClass::OnInitMenu, void, CMenu*)
#define ON_WM_INITMENUPOPUP() HANDLED_BY(CWnd, &ThisClass::OnInitMenuPopup, void, CMenu*, UINT, BOOL)
#define ON_WM_INPUT() HANDLED_BY(CWnd, &ThisClass::OnRawInput, void, UINT, HRAWINPUT)
#define ON_WM_INPUTLANGCHANGE() HANDLED_BY(CWnd, &ThisClass::OnInputLangChange, void, UINT, UINT)
#define ON_WM_INPUTLANGCHANGEREQUEST() \
  HANDLED_BY(CWnd, &ThisClass::OnInputLangChangeRequest, void, UINT, UINT)
#define ON_WM_INPUT_DEVICE_CHANGE() HANDLED_BY(CWnd, &ThisClass::OnInputDeviceChange, void, unsigned short)
#define ON_WM_KEYDOWN() HANDLED_BY(CWnd, &ThisClass::OnKeyDown, void, UINT, UINT, UINT)
#define ON_WM_KEYUP() HANDLED_BY(CWnd, &ThisClass::OnKeyUp, void, UINT, UINT, UINT)
#define ON_WM_KILLFOCUS() HANDLED_BY(CWnd, &ThisClass::OnKillFocus, void, CWnd*)
#define ON_WM_LBUTTONDBLCLK() HANDLED_BY(CWnd, &ThisClass::OnLButtonDblClk, void, UINT, CPoint)
#define ON_WM_LBUTTONDOWN() HANDLED_BY(CWnd, &ThisClass::OnLButtonDown, void, UINT, CPoint)
#define ON_WM_LBUTTONUP() HANDLED_BY(CWnd, &ThisClass::OnLButtonUp, void, UINT, CPoint)
#define ON_WM_MBUTTONDBLCLK() HANDLED_BY(CWnd, &ThisClass::OnMButtonDblClk, void, UINT, CPoint)
#define ON_WM_MBUTTONDOWN() HANDLED_BY(CWnd, &ThisClass::OnMButtonDown, void, UINT, CPoint)
#define ON_WM_MBUTTONUP() HANDLED_BY(CWnd, &ThisClass::OnMButtonUp, void, UINT, CPoint)
#define ON_WM_MDIACTIVATE() HANDLED_BY(CWnd, &ThisClass::OnMDIActivate, void, BOOL, CWnd*, CWnd*)
#define ON_WM_MEASUREITEM() HANDLED_BY(CWnd, &ThisClass::OnMeasureItem, void, int, LPMEASUREITEMSTRUCT)
#define ON_WM_MENUCHAR() HANDLED_BY(CWnd, &ThisClass::OnMenuChar, LRESULT, UINT, UINT, CMenu*)
#define ON_WM_MENUDRAG() HANDLED_BY(CWnd, &ThisClass::OnMenuDrag, UINT, UINT, CMenu*)
#define ON_WM_MENUGETOBJECT() HANDLED_BY(CWnd, &ThisClass::OnMenuGetObject, UINT, MENUGETOBJECTINFO*)
#define ON_WM_MENURBUTTONUP() HANDLED_BY(CWnd, &ThisClass::OnMenuRButtonUp, void, UINT, CMenu*)
#define ON_WM_MENUSELECT() HANDLED_BY(CWnd, &ThisClass::OnMenuSelect, void, UINT, UINT, HMENU)
#define ON_WM_MOUSEACTIVATE() HANDLED_BY(CWnd, &ThisClass::OnMouseActivate, int, CWnd*, UINT, UINT)
#define ON_WM_MOUSEHOVER() HANDLED_BY(CWnd, &ThisClass::OnMouseHover, void, UINT, CPoint)
#define ON_WM_MOUSEHWHEEL() HANDLED_BY(CWnd, &ThisClass::OnMouseHWheel, void, UINT, short, CPoint)
#define ON_WM_MOUSELEAVE() HANDLED_BY(CWnd, &ThisClass::OnMouseLeave, void)
#define ON_WM_MOUSEMOVE() HANDLED_BY(CWnd, &ThisClass::OnMouseMove, void, UINT, CPoint)
#define ON_WM_MOUSEWHEEL() HANDLED_BY(CWnd, &ThisClass::OnMouseWheel, BOOL, UINT, short, CPoint)
#define ON_WM_MOVE() HANDLED_BY(CWnd, &ThisClass::OnMove, void, int, int)
#define ON_WM_MOVING() HANDLED_BY(CWnd, &ThisClass::OnMoving, void, UINT, LPRECT)
#define ON_WM_NCACTIVATE() HANDLED_BY(CWnd, &ThisClass::OnNcActivate, BOOL, BOOL)
#define ON_WM_NCCALCSIZE() HANDLED_BY(CWnd, &ThisClass::OnNcCalcSize, void, BOOL, NCCALCSIZE_PARAMS*)
#define ON_WM_NCCREATE() HANDLED_BY(CWnd, &ThisClass::OnNcCreate, BOOL, LPCREATESTRUCT)
#define ON_WM_NCDESTROY() HANDLED_BY(CWnd, &ThisClass::OnNcDestroy, void)
#define ON_WM_NCHITTEST() HANDLED_BY(CWnd, &ThisClass::OnNcHitTest, LRESULT, CPoint)
#define ON_WM_NCLBUTTONDBLCLK() HANDLED_BY(CWnd, &ThisClass::OnNcLButtonDblClk, void, UINT, CPoint)
#define ON_WM_NCLBUTTONDOWN() HANDLED_BY(CWnd, &ThisClass::OnNcLButtonDown, void, UINT, CPoint)
#define ON_WM_NCLBUTTONUP() HANDLED_BY(CWnd, &ThisClass::OnNcLButtonUp, void, UINT, CPoint)
#define ON_WM_NCMBUTTONDBLCLK() HANDLED_BY(CWnd, &ThisClass::OnNcMButtonDblClk, void, UINT, CPoint)
#define ON_WM_NCMBUTTONDOWN() HANDLED_BY(CWnd, &ThisClass::OnNcMButtonDown, void, UINT, CPoint)
#define ON_WM_NCMBUTTONUP() HANDLED_BY(CWnd, &ThisClass::OnNcMButtonUp, void, UINT, CPoint)
#define ON_WM_NCMOUSEHOVER() HANDLED_BY(CWnd, &ThisClass::OnNcMouseHover, void, UINT, CPoint)
#define ON_WM_NCMOUSELEAVE() HANDLED_BY(CWnd, &ThisClass::OnNcMouseLeave, void)
#define ON_WM_NCMOUSEMOVE() HANDLED_BY(CWnd, &ThisClass::OnNcMouseMove, void, UINT, CPoint)
#define ON_WM_NCPAINT() HANDLED_BY(CWnd, &ThisClass::OnNcPaint, void)
#define ON_WM_NCRBUTTONDBLCLK() HANDLED_BY(CWnd, &ThisClass::OnNcRButtonDblClk, void, UINT, CPoint)
#define ON_WM_NCRBUTTONDOWN() HANDLED_BY(CWnd, &ThisClass::OnNcRButtonDown, void, UINT, CPoint)
#define ON_WM_NCRBUTTONUP() HANDLED_BY(CWnd, &ThisClass::OnNcRButtonUp, void, UINT, CPoint)
#define ON_WM_NCXBUTTONDBLCLK() HANDLED_BY(CWnd, &ThisClass::OnNcXButtonDblClk, void, short, UINT, CPoint)
#define ON_WM_NCXBUTTONDOWN() HANDLED_BY(CWnd, &ThisClass::OnNcXButtonDown, void, short, UINT, CPoint)
#define ON_WM_NCXBUTTONUP() HANDLED_BY(CWnd, &ThisClass::OnNcXButtonUp, void, short, UINT, CPoint)
#define ON_WM_NEXTMENU() HANDLED_BY(CWnd, &ThisClass::OnNextMenu, void, UINT, LPMDINEXTMENU)
#define ON_WM_NOTIFYFORMAT() HANDLED_BY(CWnd, &ThisClass::OnNotifyFormat, UINT, CWnd*, UINT)
#define ON_WM_PAINT() HANDLED_BY(CWnd, &ThisClass::OnPaint, void)
#define ON_WM_PAINTCLIPBOARD() HANDLED_BY(CWnd, &ThisClass::OnPaintClipboard, void, CWnd*, HGLOBAL)
#define ON_WM_PALETTECHANGED() HANDLED_BY(CWnd, &ThisClass::OnPaletteChanged, void, CWnd*)
#define ON_WM_PALETTEISCHANGING() HANDLED_BY(CWnd, &ThisClass::OnPaletteIsChanging, void, CWnd*)
#define ON_WM_PARENTNOTIFY() HANDLED_BY(CWnd, &ThisClass::OnParentNotify, void, UINT, LPARAM)
#define ON_WM_POWERBROADCAST() HANDLED_BY(CWnd, &ThisClass::OnPowerBroadcast, UINT, UINT, UINT)
#define ON_WM_QUERYDRAGICON() HANDLED_BY(CWnd, &ThisClass::OnQueryDragIcon, HCURSOR)
#define ON_WM_QUERYENDSESSION() HANDLED_BY(CWnd, &ThisClass::OnQueryEndSession, BOOL)
#define ON_WM_QUERYNEWPALETTE() HANDLED_BY(CWnd, &ThisClass::OnQueryNewPalette, BOOL)
#define ON_WM_QUERYOPEN() HANDLED_BY(CWnd, &ThisClass::OnQueryOpen, BOOL)
#define ON_WM_QUERYUISTATE() HANDLED_BY(CWnd, &ThisClass::OnQueryUIState, UINT)
#define ON_WM_RBUTTONDBLCLK() HANDLED_BY(CWnd, &ThisClass::OnRButtonDblClk, void, UINT, CPoint)
#define ON_WM_RBUTTONDOWN() HANDLED_BY(CWnd, &ThisClass::OnRButtonDown, void, UINT, CPoint)
#define ON_WM_RBUTTONUP() HANDLED_BY(CWnd, &ThisClass::OnRButtonUp, void, UINT, CPoint)
#define ON_WM_RENDERALLFORMATS() HANDLED_BY(CWnd, &ThisClass::OnRenderAllFormats, void)
#define ON_WM_RENDERFORMAT() HANDLED_BY(CWnd, &ThisClass::OnRenderFormat, void, UINT)
#define ON_WM_SESSIONCHANGE() HANDLED_BY(CWnd, &ThisClass::OnSessionChange, void, UINT, UINT)
#define ON_WM_SETCURSOR() HANDLED_BY(CWnd, &ThisClass::OnSetCursor, BOOL, CWnd*, UINT, UINT)
#define ON_WM_SETFOCUS() HANDLED_BY(CWnd, &ThisClass::OnSetFocus, void, CWnd*)
#define ON_WM_SETTINGCHANGE() HANDLED_BY(CWnd, &ThisClass::OnSettingChange, void, UINT, LPCTSTR)
#define ON_WM_SHOWWINDOW() HANDLED_BY(CWnd, &ThisClass::OnShowWindow, void, BOOL, UINT)
#define ON_WM_SIZE() HANDLED_BY(CWnd, &ThisClass::OnSize, void, UINT, int, int)
#define ON_WM_SIZECLIPBOARD() HANDLED_BY(CWnd, &ThisClass::OnSizeClipboard, void, CWnd*, HGLOBAL)
#define ON_WM_SIZING() HANDLED_BY(CWnd, &ThisClass::OnSizing, void, UINT, LPRECT)
#define ON_WM_SPOOLERSTATUS() HANDLED_BY(CWnd, &ThisClass::OnSpoolerStatus, void, UINT, UINT)
#define ON_WM_STYLECHANGED() HANDLED_BY(CWnd, &ThisClass::OnStyleChanged, void, int, LPSTYLESTRUCT)
#define ON_WM_STYLECHANGING() HANDLED_BY(CWnd, &ThisClass::OnStyleChanging, void, int, LPSTYLESTRUCT)
#define ON_WM_SYSCHAR() HANDLED_BY(CWnd, &ThisClass::OnSysChar, void, UINT, UINT, UINT)
#define ON_WM_SYSCOLORCHANGE() HANDLED_BY(CWnd, &ThisClass::OnSysColorChange, void)
#define ON_WM_SYSCOMMAND() HANDLED_BY(CWnd, &ThisClass::OnSysCommand, void, UINT, LPARAM)
#define ON_WM_SYSDEADCHAR() HANDLED_BY(CWnd, &ThisClass::OnSysDeadChar, void, UINT, UINT, UINT)
#define ON_WM_SYSKEYDOWN() HANDLED_BY(CWnd, &ThisClass::OnSysKeyDown, void, UINT, UINT, UINT)
#define ON_WM_SYSKEYUP() HANDLED_BY(CWnd, &ThisClass::OnSysKeyUp, void, UINT, UINT, UINT)
#define ON_WM_TCARD() HANDLED_BY(CWnd, &ThisClass::OnTCard, void, UINT, DWORD)
#define ON_WM_TIMECHANGE() HANDLED_BY(CWnd, &ThisClass::OnTimeChange, void)
#define ON_WM_TIMER() HANDLED_BY(CWnd, &ThisClass::OnTimer, void, UINT_PTR)
#define ON_WM_UNICHAR() HANDLED_BY(CWnd, &ThisClass::OnUniChar, void, UINT, UINT, UINT)
#define ON_WM_UNINITMENUPOPUP() HANDLED_BY(CWnd, &ThisClass::OnUnInitMenuPopup, void, CMenu*, UINT)
#define ON_WM_UPDATEUISTATE() HANDLED_BY(CWnd, &ThisClass::OnUpdateUIState, void, UINT, UINT)
#define ON_WM_USERCHANGED() HANDLED_BY(CWnd, &ThisClass::OnUserChanged, void)
#define ON_WM_VKEYTOITEM() HANDLED_BY(CWnd, &ThisClass::OnVKeyToItem, int, UINT, CListBox*, UINT)
#define ON_WM_VSCROLL() HANDLED_BY(CWnd, &ThisClass::OnVScroll, void, UINT, UINT, CScrollBar*)
#define ON_WM_VSCROLLCLIPBOARD() HANDLED_BY(CWnd, &ThisClass::OnVScrollClipboard, void, CWnd*, UINT, UINT)
#define ON_WM_WINDOWPOSCHANGED() HANDLED_BY(CWnd, &ThisClass::OnWindowPosChanged, void, WINDOWPOS*)
#define ON_WM_WINDOWPOSCHANGING() HANDLED_BY(CWnd, &ThisClass::OnWindowPosChanging, void, WINDOWPOS*)
#define ON_WM_WININICHANGE() HANDLED_BY(CWnd, &ThisClass::OnWinIniChange, void, LPCTSTR)
#define ON_WM_XBUTTONDBLCLK() HANDLED_BY(CWnd, &ThisClass::OnXButtonDblClk, void, UINT, UINT, CPoint)
#define ON_WM_XBUTTONDOWN() HANDLED_BY(CWnd, &ThisClass::OnXButtonDown, void, UINT, UINT, CPoint)
#define ON_WM_XBUTTONUP() HANDLED_BY(CWnd, &ThisClass::OnXButtonUp, void, UINT, UINT, CPoint)
