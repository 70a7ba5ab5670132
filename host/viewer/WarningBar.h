// The bar above the panes that says what is shown otherwise than a file says. A click on it is told.
#pragma once

#include <afxwin.h>

#include <functional>
#include <utility>

namespace host {

class WarningBar : public CWnd {
 public:
  explicit WarningBar(std::function<void()> onClick) : m_onClick(std::move(onClick)) {}

  // In the font of another window, which must outlive it.
  BOOL createIn(CWnd* frame, UINT id, const CWnd& like);
  // Empty: there is nothing to warn of, and the bar is not shown. True when that has changed.
  bool show(const CString& text);
  const CString& text() const { return m_text; }
  // Pixels; 0 when it is not shown.
  int height() const;

 private:
  afx_msg void OnPaint();
  afx_msg void OnLButtonUp(UINT flags, CPoint at);
  DECLARE_MESSAGE_MAP()

  std::function<void()> m_onClick;
  CString m_text;
  HFONT m_font = nullptr;
};

}  // namespace host
