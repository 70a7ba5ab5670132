// CWnd: a window of the system's, whose messages go through the object's message map.
//
// An object is attached to at most one window, a window to at most one object. Rectangles and points are
// pixels, y down: of the screen, or of the client area of the window that is named.
#pragma once

#include "platform/portable/Geometry.h"
#include "platform/portable/String.h"
#include "platform/windows/CmdTarget.h"
#include "platform/windows/CommonControls.h"

class CDataExchange;
class CDC;
class CMenu;
class CScrollBar;

class CWnd : public CCmdTarget {
 public:
  CWnd();
  ~CWnd() override;  // destroys the window

  // The object of a window: the one attached to it, else a temporary one, which lives as long as the window
  // does. Null for no window.
  static CWnd* FromHandle(HWND window);
  static CWnd* FromHandlePermanent(HWND window);  // null when no object is attached
  static void DeleteTempMap();                    // ends the temporary objects; their windows stay
  BOOL Attach(HWND window);
  HWND Detach();
  HWND GetSafeHwnd() const { return m_hWnd; }
  operator HWND() const { return m_hWnd; }  // implicit, as in MFC

  // Makes a window. A null class name of Create is not for this class: name a registered class.
  virtual BOOL Create(LPCTSTR className, LPCTSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                      void* context = nullptr);
  BOOL CreateEx(DWORD extendedStyle, LPCTSTR className, LPCTSTR title, DWORD style, const RECT& rect,
                CWnd* parent, UINT id, LPVOID parameter = nullptr);
  virtual BOOL DestroyWindow();

  // Attaches to a window that is there already and takes its messages first.
  BOOL SubclassWindow(HWND window);
  BOOL SubclassDlgItem(UINT id, CWnd* parent);
  HWND UnsubclassWindow();

  // State.
  BOOL ShowWindow(int command) { return ::ShowWindow(m_hWnd, command); }
  BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
  BOOL EnableWindow(BOOL on = TRUE) { return ::EnableWindow(m_hWnd, on); }
  BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
  BOOL IsIconic() const { return ::IsIconic(m_hWnd); }
  BOOL IsZoomed() const { return ::IsZoomed(m_hWnd); }
  DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongPtrW(m_hWnd, GWL_STYLE)); }
  DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE)); }
  // Returns whether the style changed; `flags` of SetWindowPos, where not 0, redraw the frame.
  BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
  BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0);
  CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
  static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
  CWnd* SetActiveWindow() { return FromHandle(::SetActiveWindow(m_hWnd)); }
  BOOL SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }
  UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds, TIMERPROC function) {
    return ::SetTimer(m_hWnd, id, milliseconds, function);
  }
  BOOL KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }
  CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
  static CWnd* GetCapture() { return FromHandle(::GetCapture()); }
  void DragAcceptFiles(BOOL accept = TRUE) { ::DragAcceptFiles(m_hWnd, accept); }

  // Text.
  void SetWindowText(LPCTSTR text);
  int GetWindowText(LPTSTR text, int size) const { return ::GetWindowTextW(m_hWnd, text, size); }
  void GetWindowText(CString& text) const;
  int GetWindowTextLength() const { return ::GetWindowTextLengthW(m_hWnd); }
  int MessageBox(LPCTSTR text, LPCTSTR caption = nullptr, UINT type = MB_OK);
  HICON SetIcon(HICON icon, BOOL big);

  // Place.
  void GetClientRect(LPRECT rect) const { ::GetClientRect(m_hWnd, rect); }
  void GetWindowRect(LPRECT rect) const { ::GetWindowRect(m_hWnd, rect); }
  void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
  void MoveWindow(LPCRECT rect, BOOL repaint = TRUE);
  BOOL SetWindowPos(const CWnd* behind, int x, int y, int width, int height, UINT flags);
  BOOL GetWindowPlacement(WINDOWPLACEMENT* placement) const;
  BOOL SetWindowPlacement(const WINDOWPLACEMENT* placement);
  void ScreenToClient(LPPOINT point) const { ::ScreenToClient(m_hWnd, point); }
  void ScreenToClient(LPRECT rect) const { ::MapWindowPoints(nullptr, m_hWnd, pointsOf(rect), 2); }
  void ClientToScreen(LPPOINT point) const { ::ClientToScreen(m_hWnd, point); }
  void ClientToScreen(LPRECT rect) const { ::MapWindowPoints(m_hWnd, nullptr, pointsOf(rect), 2); }
  void CenterWindow(CWnd* over = nullptr);  // null: the parent or owner, else
                                            // the work area of the screen

  // Drawing.
  void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
  void InvalidateRect(LPCRECT rect, BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, rect, erase); }
  void UpdateWindow() { ::UpdateWindow(m_hWnd); }
  void SetRedraw(BOOL on = TRUE) { SendMessage(WM_SETREDRAW, static_cast<WPARAM>(on)); }
  BOOL RedrawWindow(LPCRECT rect = nullptr, HRGN region = nullptr,
                    UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
  CDC* GetDC();
  int ReleaseDC(CDC* context);

  // Messages.
  LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageW(m_hWnd, message, wParam, lParam);
  }
  BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return ::PostMessageW(m_hWnd, message, wParam, lParam);
  }

  // Relations.
  CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
  CWnd* GetOwner() const { return FromHandle(::GetWindow(m_hWnd, GW_OWNER)); }
  CWnd* GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
  int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
  CMenu* GetMenu() const;
  BOOL SetMenu(CMenu* menu);

  // Controls by their number.
  void SetDlgItemText(int id, LPCTSTR text) { ::SetDlgItemTextW(m_hWnd, id, text); }
  int GetDlgItemText(int id, CString& text) const;
  int GetDlgItemText(int id, LPTSTR text, int size) const {
    return static_cast<int>(::GetDlgItemTextW(m_hWnd, id, text, size));
  }
  void CheckDlgButton(int id, UINT check) { ::CheckDlgButton(m_hWnd, id, check); }
  UINT IsDlgButtonChecked(int id) const { return ::IsDlgButtonChecked(m_hWnd, id); }
  LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return ::SendDlgItemMessageW(m_hWnd, id, message, wParam, lParam);
  }

  // Moves data between controls and members through DoDataExchange: TRUE reads the controls. FALSE when a
  // control holds what is not valid; the user has then been told. While data goes to the controls, what they
  // report is not passed to handlers of commands and notifications.
  BOOL UpdateData(BOOL saveAndValidate = TRUE);

  // A chance to take a message before it is dispatched; TRUE: it is done with.
  virtual BOOL PreTranslateMessage(MSG* message);

  HWND m_hWnd = nullptr;

 protected:
  virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
  virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
  virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
  virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
  virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
  virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
  virtual void DoDataExchange(CDataExchange* exchange);
  virtual void PreSubclassWindow();
  virtual void PostNcDestroy();
  // The message that is being handled goes to what stands behind this object.
  LRESULT Default();
  static const MSG* GetCurrentMessage();

  // The default handlers: each passes the message on.
  int OnCreate(LPCREATESTRUCT create);
  void OnDestroy();
  void OnNcDestroy();
  void OnClose();
  void OnPaint();
  BOOL OnEraseBkgnd(CDC* context);
  void OnSize(UINT type, int width, int height);
  void OnMove(int x, int y);
  void OnShowWindow(BOOL show, UINT status);
  void OnEnable(BOOL enable);
  void OnGetMinMaxInfo(MINMAXINFO* info);
  void OnTimer(UINT_PTR id);
  void OnSetFocus(CWnd* before);
  void OnKillFocus(CWnd* next);
  void OnContextMenu(CWnd* window,
                     CPoint point);  // of the screen; (-1, -1) from the keyboard
  void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu);
  void OnKeyDown(UINT key, UINT repeat, UINT flags);
  void OnKeyUp(UINT key, UINT repeat, UINT flags);
  void OnChar(UINT unit, UINT repeat, UINT flags);
  void OnMouseMove(UINT flags, CPoint point);
  void OnLButtonDown(UINT flags, CPoint point);
  void OnLButtonUp(UINT flags, CPoint point);
  void OnLButtonDblClk(UINT flags, CPoint point);
  void OnRButtonDown(UINT flags, CPoint point);
  void OnRButtonUp(UINT flags, CPoint point);
  void OnMButtonDown(UINT flags, CPoint point);
  void OnMButtonUp(UINT flags, CPoint point);
  // 120 for each notch, away from the user positive; the point is one of the screen. Whether it was handled.
  BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
  void OnCaptureChanged(CWnd* next);
  void OnHScroll(UINT code, UINT position, CScrollBar* control);  // SB_ codes; null: the window's own bar
  void OnVScroll(UINT code, UINT position, CScrollBar* control);
  void OnDropFiles(HDROP files);
  BOOL OnQueryEndSession();

 private:
  friend LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  friend class CreationHook;

  static LPPOINT pointsOf(LPRECT rect) { return reinterpret_cast<LPPOINT>(rect); }
  void takeMessages();
  void giveMessagesBack();
  LRESULT handleGuarded(UINT message, WPARAM wParam, LPARAM lParam);
  virtual void onWindowGone() {}

  WNDPROC m_behind = nullptr;  // what took the window's messages before this object
};

// The window procedure of every window that an object is attached to.
LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Offers a message, before it is dispatched, to its window and that window's parents (PreTranslateMessage).
// TRUE: it is done with. Message loops call it, so that dialogs get their keys.
BOOL AfxPreTranslateMessage(MSG* message);
