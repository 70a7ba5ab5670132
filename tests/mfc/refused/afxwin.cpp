// Names that <afxwin.h> alone does not bring.
#include <afxwin.h>

void names(AFX_EXTENSION_MODULE& state) {
  state.pFirstSharedClass->m_lpszClassName;  // refused: incomplete type
  CListCtrl list;                            // refused: unknown type name 'CListCtrl'
  CFileDialog files(TRUE);                   // refused: unknown type name 'CFileDialog'
  NMLISTVIEW notification;                   // refused: unknown type name 'NMLISTVIEW'
  new CDynLinkLibrary(state);                // refused: unknown type name 'CDynLinkLibrary'
}
