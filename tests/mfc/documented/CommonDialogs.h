// The dialogs for files and colours.
#pragma once

#include <windows.h>
// behind it:
#include <cderr.h>
#include <commdlg.h>

#include "documented/Dialog.h"

class CCommonDialog : public CDialog {
 public:
  explicit CCommonDialog(CWnd*);
};

class CFileDialog : public CCommonDialog {
 public:
  OPENFILENAME m_ofn;
  HRESULT AddCheckButton(DWORD, const CString&, BOOL);
  HRESULT AddComboBox(DWORD);
  HRESULT AddControlItem(DWORD, DWORD, const CString&);
  HRESULT AddEditBox(DWORD, const CString&);
  HRESULT AddMenu(DWORD, const CString&);
  HRESULT AddPushButton(DWORD, const CString&);
  HRESULT AddRadioButtonList(DWORD);
  HRESULT AddSeparator(DWORD);
  HRESULT AddText(DWORD, const CString&);
  void ApplyOFNToShellDialog();
  explicit CFileDialog(BOOL, LPCTSTR = nullptr, LPCTSTR = nullptr,
                       DWORD = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCTSTR = nullptr, CWnd* = nullptr,
                       DWORD = 0, BOOL = TRUE);
  virtual INT_PTR DoModal();
  HRESULT EnableOpenDropDown(DWORD);
  HRESULT EndVisualGroup();
  HRESULT GetCheckButtonState(DWORD, BOOL&);
  HRESULT GetEditBoxText(DWORD, CString&);
  CString GetFileExt() const;
  CString GetFileName() const;
  CString GetFileTitle() const;
  CString GetFolderPath() const;
  CString GetNextPathName(POSITION&) const;
  const OPENFILENAME& GetOFN() const;
  OPENFILENAME& GetOFN();
  CString GetPathName() const;
  BOOL GetReadOnlyPref() const;
  HRESULT GetSelectedControlItem(DWORD, DWORD&);
  POSITION GetStartPosition() const;
  void HideControl(int);
  BOOL IsPickFoldersMode() const;
  HRESULT MakeProminent(DWORD);
  HRESULT RemoveControlItem(DWORD, DWORD);
  HRESULT SetCheckButtonState(DWORD, BOOL);
  HRESULT SetControlItemText(DWORD, DWORD, const CString&);
  HRESULT SetControlLabel(DWORD, const CString&);
  void SetControlText(int, LPCSTR);
  void SetControlText(int, const wchar_t*);
  void SetDefExt(LPCSTR);
  HRESULT SetEditBoxText(DWORD, const CString&);
  BOOL SetProperties(LPCWSTR);
  HRESULT SetSelectedControlItem(DWORD, DWORD);
  void SetTemplate(UINT, UINT);
  void SetTemplate(LPCTSTR, LPCTSTR);
  HRESULT StartVisualGroup(DWORD, const CString&);
  void UpdateOFNFromShellDialog();

 protected:
  virtual void OnButtonClicked(DWORD);
  virtual void OnCheckButtonToggled(DWORD, BOOL);
  virtual void OnControlActivating(DWORD);
  virtual void OnFileNameChange();
  virtual BOOL OnFileNameOK();
  virtual void OnFolderChange();
  virtual void OnInitDone();
  virtual void OnItemSelected(DWORD, DWORD);
  virtual void OnLBSelChangedNotify(UINT, UINT, UINT);
  virtual UINT OnShareViolation(LPCTSTR);
  virtual void OnTypeChange();
};

class CColorDialog : public CCommonDialog {
 public:
  CColorDialog(COLORREF = 0, DWORD = 0, CWnd* = nullptr);
  virtual INT_PTR DoModal();
  COLORREF GetColor() const;
  static COLORREF* PASCAL GetSavedCustomColors();
  CHOOSECOLOR m_cc;
  void SetCurrentColor(COLORREF);

 protected:
  virtual BOOL OnColorOK();
};
