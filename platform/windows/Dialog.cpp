#include "platform/windows/Dialog.h"

#include <string>

#include "platform/LeastPromise.h"
#include "platform/portable/WinApp.h"
#include "platform/windows/CreationHook.h"
#include "platform/windows/DynLinkLibrary.h"
#include "platform/windows/Idle.h"
#include "platform/windows/MessageMap.h"

// Lies on the stack of DoModal: it is still there when the dialog's object is not.
struct CDialog::Modal {
  bool running = true;
  bool objectGone = false;
  INT_PTR result = -1;
};

namespace {

// All that a dialog does comes before it, in the object's own messages.
INT_PTR CALLBACK noProcedure(HWND /*window*/, UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  return FALSE;
}

LPCDLGTEMPLATE findTemplate(HINSTANCE module, LPCTSTR name) {
  const HRSRC found = ::FindResourceW(module, name, RT_DIALOG);
  const HGLOBAL loaded = found == nullptr ? nullptr : ::LoadResource(module, found);
  return loaded == nullptr ? nullptr : static_cast<LPCDLGTEMPLATE>(::LockResource(loaded));
}

HWND mainWindow() {
  const CWnd* const window = AfxGetMainWnd();
  return window == nullptr ? nullptr : window->m_hWnd;
}

// The window that a modal dialog stands before: never a child, and the innermost dialog of its program.
HWND modalOwner(const CWnd* parent) {
  HWND window = parent != nullptr ? parent->m_hWnd : mainWindow();
  if (window == nullptr) {
    window = ::GetActiveWindow();
  }
  if (window == nullptr) {
    return nullptr;
  }
  window = ::GetAncestor(window, GA_ROOT);
  return parent == nullptr ? ::GetLastActivePopup(window) : window;
}

class DisabledOwner {
 public:
  explicit DisabledOwner(HWND owner)
      : m_owner(owner != nullptr && ::IsWindowEnabled(owner) ? owner : nullptr) {
    ::EnableWindow(m_owner, FALSE);
  }
  ~DisabledOwner() { enable(); }
  DisabledOwner(const DisabledOwner&) = delete;
  DisabledOwner& operator=(const DisabledOwner&) = delete;

  void enable() {
    if (m_owner != nullptr) {
      ::EnableWindow(m_owner, TRUE);
    }
    m_owner = nullptr;
  }

 private:
  HWND m_owner;
};

void hide(HWND window) {
  ::SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

const MessageMap* CDialog::GetMessageMap() const {
  return GetThisMessageMap();
}

const MessageMap* CDialog::GetThisMessageMap() {
  static const MessageEntry entries[] = {ON_COMMAND(IDOK, &CDialog::OnOK)
                                             ON_COMMAND(IDCANCEL, &CDialog::OnCancel){0, 0, 0, 0, nullptr}};
  static const MessageMap map = {CWnd::GetThisMessageMap(), entries};
  return &map;
}

CDialog::CDialog() = default;

CDialog::CDialog(UINT templateId, CWnd* parent) : CDialog(MAKEINTRESOURCEW(templateId), parent) {}

CDialog::CDialog(LPCTSTR templateName, CWnd* parent) : m_templateName(templateName), m_parent(parent) {}

CDialog::~CDialog() {
  if (m_modal != nullptr) {
    if (isLeastPromised()) {
      endUnpromised("a dialog is destroyed while its DoModal runs");
    }
    m_modal->objectGone = true;
    m_modal->running = false;
  }
}

BOOL CDialog::Create(UINT templateId, CWnd* parent) {
  return Create(MAKEINTRESOURCEW(templateId), parent);
}

BOOL CDialog::Create(LPCTSTR templateName, CWnd* parent) {
  return makeNamed(templateName, parent == nullptr ? mainWindow() : parent->m_hWnd) ? TRUE : FALSE;
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent, void* /*unused*/) {
  const HWND owner = parent == nullptr ? mainWindow() : parent->m_hWnd;
  return make(AfxGetResourceHandle(), dialogTemplate, owner) ? TRUE : FALSE;
}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent) {
  m_template = dialogTemplate;
  if (parent != nullptr) {
    m_parent = parent;
  }
  return dialogTemplate != nullptr ? TRUE : FALSE;
}

// The module is where the menu that a template names is looked for.
bool CDialog::make(HINSTANCE module, LPCDLGTEMPLATE dialogTemplate, HWND parent) {
  if (dialogTemplate == nullptr || m_hWnd != nullptr) {
    return false;
  }
  const CreationHook hook(this);
  const HWND made = ::CreateDialogIndirectParamW(module, dialogTemplate, parent, &noProcedure, 0);
  hook.rethrow();
  return made != nullptr;
}

bool CDialog::makeNamed(LPCTSTR templateName, HWND owner) {
  const HINSTANCE module = AfxFindResourceHandle(templateName, RT_DIALOG);
  return make(module, findTemplate(module, templateName), owner);
}

bool CDialog::makeModal(HWND owner) {
  return m_template != nullptr ? make(AfxGetResourceHandle(), m_template, owner)
                               : makeNamed(m_templateName, owner);
}

INT_PTR CDialog::DoModal() {
  if (m_hWnd != nullptr || m_modal != nullptr) {
    return -1;
  }
  const HWND owner = modalOwner(m_parent);
  DisabledOwner disabled(owner);
  Modal modal;
  m_modal = &modal;
  const bool made = makeModal(owner);
  const HWND window = modal.objectGone ? nullptr : m_hWnd;
  if (made && window != nullptr) {
    runLoop(modal, window);
  }
  disabled.enable();
  if (::IsWindow(window) && !modal.objectGone) {
    const bool active = ::GetActiveWindow() == window;
    hide(window);
    if (active && owner != nullptr) {
      ::SetActiveWindow(owner);
    }
    DestroyWindow();
  }
  if (!modal.objectGone) {
    m_modal = nullptr;
  }
  return modal.result;
}

void CDialog::runLoop(const Modal& modal, HWND window) {
  if (modal.running && (::GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) == 0) {
    ::ShowWindow(window, SW_SHOWNORMAL);
    ::UpdateWindow(window);
  }
  MSG message = {};
  while (modal.running) {
    if (::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE) == FALSE) {
      dropTemporaries();
    }
    if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
      ::PostQuitMessage(static_cast<int>(message.wParam));  // the outer loop is to end too
      return;
    }
    if (!AfxPreTranslateMessage(&message)) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
  }
}

void CDialog::EndDialog(int result) {
  if (m_modal == nullptr) {
    hide(m_hWnd);
    return;
  }
  m_modal->result = result;
  m_modal->running = false;
  ::PostMessageW(m_hWnd, WM_NULL, 0, 0);  // the loop may be waiting
}

void CDialog::onWindowGone() {
  if (m_modal != nullptr) {
    if (m_modal->running && isLeastPromised()) {
      m_modal->result = IDABORT;  // some other error
    }
    m_modal->running = false;
  }
}

BOOL CDialog::OnInitDialog() {
  if (!UpdateData(FALSE)) {
    EndDialog(-1);
    return FALSE;
  }
  return TRUE;
}

BOOL CDialog::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
  if (CWnd::OnWndMsg(message, wParam, lParam, result)) {
    return TRUE;
  }
  if (message != WM_INITDIALOG) {
    return FALSE;
  }
  *result = OnInitDialog();
  return TRUE;
}

void CDialog::OnOK() {
  if (UpdateData(TRUE)) {
    EndDialog(IDOK);
  }
}

void CDialog::OnCancel() {
  EndDialog(IDCANCEL);
}

BOOL CDialog::PreTranslateMessage(MSG* message) {
  return ::IsDialogMessageW(m_hWnd, message);
}
