#include "platform/portable/WinApp.h"

#include <cstdio>

#include "platform/Operator.h"
#include "platform/Utf.h"

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
  const std::string line = toUtf8(text) + '\n';
  static_cast<void>(std::fputs(line.c_str(), stderr));  // where else could a failure be told?
  return carefulAnswer(type);
}

CWinApp* AfxGetApp() {
  if (theApp == nullptr) {
    static CWinApp defaultApp;  // registers itself
    theApp = &defaultApp;
  }
  return theApp;
}

int AfxMessageBox(LPCTSTR text, UINT type, UINT helpId) {
  return AfxGetApp()->DoMessageBox(text, type, helpId);
}
