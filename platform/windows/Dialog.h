// CDialog: a dialog made from a template, modal or modeless.
#pragma once

#include "platform/windows/Wnd.h"

class CDialog : public CWnd {
 public:
  CDialog();  // for Create
  // For DoModal. `parent` is disabled meanwhile; null: the program's main window, else its active one.
  explicit CDialog(UINT templateId, CWnd* parent = nullptr);
  explicit CDialog(LPCTSTR templateName, CWnd* parent = nullptr);
  ~CDialog() override;

  // Makes the dialog modeless and returns at once. A null parent means the main window (CWinApp::m_pMainWnd)
  // when there is one. It is shown when the template says WS_VISIBLE. FALSE: there is no such template.
  virtual BOOL Create(UINT templateId, CWnd* parent = nullptr);
  virtual BOOL Create(LPCTSTR templateName, CWnd* parent = nullptr);
  virtual BOOL CreateIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent = nullptr, void* unused = nullptr);
  // For DoModal: a template in memory, which must last until the dialog is closed.
  BOOL InitModalIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent = nullptr);

  // Shows the dialog and handles messages until EndDialog is called, whose result is returned. -1: it could
  // not be made, or its window was destroyed. It may be destroyed meanwhile, window and object.
  virtual INT_PTR DoModal();
  // Ends DoModal. A modeless dialog is hidden only.
  void EndDialog(int result);

  void NextDlgCtrl() const { ::SendMessageW(m_hWnd, WM_NEXTDLGCTL, 0, FALSE); }
  void PrevDlgCtrl() const { ::SendMessageW(m_hWnd, WM_NEXTDLGCTL, 1, FALSE); }
  void GotoDlgCtrl(CWnd* control) {
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control->m_hWnd), TRUE);
  }
  DWORD GetDefID() const { return static_cast<DWORD>(SendMessage(DM_GETDEFID)); }
  void SetDefID(UINT id) { SendMessage(DM_SETDEFID, id); }

  // Data goes to the controls. TRUE: the first control gets the focus.
  virtual BOOL OnInitDialog();
  BOOL PreTranslateMessage(MSG* message) override;  // keys of dialogs: Tab, Enter, Escape, mnemonics

 protected:
  virtual void OnOK();      // reads the controls and, when they are valid, EndDialog(IDOK)
  virtual void OnCancel();  // EndDialog(IDCANCEL)
  BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
  const MessageMap* GetMessageMap() const override;
  static const MessageMap* GetThisMessageMap();

 private:
  struct Modal;

  using CWnd::Create;
  bool make(HINSTANCE module, LPCDLGTEMPLATE dialogTemplate, HWND parent);
  bool makeNamed(LPCTSTR templateName, HWND owner);
  bool makeModal(HWND owner);
  void onWindowGone() override;
  static void runLoop(const Modal& modal, HWND window);

  LPCTSTR m_templateName = nullptr;
  LPCDLGTEMPLATE m_template = nullptr;
  CWnd* m_parent = nullptr;
  Modal* m_modal = nullptr;  // while DoModal runs
};
