// Lists to compare the manager's with: the same dipoles, in a window of their own.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include "module/dipole.h"

class ComparedList : public CListCtrl {
 public:
  // Eleven columns in report view; `style` is added. The window is on the screen.
  explicit ComparedList(DWORD style = 0, CWnd* owner = nullptr);
  ~ComparedList() override;

  // Empties the list and inserts row after row, each with its text and image and ten more texts. The list is
  // drawn once, afterwards.
  void fillWithTexts(const CDipoleFacezq& face);
  // Likewise, but that the list is to ask for every text and image when it draws them.
  void fillWithCallbacks(const CDipoleFacezq& face);
  // For LVS_OWNERDATA.
  void setCount(int rows);
  // Takes a list's extended style and images, on which the system's work for a key hangs, and shows as many
  // rows.
  void lookLike(HWND list);
  // Selects a row alone, gives it the focus and brings it into view.
  void chooseRow(int row);

 private:
  template <typename Insert>
  void fill(const CDipoleFacezq& face, Insert insertRow);
};

// A list's owner that answers with a ready text for every cell and with nothing else.
class TextOwner : public CWnd {
 public:
  TextOwner();  // the window is on the screen
  ~TextOwner() override;

 protected:
  BOOL OnNotify(WPARAM id, LPARAM header, LRESULT* result) override;
};
