#include "tests/ui/windows/Spy.h"

#include <algorithm>
#include <utility>

namespace {

SentMessages* listening = nullptr;
KeptMessages* keeping = nullptr;

}  // namespace

SentMessages::SentMessages(HWND window)
    : m_window(window), m_hook(::SetWindowsHookExW(WH_CALLWNDPROC, &hear, nullptr, ::GetCurrentThreadId())) {
  listening = this;
}

SentMessages::~SentMessages() {
  ::UnhookWindowsHookEx(m_hook);
  listening = nullptr;
}

LRESULT CALLBACK SentMessages::hear(int code, WPARAM wParam, LPARAM lParam) {
  const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
  if (code >= 0 && listening != nullptr &&
      (listening->m_window == nullptr || listening->m_window == sent.hwnd)) {
    listening->m_messages.push_back(sent);
  }
  return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

int SentMessages::count(UINT message) const {
  return static_cast<int>(parameters(message).size());
}

std::vector<LPARAM> SentMessages::parameters(UINT message) const {
  std::vector<LPARAM> found;
  for (const CWPSTRUCT& sent : m_messages) {
    if (sent.message == message) {
      found.push_back(sent.lParam);
    }
  }
  return found;
}

KeptMessages::KeptMessages(HWND window, Filter filter)
    : m_window(window), m_behind(nullptr), m_filter(std::move(filter)) {
  keeping = this;
  const LONG_PTR before = ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure));
  m_behind = reinterpret_cast<WNDPROC>(before);
}

KeptMessages::~KeptMessages() {
  if (::IsWindow(m_window) != FALSE) {
    ::SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_behind));
  }
  keeping = nullptr;
}

LRESULT CALLBACK KeptMessages::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (keeping->m_filter(message, wParam, lParam)) {
    return 0;
  }
  return ::CallWindowProcW(keeping->m_behind, window, message, wParam, lParam);
}
