// The list of the manager: one row for each dipole, in report view.
//
// The control keeps no texts: it asks for the cells that it draws, and gets them from DipoleRows, which holds
// the dipoles as they were at the last refill. It fits a control with LVS_OWNERDATA and LVS_SHAREIMAGELISTS.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include <memory>

#include "collection/SelectedDipoles.h"
#include "ui/DipoleRows.h"
#include "ui/HostView.h"
#include "ui/Lifetime.h"
#include "ui/TwoLineHeadings.h"
#include "ui/WithoutMemory.h"

class CDipoleFacezq;
class CDlgDipoleManagerzq;

class CListDipoles : public Guarded<CListCtrl> {
 public:
  CListDipoles();
  ~CListDipoles() override;

  // Image lists, extended style and columns. For a window that was just made.
  void initialize();

  // Shows the collection as it is now. Nothing is selected afterwards; the row of the current dipole has the
  // focus mark and is in view, else the place in the list stays. Returns 1, or 0 without a collection, after
  // "Clean all items error", or when a slot is empty: the rows then end before it.
  int refill();

  // What the extended style is while a row is chosen with the current dipole shown alone.
  void setOneClickStyle();

  // The dipoles whose rows are selected, in the order of the collection.
  DipoleSlots selectedDipoles() const;

  // The same; and the dipoles' selection flags become those of their rows.
  DipoleSlots markSelectedDipoles();

  // Selects the row of the current dipole alone and brings it into view; no row when the dipole has none, or
  // when another dipole, as a copy does until the next refill, goes by that row too. Nobody is told: the user
  // has not chosen it here.
  void showCurrentDipole();

  int m_type = 1;  // kept, without a meaning here
  CDipoleFacezq* m_pDipoleFace = nullptr;
  std::unique_ptr<CImageList> m_pNormalImages;
  std::unique_ptr<CImageList> m_pSmallImages;
  HostView m_pHostWnd;
  BOOL m_showCurrentOnly = FALSE;
  CDlgDipoleManagerzq* m_pOwnerDlg = nullptr;

 protected:
  afx_msg void OnColumnClick(NMHDR* header, LRESULT* result);
  afx_msg void OnGetDispInfo(NMHDR* header, LRESULT* result);
  afx_msg void OnFindItem(NMHDR* header, LRESULT* result);
  afx_msg BOOL OnOwnChange(NMHDR* header, LRESULT* result);
  afx_msg void OnRestingPointer(NMHDR* header, LRESULT* result);
  afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
  DECLARE_MESSAGE_MAP()

 private:
  enum class Refilled { refused, cutShort, whole };

  void setRowStyle();
  void insertColumns();
  Refilled fillRows();
  void placeRows(int top, int focusBefore);
  int rowOfCurrentDipole() const;
  bool showsCurrentDipoleAlone(int row) const;
  int focusedRow() const;
  std::vector<bool> selectedRows() const;
  bool step(UINT key);
  bool selectAll();

  DipoleRows m_rows;
  TwoLineHeadings m_headings;
  bool m_changing = false;  // what the control reports meanwhile is not the user's doing
  Lifetime m_lifetime;
};
