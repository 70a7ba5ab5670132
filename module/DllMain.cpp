// What happens when a program loads dipole.dll and when it unloads it: the framework learns of the library,
// so that it finds the module's dialogs, menu and icons, and forgets it. Nothing else runs at these times.
#include <afxwin.h>

#include <afxdllx.h>

namespace {

AFX_EXTENSION_MODULE extension = {};

BOOL attach(HINSTANCE library) {
  DisableThreadLibraryCalls(library);  // threads come and go unnoticed
  if (!AfxInitExtensionModule(extension, library)) {
    return FALSE;
  }
  try {
    new CDynLinkLibrary(extension);  // the framework ends it
  } catch (...) {                    // no memory; the system that loads the library knows no exceptions
    AfxTermExtensionModule(extension);
    return FALSE;
  }
  return TRUE;
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    return attach(library);
  }
  if (reason == DLL_PROCESS_DETACH) {
    AfxTermExtensionModule(extension);
  }
  return TRUE;
}
