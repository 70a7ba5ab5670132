// Lists to compare the manager's with: the same dipoles, in a window of their own.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include "module/dipole.h"

class ComparedList : public CListCtrl {
 public:
  // Eleven columns in report view; `style` is added. The window is on the screen.
  explicit ComparedList(DWORD style = 0);
  ~ComparedList() override;

  // Empties the list and inserts row after row, each with its text and image and ten more texts. The list is
  // drawn once, afterwards.
  void fillWithTexts(const CDipoleFacezq& face);
  // Likewise, but that the list is to ask for every text and image when it draws them.
  void fillWithCallbacks(const CDipoleFacezq& face);
  // For LVS_OWNERDATA.
  void setCount(int rows);

 private:
  template <typename Insert>
  void fill(const CDipoleFacezq& face, Insert insertRow);
};
