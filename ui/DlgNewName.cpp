#include "ui/DlgNewName.h"

#include "ui/resource.h"

CDlgNewName::CDlgNewName(CWnd* parent) : CDialog(IDD_NEW_NAME, parent) {}

CDlgNewName::~CDlgNewName() = default;

void CDlgNewName::DoDataExchange(CDataExchange* exchange) {
  CDialog::DoDataExchange(exchange);
  DDX_Text(exchange, IDC_NEW_NAME, m_name);
}

void CDlgNewName::OnOK() {
  UpdateData(TRUE);
  CDialog::OnOK();
}
