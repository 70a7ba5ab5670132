// An extension library as a host loads it, for the tests: it starts up as documented and brings a dialog.
#include "tests/platform/windows/extension/Extension.h"

#include <afxwin.h>

#include <stdexcept>

#include "tests/platform/windows/extension/ids.h"

namespace {

AFX_EXTENSION_MODULE module = {};

class ExtensionDialog : public CDialog {
 public:
  ExtensionDialog() : CDialog(IDD_EXTENSION) {}

 protected:
  afx_msg void OnSeven() { EndDialog(7); }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ExtensionDialog, CDialog)
ON_BN_CLICKED(IDC_SEVEN, &ExtensionDialog::OnSeven)
END_MESSAGE_MAP()

}  // namespace

extern "C" AFX_CLASS_EXPORT long long runExtensionDialog() {
  ExtensionDialog dialog;
  return dialog.DoModal();
}

extern "C" AFX_CLASS_EXPORT void throwFromExtension(int which) {
  if (which == 1) {
    AfxThrowUserException();
  }
  throw std::runtime_error("from the library");
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    if (!AfxInitExtensionModule(module, instance)) {
      return FALSE;
    }
    new CDynLinkLibrary(module);
  } else if (reason == DLL_PROCESS_DETACH) {
    AfxTermExtensionModule(module);
  }
  return TRUE;
}
