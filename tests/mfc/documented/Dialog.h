// Dialogs, their data exchange, and the plain controls.
#pragma once

#include "documented/Window.h"

class CImageList;

class CDataExchange {
 public:
  CDataExchange(const CDataExchange&) = delete;
  CDataExchange& operator=(const CDataExchange&) = delete;
  CDataExchange(CWnd*, BOOL);
  void Fail();
  BOOL m_bSaveAndValidate;
  CWnd* m_pDlgWnd;
  HWND PrepareCtrl(int);
  HWND PrepareEditCtrl(int);
};

class CDialog : public CWnd {
 public:
  explicit CDialog(LPCTSTR, CWnd* = nullptr);
  explicit CDialog(UINT, CWnd* = nullptr);
  CDialog();
  virtual BOOL Create(LPCTSTR, CWnd* = nullptr);
  virtual BOOL Create(UINT, CWnd* = nullptr);
  virtual BOOL CreateIndirect(LPCDLGTEMPLATE, CWnd* = nullptr, void* = nullptr);
  virtual BOOL CreateIndirect(HGLOBAL, CWnd* = nullptr);
  virtual INT_PTR DoModal();
  void EndDialog(int);
  DWORD GetDefID() const;
  void GotoDlgCtrl(CWnd*);
  BOOL InitModalIndirect(LPCDLGTEMPLATE, CWnd* = nullptr, void* = nullptr);
  BOOL InitModalIndirect(HGLOBAL, CWnd* = nullptr);
  void MapDialogRect(LPRECT) const;
  void NextDlgCtrl() const;
  virtual BOOL OnInitDialog();
  virtual void OnSetFont(CFont*);
  void PrevDlgCtrl() const;
  void SetDefID(UINT);
  void SetHelpID(UINT);

 protected:
  virtual void OnCancel();
  virtual void OnOK();
};

class CStatic : public CWnd {
 public:
  virtual BOOL Create(LPCTSTR, DWORD, const RECT&, CWnd*, UINT = 0xffff);
  CStatic();
  virtual void DrawItem(LPDRAWITEMSTRUCT);
  HBITMAP GetBitmap() const;
  HCURSOR GetCursor();
  HENHMETAFILE GetEnhMetaFile() const;
  HICON GetIcon() const;
  HBITMAP SetBitmap(HBITMAP);
  HCURSOR SetCursor(HCURSOR);
  HENHMETAFILE SetEnhMetaFile(HENHMETAFILE);
  HICON SetIcon(HICON);
};

class CButton : public CWnd {
 public:
  CButton();
  virtual BOOL Create(LPCTSTR, DWORD, const RECT&, CWnd*, UINT);
  virtual void DrawItem(LPDRAWITEMSTRUCT);
  HBITMAP GetBitmap() const;
  UINT GetButtonStyle() const;
  int GetCheck() const;
  HCURSOR GetCursor();
  HICON GetIcon() const;
  BOOL GetIdealSize(SIZE*);
  CString GetNote() const;
  BOOL GetNote(LPTSTR, UINT*) const;
  UINT GetNoteLength() const;
  TCHAR GetSplitGlyph() const;
  CImageList* GetSplitImageList() const;
  BOOL GetSplitSize(LPSIZE) const;
  UINT GetSplitStyle() const;
  UINT GetState() const;
  BOOL GetTextMargin(RECT*);
  HBITMAP SetBitmap(HBITMAP);
  void SetButtonStyle(UINT, BOOL = TRUE);
  void SetCheck(int);
  HCURSOR SetCursor(HCURSOR);
  BOOL SetDropDownState(BOOL);
  BOOL SetElevationRequired(BOOL);
  HICON SetIcon(HICON);
  BOOL SetNote(LPCTSTR);
  BOOL SetSplitGlyph(TCHAR);
  BOOL SetSplitImageList(CImageList*);
  BOOL SetSplitSize(LPSIZE);
  BOOL SetSplitStyle(UINT);
  void SetState(BOOL);
  BOOL SetTextMargin(RECT*);
};

class CEdit : public CWnd {
 public:
  BOOL CanUndo() const;
  CEdit();
  int CharFromPos(CPoint) const;
  void Clear();
  void Copy();
  virtual BOOL Create(DWORD, const RECT&, CWnd*, UINT);
  void Cut();
  void EmptyUndoBuffer();
  BOOL FmtLines(BOOL);
  BOOL GetCueBanner(LPWSTR, int) const;
  CString GetCueBanner() const;
  int GetFirstVisibleLine() const;
  HLOCAL GetHandle() const;
  BOOL GetHighlight(int*, int*) const;
  UINT GetLimitText() const;
  int GetLine(int, LPTSTR) const;
  int GetLine(int, LPTSTR, int) const;
  int GetLineCount() const;
  DWORD GetMargins() const;
  BOOL GetModify() const;
  TCHAR GetPasswordChar() const;
  void GetRect(LPRECT) const;
  DWORD GetSel() const;
  void GetSel(int&, int&) const;
  void LimitText(int = 0);
  int LineFromChar(int = -1) const;
  int LineIndex(int = -1) const;
  int LineLength(int = -1) const;
  void LineScroll(int, int = 0);
  void Paste();
  CPoint PosFromChar(UINT) const;
  void ReplaceSel(LPCTSTR, BOOL = FALSE);
  BOOL SetCueBanner(LPCWSTR);
  BOOL SetCueBanner(LPCWSTR, BOOL = FALSE);
  void SetHandle(HLOCAL);
  void SetHighlight(int, int);
  void SetLimitText(UINT);
  void SetMargins(UINT, UINT);
  void SetModify(BOOL = TRUE);
  void SetPasswordChar(TCHAR);
  BOOL SetReadOnly(BOOL = TRUE);
  void SetRect(LPCRECT);
  void SetRectNP(LPCRECT);
  void SetSel(DWORD, BOOL = FALSE);
  void SetSel(int, int, BOOL = FALSE);
  void SetTabStops();
  BOOL SetTabStops(const int&);
  BOOL SetTabStops(int, LPINT);
  BOOL Undo();
};
