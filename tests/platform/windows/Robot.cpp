#include "tests/platform/windows/Robot.h"

#include <gtest/gtest.h>

#include "platform/Utf.h"

namespace {

constexpr ULONGLONG patience = 60000;  // ms, for machines that are busy with other things

Robot* working = nullptr;

struct Search {
  std::string caption;
  bool menu;
  HWND found;
};

BOOL CALLBACK look(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  if (::IsWindowVisible(window) == FALSE) {
    return TRUE;
  }
  TCHAR className[32] = {};
  ::GetClassNameW(window, className, 32);
  const bool menu = CString(className) == _T("#32768");
  if (menu == search.menu && (menu || captionOf(window) == search.caption)) {
    search.found = window;
  }
  return search.found == nullptr ? TRUE : FALSE;
}

BOOL CALLBACK closeDialog(HWND window, LPARAM /*parameter*/) {
  TCHAR className[32] = {};
  ::GetClassNameW(window, className, 32);
  if (CString(className) == _T("#32770")) {
    ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    ::PostMessageW(window, WM_COMMAND, IDOK, 0);
  }
  return TRUE;
}

}  // namespace

Robot::Robot() : m_since(::GetTickCount64()), m_timer(::SetTimer(nullptr, 0, 10, &Robot::onTimer)) {
  working = this;
}

Robot::~Robot() {
  ::KillTimer(nullptr, m_timer);
  working = nullptr;
  EXPECT_EQ(m_steps.size(), 0U) << "the next one waits for \"" << m_steps.front().caption << '"';
}

Robot& Robot::when(std::string caption, Step step) {
  m_steps.push_back({std::move(caption), false, std::move(step)});
  return *this;
}

Robot& Robot::whenMenu(Step step) {
  m_steps.push_back({"a menu", true, std::move(step)});
  return *this;
}

void CALLBACK Robot::onTimer(HWND /*window*/, UINT /*message*/, UINT_PTR /*id*/, DWORD /*time*/) {
  if (working != nullptr) {
    working->tick();
  }
}

void Robot::tick() {
  if (m_steps.empty()) {
    return;
  }
  Search search = {m_steps.front().caption, m_steps.front().menu, nullptr};
  ::EnumThreadWindows(::GetCurrentThreadId(), &look, reinterpret_cast<LPARAM>(&search));
  if (search.found != nullptr) {
    const Step step = std::move(m_steps.front().step);
    m_steps.pop_front();
    m_since = ::GetTickCount64();
    step(search.found);  // may come back here for the next one
  } else if (::GetTickCount64() - m_since > patience) {
    giveUp();
  }
}

void Robot::giveUp() {
  m_since = ::GetTickCount64();
  ADD_FAILURE() << "no window \"" << m_steps.front().caption << '"';
  ::EndMenu();
  ::EnumThreadWindows(::GetCurrentThreadId(), &closeDialog, 0);
}

std::string captionOf(HWND window) {
  TCHAR text[512] = {};
  ::GetWindowTextW(window, text, 512);
  return toUtf8(text);
}

std::string textOf(HWND window, int control) {
  return captionOf(::GetDlgItem(window, control));
}

std::string messageOf(HWND messageBox) {
  return textOf(messageBox, 0xFFFF);
}

void type(HWND window, int control, const std::string& text) {
  const HWND edit = ::GetDlgItem(window, control);
  ::SetFocus(edit);
  ::SendMessageW(edit, EM_SETSEL, 0, -1);
  ::SendMessageW(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(fromUtf8(text).GetString()));
}

void press(HWND window, int button) {
  ::SendMessageW(::GetDlgItem(window, button), BM_CLICK, 0, 0);
}

void pump() {
  MSG message = {};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (!AfxPreTranslateMessage(&message)) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
  }
  AfxGetApp()->CWinApp::OnIdle(0);  // the framework's part of it
}
