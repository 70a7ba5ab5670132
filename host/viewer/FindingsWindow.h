// The window that lists what the audits of the imported files found, by file, and has their remedies.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "host/session/Session.h"
#include "host/viewer/resource.h"

namespace host {

class FindingsWindow : public CDialog {
 public:
  // What the user wants: the remedies of findings, in turn; `unit` when positions are to be taken in it.
  using Repair =
      std::function<void(const std::vector<StandingFinding>& chosen, std::optional<LengthUnit> unit)>;

  FindingsWindow(Session& session, Repair repair) : m_session(session), m_repair(std::move(repair)) {}

  BOOL createIn(CWnd* frame);
  void open();     // on top, with the first wrong finding chosen
  void refresh();  // to the session's findings

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override {}  // Enter
  void OnCancel() override { ShowWindow(SW_HIDE); }

 private:
  void addColumns();
  void choose(int row);
  std::vector<StandingFinding> chosen() const;
  CString textOf(const StandingFinding& finding) const;
  void showChosen();
  void repair(std::optional<LengthUnit> unit);

  afx_msg void OnRepair() { repair(std::nullopt); }
  afx_msg void OnCentimetre() { repair(LengthUnit::centimetre); }
  afx_msg void OnMillimetre() { repair(LengthUnit::millimetre); }
  afx_msg void OnChosen(NMHDR* notice, LRESULT* result);
  DECLARE_MESSAGE_MAP()

  Session& m_session;
  Repair m_repair;
  CListCtrl m_list;
  std::vector<StandingFinding> m_shown;
  bool m_isFilling = false;
};

}  // namespace host
