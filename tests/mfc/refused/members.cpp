// What MFC has without documenting it, and what it does not have at all. Each line must be refused.
#include <afxcmn.h>
#include <afxdlgs.h>
#include <afxwin.h>

void updateItem(CCmdUI* item, CWnd* window) {
  item->m_nIndexMax = 3;          // refused: no member named 'm_nIndexMax'
  item->DoUpdate(window, FALSE);  // refused: no member named 'DoUpdate'
  item->m_bEnableChanged = TRUE;  // refused: no member named 'm_bEnableChanged'
  CCmdUI own;                     // refused: deleted constructor of 'CCmdUI'
}

void texts(CString text) {
  text.IsNotEmpty();           // refused: no member named 'IsNotEmpty'
  text.StartsWith(_T("a"));    // refused: no member named 'StartsWith'
  text.Format("%d", 1);        // refused: no matching member function for call to 'Format'
  text.data();                 // refused: no member named 'data'
  CString narrow = "narrow";   // refused: no viable conversion
  const char* bytes = text;    // refused: no viable conversion
  CString number(12.5, 1, 2);  // refused: no matching constructor
  if (text == nullptr) {       // refused: ambiguous
  }
  text.Format(_T("%s"), text);  // refused: cannot pass object of non-trivial type
}

void objects(CWnd* window, CListCtrl& list, CFile& file, CArchive& archive) {
  CWnd copy = *window;            // refused: deleted
  CArchive second = archive;      // refused: deleted
  window->Default();              // refused: 'Default' is a protected member
  window->OnSize(0, 1, 1);        // refused: 'OnSize' is a protected member
  window->m_pCtrlCont = nullptr;  // refused: no member named 'm_pCtrlCont'
  list.SetItemCount();            // refused: too few arguments
  list.GetItemCount(1);           // refused: too many arguments
  list.GetColumns();              // refused: no member named 'GetColumns'
  file.m_strFileName = _T("");    // refused: no member named 'm_strFileName'
  archive.m_pMappings = 0;        // refused: no member named 'm_pMappings'
  archive << 1.0L;                // refused: use of overloaded operator '<<' is ambiguous
  CFile::modeText;                // refused: no member named 'modeText'
}

void programs() {
  AfxMessageBox("narrow");     // refused: no matching function for call to 'AfxMessageBox'
  AfxGetModuleThreadState();   // refused: undeclared identifier 'AfxGetModuleThreadState'
  AfxThrowMemoryException(1);  // refused: no matching function for call to 'AfxThrowMemoryException'
  CFileDialog dialog;          // refused: no matching constructor
  CColorDialog color(0, 0, nullptr, 1);  // refused: no matching constructor
  AfxGetApp()->m_pszAppName;             // refused: incomplete type 'CWinApp'
}

void exchange(CDataExchange* data, unsigned short value, bool flag) {
  DDX_Text(data, 1, value);              // refused: no matching function for call to 'DDX_Text'
  DDX_Check(data, 1, flag);              // refused: no matching function for call to 'DDX_Check'
  DDV_MinMaxPercent(data, value, 0, 1);  // refused: undeclared identifier 'DDV_MinMaxPercent'
  data->m_idLastControl = 1;             // refused: no member named 'm_idLastControl'
}

class Dialog : public CDialog {
 public:
  void OnOK() const override;       // refused: marked 'override'
  BOOL OnInitDialog(int) override;  // refused: marked 'override'
  INT_PTR DoModal() override;
};
