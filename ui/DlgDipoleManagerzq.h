// "Dipole Manager": lists every dipole of the collection and offers the commands of the menu.
//
// A command works on the dipoles whose rows are selected. It changes the set, fills the list again and tells
// the host once, by the update-viewers callback. During modal dialogs, messages and callbacks the host may
// destroy collection and manager.
#pragma once

#include <afxwin.h>

#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "ui/DlgDipoleEditor.h"
#include "ui/HostView.h"
#include "ui/Lifetime.h"
#include "ui/ListDipoleszq.h"
#include "ui/OwnedIcon.h"
#include "ui/WithoutMemory.h"

class CDipoleFacezq;

class CDlgDipoleManagerzq : public Guarded<CDialog> {
 public:
  explicit CDlgDipoleManagerzq(CWnd* parent = nullptr);
  ~CDlgDipoleManagerzq() override;

  // Everything anew: list, caption, check boxes, and the editors that are open. Returns the list's result, 0
  // without a collection.
  int refresh();

  // The list alone, and the editors that are open. Returns the list's result.
  int refill();

  // Opens the editor on the current dipole. Nothing without a collection.
  void edit();

  // Runs what makes the list report changed rows: for one key it reports the row that was left, the one that
  // was chosen, and its focus. They are followed once, unless the host or the list's rows answer to each.
  void asOneChoice(const std::function<void()>& changeRows);

  void takeFocus();        // to the list
  void leaveCollection();  // hides, and forgets the callbacks

  HostView m_pHostWnd;  // the window to repaint
  CDipoleFacezq* m_pDipoleFace = nullptr;
  CListDipoleszq m_listDipoles;
  BOOL m_showCurrentOnly = FALSE;
  int (*m_cbfDipoleXYZ)(double x, double y, double z, double latency) = nullptr;  // mm, ms
  int (*m_cbfUpdateViewers)(bool) = nullptr;
  BOOL m_dynamicUpdate = FALSE;
  std::unique_ptr<CDlgDipoleEditor> m_pDlgEditor;
  BOOL m_showOrientation = TRUE;
  CString m_title = _T("Dipole Manager");

 protected:
  void DoDataExchange(CDataExchange* exchange) override;
  BOOL OnInitDialog() override;
  void PostNcDestroy() override;
  afx_msg void OnSize(UINT type, int width, int height);
  afx_msg void OnContextMenu(CWnd* window, CPoint point);
  afx_msg void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu);
  afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
  afx_msg void OnEnter();
  afx_msg void OnExit();
  afx_msg void OnShow();
  afx_msg void OnHide();
  afx_msg void OnDelete();
  afx_msg void OnRowChanged(NMHDR* header, LRESULT* result);
  afx_msg void OnRowsChanged(NMHDR* header, LRESULT* result);
  afx_msg void OnShowAll();
  afx_msg void OnHideAll();
  afx_msg void OnShowCurrentOnly();
  afx_msg void OnUpdateShowCurrentOnly(CCmdUI* item);
  afx_msg void OnEdit();
  afx_msg void OnImportCtf();
  afx_msg void OnNameSelected();
  afx_msg void OnColorSelected();
  afx_msg void OnAverageAs();
  afx_msg void OnAverageZip();
  afx_msg void OnExportExcel();
  afx_msg void OnDynamicUpdate();
  afx_msg void OnShowOrientation();
  DECLARE_MESSAGE_MAP()

 private:
  struct Choice {
    int row;
    bool isChosen;
  };
  class Gathering;

  template <typename Change>
  void change(Change command);
  template <typename Dialog, typename Follow>
  void ask(Dialog& dialog, Follow follow);
  template <typename Change>
  void changeChosen(const ChosenDipoles& chosen, Change command);
  void notify() const;
  void initialize();
  void showIcon();
  void bindParts();
  void bindEditor();
  bool answersToEachRow() const;
  void chooseRow(int row, bool isChosen);
  void showOnlyDipoleOfRow(int row);
  bool takeSelection();
  void showChosenInEditors();
  void tellPositionOfRow(int row);
  int dipoleOfRow(int row) const;
  CPoint menuPoint(CPoint point) const;

  OwnedIcon m_bigIcon;
  OwnedIcon m_smallIcon;
  std::array<COLORREF, 16> m_customColors;  // the colour dialog's, for as long as the manager lives
  bool m_isGathering = false;
  std::optional<Choice> m_gathered;  // meanwhile
  Lifetime m_lifetime;
};
