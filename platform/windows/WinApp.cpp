// The life of a program with windows, and its settings in the registry.
#include "platform/portable/WinApp.h"

#include "platform/LeastPromise.h"
#include "platform/windows/DynLinkLibrary.h"
#include "platform/windows/Idle.h"
#include "platform/windows/Wnd.h"

namespace {

// An open key of the registry, below HKEY_CURRENT_USER.
class Key {
 public:
  Key(const CString& path, bool make) {
    if (make) {
      ::RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &m_key,
                        nullptr);
    } else {
      ::RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &m_key);
    }
  }
  ~Key() {
    if (m_key != nullptr) {
      ::RegCloseKey(m_key);
    }
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  explicit operator bool() const { return m_key != nullptr; }
  operator HKEY() const { return m_key; }

 private:
  HKEY m_key = nullptr;
};

// The messages after which the least is no idle time: the caret's and those of a mouse that stays where it
// is.
bool isRedundant(const MSG& message) {
  static POINT mouse = {};
  if (!isLeastPromised()) {
    return false;
  }
  if (message.message == WM_MOUSEMOVE || message.message == WM_NCMOUSEMOVE) {
    const bool stays = message.pt.x == mouse.x && message.pt.y == mouse.y;
    mouse = message.pt;
    return stays;
  }
  constexpr UINT caretTimer = 0x118;
  return message.message == WM_PAINT || message.message == caretTimer;
}

}  // namespace

BOOL CWinApp::InitInstance() {
  return TRUE;
}

int CWinApp::ExitInstance() {
  return 0;
}

BOOL CWinApp::OnIdle(LONG /*count*/) {
  dropTemporaries();
  return FALSE;
}

BOOL CWinApp::PreTranslateMessage(MSG* message) {
  return AfxPreTranslateMessage(message);
}

int CWinApp::Run() {
  MSG message = {};
  LONG idle = 0;
  bool mayIdle = true;
  while (true) {
    while (mayIdle && ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE) == FALSE) {
      mayIdle = OnIdle(idle++) != FALSE;
    }
    if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
      return ExitInstance();
    }
    if (!PreTranslateMessage(&message)) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
    if (!isRedundant(message)) {
      mayIdle = true;
      idle = 0;
    }
  }
}

void CWinApp::SetRegistryKey(LPCTSTR key) {
  m_registryKey = CString(_T("Software\\")) + key + _T("\\") + m_pszAppName;
}

UINT CWinApp::GetProfileInt(LPCTSTR section, LPCTSTR entry, int otherwise) {
  DWORD value = 0;
  DWORD size = sizeof value;
  const Key key(m_registryKey + _T("\\") + section, false);
  const bool found =
      !m_registryKey.IsEmpty() && key &&
      ::RegGetValueW(key, nullptr, entry, RRF_RT_REG_DWORD, nullptr, &value, &size) == ERROR_SUCCESS;
  return found ? value : static_cast<UINT>(otherwise);
}

BOOL CWinApp::WriteProfileInt(LPCTSTR section, LPCTSTR entry, int value) {
  if (m_registryKey.IsEmpty()) {
    return FALSE;
  }
  const Key key(m_registryKey + _T("\\") + section, true);
  return key && ::RegSetValueExW(key, entry, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value),
                                 sizeof value) == ERROR_SUCCESS;
}

CString CWinApp::GetProfileString(LPCTSTR section, LPCTSTR entry, LPCTSTR otherwise) {
  CString nothing = otherwise == nullptr ? _T("") : otherwise;
  const Key key(m_registryKey + _T("\\") + section, false);
  DWORD size = 0;
  if (m_registryKey.IsEmpty() || !key ||
      ::RegGetValueW(key, nullptr, entry, RRF_RT_REG_SZ, nullptr, nullptr, &size) != ERROR_SUCCESS) {
    return nothing;
  }
  CString value;
  const bool got =
      ::RegGetValueW(key, nullptr, entry, RRF_RT_REG_SZ, nullptr,
                     value.GetBuffer(static_cast<int>(size / sizeof(TCHAR))), &size) == ERROR_SUCCESS;
  value.ReleaseBuffer();
  return got ? value : nothing;
}

BOOL CWinApp::WriteProfileString(LPCTSTR section, LPCTSTR entry, LPCTSTR value) {
  if (m_registryKey.IsEmpty()) {
    return FALSE;
  }
  const Key key(m_registryKey + _T("\\") + section, true);
  if (!key) {
    return FALSE;
  }
  if (value == nullptr) {
    return ::RegDeleteValueW(key, entry) == ERROR_SUCCESS;
  }
  const DWORD size = static_cast<DWORD>(::lstrlenW(value) + 1) * DWORD{sizeof(TCHAR)};
  return ::RegSetValueExW(key, entry, 0, REG_SZ, reinterpret_cast<const BYTE*>(value), size) == ERROR_SUCCESS;
}

int AfxWinMain(int show) {
  CWinApp* const program = AfxGetApp();
  program->m_nCmdShow = show;
  if (program->InitInstance() == FALSE) {
    if (program->m_pMainWnd != nullptr) {
      program->m_pMainWnd->DestroyWindow();
    }
    return program->ExitInstance();
  }
  return program->Run();
}
