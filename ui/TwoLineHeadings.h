// The headings of a list, in the font of the list and with room for two lines: the columns have a fixed
// width, and a heading that is cut off loses the letter of its axis.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include "ui/WithoutMemory.h"

class TwoLineHeadings : public Guarded<CWnd> {
 public:
  TwoLineHeadings();
  ~TwoLineHeadings() override;

  // Takes over the headings of a list in report view, and has the list laid out with them. This object must
  // outlive the list's window.
  void take(CListCtrl& list);

 protected:
  afx_msg LRESULT OnLayout(WPARAM wParam, LPARAM layout);
  afx_msg void OnCustomDraw(NMHDR* header, LRESULT* result);
  DECLARE_MESSAGE_MAP()

 private:
  void draw(const NMCUSTOMDRAW& heading) const;
};
