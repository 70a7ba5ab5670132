// The start-up of an extension library, and where resources are looked for: in the program first, then in the
// extension libraries, the one that was loaded last first.
//
// When its library is attached: AfxInitExtensionModule, and if it succeeds, new CDynLinkLibrary(module). When
// it is detached: AfxTermExtensionModule.
#pragma once

#include "platform/portable/Object.h"
#include "platform/portable/Types.h"

class CDynLinkLibrary;

struct AFX_EXTENSION_MODULE {
  BOOL bInitialized;
  HMODULE hModule;
  HMODULE hResource;
};

// FALSE: the library must refuse to be loaded.
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module);
// Ends the library's CDynLinkLibrary. Every handle and object of the library must be gone by then.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all = FALSE);

// Makes a library's resources found. Made by new; AfxTermExtensionModule ends it.
class CDynLinkLibrary : public CObject {
 public:
  explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system = FALSE);
  ~CDynLinkLibrary() override;

  HMODULE m_hModule;
  HMODULE m_hResource;
  CDynLinkLibrary* m_pNextDLL;  // the one that was loaded before
};

HINSTANCE AfxGetInstanceHandle();  // of the program
HINSTANCE AfxGetResourceHandle();  // where resources are looked for first: the
                                   // program's, unless set
void AfxSetResourceHandle(HINSTANCE resources);
// The module that holds a resource; when none does, AfxGetResourceHandle().
HINSTANCE AfxFindResourceHandle(LPCTSTR name, LPCTSTR type);
