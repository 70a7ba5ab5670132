#include "ui/DlgNewName.h"

#include "ui/resource.h"

BEGIN_MESSAGE_MAP(CDlgNewName, CDialog)
ON_WM_DESTROY()
END_MESSAGE_MAP()

CDlgNewName::CDlgNewName(CWnd* parent) : Guarded(IDD_NEW_NAME, parent) {}

CDlgNewName::~CDlgNewName() = default;

void CDlgNewName::DoDataExchange(CDataExchange* exchange) {
  CDialog::DoDataExchange(exchange);
  DDX_Text(exchange, IDC_NEW_NAME, m_name);
}

void CDlgNewName::OnOK() {
  UpdateData(TRUE);
  m_isAnswered = true;
  CDialog::OnOK();
}

void CDlgNewName::OnCancel() {
  m_isAnswered = true;
  CDialog::OnCancel();
}

// The window goes with the manager's: without this, the loop that waits for an answer would wait on.
void CDlgNewName::OnDestroy() {
  if (!m_isAnswered) {
    EndDialog(IDABORT);
  }
  CDialog::OnDestroy();
}
