// The host's window as a dialog keeps it, to ask it to repaint, and never beyond that window's life.
//
// A host tells nobody when its window goes, and its CWnd may go with it. So the object is never followed:
// what is kept is the window's handle, and which object the framework had attached to it. A window that died
// (WM_NCDESTROY detaches its object) is no window any more; when the system gives its handle to a new one,
// that one has another object, or none. A host that gives a temporary object, or one to which no window is
// attached in the framework's map, leaves the handle alone to go by: a new window that got it would be taken
// for the old one, and repainted.
#pragma once

#include <afxwin.h>

class HostView {
 public:
  HostView() = default;
  explicit HostView(const CWnd* window);  // as it is now; null: nothing to repaint

  // All of it, without erasing it first. Nothing when there is no window any more.
  void repaint() const;

  HWND window() const;  // null when there is none any more

 private:
  bool isThere() const;

  HWND m_window = nullptr;
  const CWnd* m_attached = nullptr;  // compared only: it may be gone; null: the handle alone is compared
};
