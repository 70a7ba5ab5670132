// "Dipole Edit": the current dipole, field by field, and stepping through the set.
//
// Locations are mm in the host's head frame, the size is in pixels, the merge radius in mm. A number or text
// that the user did not change is not written back; the check "Show" is.
#pragma once

#include <afxwin.h>

#include "collection/DipoleTable.h"
#include "ui/ColorButton.h"
#include "ui/EditTexts.h"
#include "ui/HostView.h"
#include "ui/Lifetime.h"
#include "ui/WithoutMemory.h"

class CDipoleFace;
class CDipoleFacezq;
class CDipoleszq;
class CListDipoleszq;

class CDlgDipoleEditor : public Guarded<CDialog> {
 public:
  explicit CDlgDipoleEditor(CWnd* parent = nullptr);
  ~CDlgDipoleEditor() override;

  // Shows the current dipole: caption "Current dipole (Total dipoles):%d(%d)" with its index from 0, fields
  // and colour. Without one the fields keep their values, but for the merge radius. Returns 1, or 0 without
  // a collection.
  int refresh();

  // After changes made elsewhere: as refresh, but what the user has typed stays as long as the same dipole is
  // the current one.
  void follow();

  void leaveCollection();  // hides

  // Before it is shown: beside these windows, as far as they are there and on the screen, and never over the
  // first of them while there is room. Where the user has put it since, it stays unless it covers that one.
  void placeBeside(HWND manager, HWND host);

  double m_size = 0.0;
  double m_locationX = 0.0;
  double m_locationY = 0.0;
  double m_locationZ = 0.0;
  int m_showOrientation = 0;
  double m_orientationX = 0.0;
  double m_orientationY = 0.0;
  double m_orientationZ = 0.0;
  double m_orientationLength = 0.0;
  float m_mergeRadius = 0.0F;  // 1 to 9000
  HostView m_pHostWnd;         // the window to repaint
  CDipoleFacezq* m_pDipoleFace = nullptr;
  ColorButton m_colorButton;
  CListDipoleszq* m_pList = nullptr;  // the manager's, when it is the manager's editor
  CString m_label = _T("Dipole Label");

 protected:
  void DoDataExchange(CDataExchange* exchange) override;
  BOOL OnInitDialog() override;
  void OnOK() override;
  afx_msg void OnAdd();
  afx_msg void OnDelete();
  afx_msg void OnNext();
  afx_msg void OnPrevious();
  afx_msg void OnApply();
  afx_msg void OnColor();
  afx_msg void OnShowOrientation();
  afx_msg void OnChangeMergeRadius();
  afx_msg LRESULT OnActivation(WPARAM state, LPARAM other);
  DECLARE_MESSAGE_MAP()

 private:
  class Writing;

  enum class Applied { nothing, refused, all, andGone };  // the last: this object is gone

  Applied apply();
  void storeInto(CDipoleszq& dipole) const;
  void fillFrom(const CDipoleszq& dipole);
  void chooseColor(const Lifetime::Watch& watch);
  template <typename Change>
  void changeSet(Change change);
  void step(CDipoleszq* (CDipoleFace::*direction)());

  DipoleTable::Hold m_shown;  // held, so that no other dipole can be mistaken for it
  bool m_isBehind = false;    // a refresh broke off: what is shown need not be the current dipole
  bool m_isPlaced = false;
  bool m_isWriting = false;
  EditTexts m_texts;
  Lifetime m_lifetime;
};
