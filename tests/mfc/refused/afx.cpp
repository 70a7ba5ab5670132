// Names that <afx.h> alone does not bring.
#include <afx.h>

void names() {
  AfxMessageBox(_T("text"));  // refused: undeclared identifier 'AfxMessageBox'
  CPoint point;               // refused: unknown type name 'CPoint'
  CWnd* window;               // refused: unknown type name 'CWnd'
}
