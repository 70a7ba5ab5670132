// The panel beside the panes: what is shown, its size and colour, the depth of slices, filters. Check boxes
// have the numbers of the menu's commands and send them to the main window; everything else changes the
// session's view.
#pragma once

#include <afxwin.h>

#include <functional>
#include <utility>

#include "host/session/Session.h"
#include "host/viewer/resource.h"

namespace host {

class ViewPanel : public CDialog {
 public:
  ViewPanel(Session& session, std::function<void()> onChange)
      : m_session(session), m_onChange(std::move(onChange)) {}

  BOOL createIn(CWnd* frame);
  // Pixels that the panel takes when it is so high; in a low one a scroll bar stands beside the controls.
  int widthFor(int height) const;
  // When the keyboard has gone to a control that is scrolled away: it comes back.
  void bringFocusIntoView();

  // Brings the controls up to date with the session. What the user is typing stays.
  void refresh();

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override {}      // Enter
  void OnCancel() override {}  // Escape

 private:
  void showSwitches();
  void showSliders();
  void showColourChoice();
  void showLimits();
  void changed();

  void scrollTo(int top);

  afx_msg void OnSwitch(UINT id);
  afx_msg void OnSize(UINT type, int width, int height);
  afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* control);
  afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint at);
  afx_msg void OnHScroll(UINT code, UINT position, CScrollBar* control);
  afx_msg void OnColorBy();
  afx_msg void OnLimit(UINT id);
  afx_msg void OnLeaveField(UINT id);
  afx_msg void OnClearFilter();
  DECLARE_MESSAGE_MAP()

  Session& m_session;
  std::function<void()> m_onChange;
  bool m_isFilling = false;  // what the controls report is not the user's
  CRect m_whole;             // where all controls are in sight, pixels
  int m_top = 0;             // the row of it that is uppermost now
  HWND m_focus = nullptr;    // that has been brought into view
};

}  // namespace host
