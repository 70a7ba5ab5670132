// "Set Name": asks for one name, modal.
#pragma once

#include <afxwin.h>

#include "ui/WithoutMemory.h"

class CDlgNewName : public Guarded<CDialog> {
 public:
  explicit CDlgNewName(CWnd* parent = nullptr);
  ~CDlgNewName() override;

  CString m_name;  // shown at first; what was typed, after OK

 protected:
  void DoDataExchange(CDataExchange* exchange) override;
  void OnOK() override;
  void OnCancel() override;
  afx_msg void OnDestroy();
  DECLARE_MESSAGE_MAP()

 private:
  bool m_isAnswered = false;
};
