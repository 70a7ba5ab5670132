#include "platform/windows/CreationHook.h"

namespace {

thread_local CreationHook* innermost = nullptr;

}  // namespace

CreationHook::CreationHook(CWnd* object)
    : m_object(object),
      m_hook(::SetWindowsHookExW(WH_CBT, &CreationHook::onHook, nullptr, ::GetCurrentThreadId())),
      m_outer(innermost) {
  innermost = this;
}

CreationHook::~CreationHook() {
  innermost = m_outer;
  ::UnhookWindowsHookEx(m_hook);
}

LRESULT CALLBACK CreationHook::onHook(int code, WPARAM wParam, LPARAM lParam) {
  CreationHook* const hook = innermost;
  if (hook == nullptr) {
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
  }
  if (code == HCBT_CREATEWND && hook->m_object != nullptr) {
    CWnd* const object = hook->m_object;
    hook->m_object = nullptr;  // the windows inside it are not meant
    try {
      object->Attach(reinterpret_cast<HWND>(wParam));
    } catch (...) {
      hook->m_failure = std::current_exception();  // not through the system's frames
      return 1;                                    // the window is not made
    }
    object->takeMessages();
  }
  return ::CallNextHookEx(hook->m_hook, code, wParam, lParam);
}

void CreationHook::rethrow() const {
  if (m_failure) {
    std::rethrow_exception(m_failure);
  }
}
