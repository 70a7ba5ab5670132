// The list that is created: a double click edits the current dipole.
#pragma once

#include "ui/ListDipoles.h"

class CListDipoleszq : public CListDipoles {
 public:
  CListDipoleszq();
  ~CListDipoleszq() override;

 protected:
  afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
  DECLARE_MESSAGE_MAP()
};
