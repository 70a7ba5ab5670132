#include "platform/windows/DynLinkLibrary.h"

namespace {

CDynLinkLibrary* newest = nullptr;
HINSTANCE resourceHandle = nullptr;  // null: the program's

}  // namespace

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL /*system*/)
    : m_hModule(state.hModule), m_hResource(state.hResource), m_pNextDLL(newest) {
  newest = this;
}

CDynLinkLibrary::~CDynLinkLibrary() {
  for (CDynLinkLibrary** link = &newest; *link != nullptr; link = &(*link)->m_pNextDLL) {
    if (*link == this) {
      *link = m_pNextDLL;
      return;
    }
  }
}

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module) {
  if (state.bInitialized == FALSE) {
    state.hModule = module;
    state.hResource = module;
    state.bInitialized = TRUE;
  }
  return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL /*all*/) {
  if (state.bInitialized == FALSE) {
    return;
  }
  CDynLinkLibrary* library = newest;
  while (library != nullptr) {
    CDynLinkLibrary* const next = library->m_pNextDLL;
    if (library->m_hModule == state.hModule) {
      delete library;
    }
    library = next;
  }
  if (resourceHandle == state.hResource) {
    resourceHandle = nullptr;
  }
  state.bInitialized = FALSE;
}

HINSTANCE AfxGetInstanceHandle() {
  return ::GetModuleHandleW(nullptr);
}

HINSTANCE AfxGetResourceHandle() {
  return resourceHandle == nullptr ? AfxGetInstanceHandle() : resourceHandle;
}

void AfxSetResourceHandle(HINSTANCE resources) {
  resourceHandle = resources;
}

HINSTANCE AfxFindResourceHandle(LPCTSTR name, LPCTSTR type) {
  const HINSTANCE first = AfxGetResourceHandle();
  if (::FindResourceW(first, name, type) != nullptr) {
    return first;
  }
  for (const CDynLinkLibrary* library = newest; library != nullptr; library = library->m_pNextDLL) {
    if (library->m_hResource != nullptr && ::FindResourceW(library->m_hResource, name, type) != nullptr) {
      return library->m_hResource;
    }
  }
  return first;
}
