#include "platform/portable/WinApp.h"

#include "platform/LeastPromise.h"
#include "platform/Operator.h"
#include "platform/portable/SystemDialogs.h"

namespace {

CWinApp* theApp = nullptr;

}  // namespace

CWinApp::CWinApp(LPCTSTR appName) : m_pszAppName(appName), m_previous(theApp) {
  theApp = this;
}

CWinApp::~CWinApp() {
  if (theApp == this) {
    theApp = m_previous;
  }
}

int CWinApp::DoMessageBox(LPCTSTR text, UINT type, UINT /*helpId*/) {
  if (Operator* someone = installedOperator()) {
    return someone->answerMessage(text, type);
  }
  return askSystem(text, m_pszAppName, type);
}

CWinApp* AfxGetApp() {
  if (theApp == nullptr && !isLeastPromised()) {
    static CWinApp defaultApp;  // registers itself
    theApp = &defaultApp;
  }
  return theApp;
}

CWnd* AfxGetMainWnd() {
  const CWinApp* const program = AfxGetApp();
  return program == nullptr ? nullptr : program->m_pMainWnd;
}

int AfxMessageBox(LPCTSTR text, UINT type, UINT helpId) {
  CWinApp* const program = AfxGetApp();
  if (program == nullptr) {
    endUnpromised("a message without an application object");
  }
  return program->DoMessageBox(text, type, helpId);
}
