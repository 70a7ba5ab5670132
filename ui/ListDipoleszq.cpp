#include "ui/ListDipoleszq.h"

#include "ui/DlgDipoleManagerzq.h"
#include "ui/WindowTools.h"

BEGIN_MESSAGE_MAP(CListDipoleszq, CListDipoles)
ON_WM_LBUTTONDBLCLK()
END_MESSAGE_MAP()

CListDipoleszq::CListDipoleszq() = default;

CListDipoleszq::~CListDipoleszq() = default;

void CListDipoleszq::OnLButtonDblClk(UINT flags, CPoint point) {
  if (isOpen(m_pOwnerDlg)) {
    m_pOwnerDlg->edit();
  }
  CListDipoles::OnLButtonDblClk(flags, point);
}
