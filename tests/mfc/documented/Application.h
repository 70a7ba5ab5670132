// The program around a module, its message box, its resources, and extension libraries.
#pragma once

#include "documented/Object.h"

class COleObjectFactory;
class CWinApp;
class CWinThread;
class CWnd;

int AFXAPI AfxMessageBox(LPCTSTR, UINT = MB_OK, UINT = 0);
int AFXAPI AfxMessageBox(UINT, UINT = MB_OK, UINT = static_cast<UINT>(-1));
BOOL AFXAPI AfxExtractSubString(CString&, LPCTSTR, int, TCHAR = '\n');
void AfxFormatString1(CString&, UINT, LPCTSTR);
void AfxFormatString2(CString&, UINT, LPCTSTR, LPCTSTR);

CWinApp* AFXAPI AfxGetApp();
LPCTSTR AFXAPI AfxGetAppName();
CWnd* AFXAPI AfxGetMainWnd();
CWinThread* AfxGetThread();
HINSTANCE AFXAPI AfxGetInstanceHandle();
HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR, LPCTSTR);
HINSTANCE AfxGetResourceHandle();
void AFXAPI AfxSetResourceHandle(HINSTANCE);
BOOL AFXAPI AfxRegisterClass(WNDCLASS*);
LPCTSTR AFXAPI AfxRegisterWndClass(UINT, HCURSOR = nullptr, HBRUSH = nullptr, HICON = nullptr);

struct AFX_EXTENSION_MODULE {
  BOOL bInitialized;
  HMODULE hModule;
  HMODULE hResource;
  CRuntimeClass* pFirstSharedClass;
  COleObjectFactory* pFirstSharedFactory;
};

BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE&, HMODULE);
void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE&, BOOL = FALSE);
