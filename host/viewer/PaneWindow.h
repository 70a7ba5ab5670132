// A window that shows one picture of the head. What differs between slices and 3D is in the two classes below
// it.
#pragma once

#include <afxwin.h>

#include <cstdint>
#include <vector>

#include "host/paint/Image.h"
#include "host/viewer/PaneOwner.h"

namespace host {

class PaneWindow : public CWnd {
 public:
  PaneWindow(PaneOwner& owner, int number) : m_owner(owner), m_number(number) {}

  BOOL createIn(CWnd* frame, UINT id);

  // The picture as it is on the screen.
  virtual const Image& picture() = 0;
  virtual void fit() = 0;

 protected:
  enum class Drag { none, left, right, pan };

  PaneOwner& owner() { return m_owner; }

  virtual void resize(int width, int height) = 0;
  virtual void pan(int columns, int rows) = 0;
  virtual void zoom(double factor, CPoint at) = 0;
  virtual void turnWheel(int notches) = 0;
  virtual void press(CPoint at) = 0;  // the left button, before it is known to be dragged
  virtual void dragLeft(CPoint at, CPoint by) = 0;
  virtual void dragRight(CPoint by) = 0;
  virtual void click(CPoint at) = 0;  // the left button went up where it went down
  virtual void point(CPoint at) = 0;  // the pointer moves over the picture
  virtual bool handleKey(UINT key, bool shift) = 0;

 private:
  void begin(Drag drag, CPoint at);
  void end();
  void copyRows(const Image& image);
  void paintPicture(CDC& context);

  afx_msg void OnPaint();
  afx_msg BOOL OnEraseBkgnd(CDC* context);
  afx_msg void OnSize(UINT type, int width, int height);
  afx_msg void OnLButtonDown(UINT flags, CPoint at);
  afx_msg void OnLButtonUp(UINT flags, CPoint at);
  afx_msg void OnLButtonDblClk(UINT flags, CPoint at);
  afx_msg void OnRButtonDown(UINT flags, CPoint at);
  afx_msg void OnRButtonUp(UINT flags, CPoint at);
  afx_msg void OnMButtonDown(UINT flags, CPoint at);
  afx_msg void OnMButtonUp(UINT flags, CPoint at);
  afx_msg void OnMouseMove(UINT flags, CPoint at);
  afx_msg LRESULT OnMouseLeave(WPARAM wParam, LPARAM lParam);
  afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint at);
  afx_msg void OnCaptureChanged(CWnd* next);
  afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
  afx_msg void OnSetFocus(CWnd* before);
  afx_msg void OnKillFocus(CWnd* next);
  afx_msg LRESULT OnGetDlgCode(WPARAM wParam, LPARAM lParam);
  DECLARE_MESSAGE_MAP()

  PaneOwner& m_owner;
  int m_number;
  Drag m_drag = Drag::none;
  CPoint m_from;  // where the button went down
  CPoint m_last;  // where the pointer was last
  bool m_isMoved = false;
  int m_wheel = 0;                   // what is left of a notch
  std::vector<std::uint8_t> m_rows;  // the picture as the system wants it
};

}  // namespace host
