#include "tests/ui/windows/DialogUser.h"

#include <gtest/gtest.h>

#include "platform/Utf.h"

namespace {

const std::string messageCaption = "dipole_ui_tests";  // the program's name

Messages* reading = nullptr;

struct Found {
  std::string beginning;
  std::vector<HWND> windows;
};

BOOL CALLBACK collect(HWND window, LPARAM parameter) {
  auto& found = *reinterpret_cast<Found*>(parameter);
  if (::IsWindowVisible(window) != FALSE && captionOf(window).starts_with(found.beginning)) {
    found.windows.push_back(window);
  }
  return TRUE;
}

bool isSystems(HWND window) {
  TCHAR className[64] = {};
  ::GetClassNameW(window, className, 64);
  const CString name = className;
  return name == _T("IME") || name == _T("MSCTFIME UI") || name == _T("tooltips_class32") ||
         name.Left(3) == _T("Ole") || name.Left(6) == _T("__wine");
}

BOOL CALLBACK countWindow(HWND window, LPARAM parameter) {
  if (!isSystems(window)) {
    ++*reinterpret_cast<int*>(parameter);
  }
  return TRUE;
}

}  // namespace

Messages::Messages() : m_timer(::SetTimer(nullptr, 0, 10, &Messages::onTimer)) {
  reading = this;
}

Messages::~Messages() {
  ::KillTimer(nullptr, m_timer);
  reading = nullptr;
  EXPECT_EQ(m_told, Texts{}) << "nobody expected this";
}

Texts Messages::take() {
  Texts told;
  told.swap(m_told);
  return told;
}

void CALLBACK Messages::onTimer(HWND /*window*/, UINT /*message*/, UINT_PTR /*id*/, DWORD /*time*/) {
  if (reading == nullptr) {
    return;
  }
  for (const HWND box : openWindows(messageCaption)) {
    reading->answer(box);
  }
}

void Messages::answer(HWND box) {
  m_told.push_back(messageOf(box));
  if (m_act) {
    const std::function<void()> act = std::move(m_act);
    m_act = nullptr;
    act();
  }
  for (const int button : {IDOK, IDCANCEL, IDNO}) {
    if (::GetDlgItem(box, button) != nullptr) {
      press(box, button);
      return;
    }
  }
}

std::vector<HWND> openWindows(const std::string& captionBeginning) {
  Found found = {captionBeginning, {}};
  ::EnumThreadWindows(::GetCurrentThreadId(), &collect, reinterpret_cast<LPARAM>(&found));
  return found.windows;
}

int threadWindows() {
  int count = 0;
  ::EnumThreadWindows(::GetCurrentThreadId(), &countWindow, reinterpret_cast<LPARAM>(&count));
  return count;
}

std::string longTextOf(HWND window, int control) {
  const HWND edit = ::GetDlgItem(window, control);
  CString text;
  const int length = ::GetWindowTextLengthW(edit);
  const int got = ::GetWindowTextW(edit, text.GetBuffer(length), length + 1);
  text.ReleaseBuffer(got);
  return toUtf8(text);
}

void strike(HWND window, int control, UINT key) {
  const HWND receiver = ::GetDlgItem(window, control);
  ::SetFocus(receiver);
  ::PostMessageW(receiver, WM_KEYDOWN, key, 1);
  ::PostMessageW(receiver, WM_KEYUP, key, 0xC0000001);
  pump();
}

void strikeKeys(HWND window, int control, const std::string& text) {
  const HWND receiver = ::GetDlgItem(window, control);
  ::SetFocus(receiver);
  ::SendMessageW(receiver, EM_SETSEL, 0, -1);
  for (const char letter : text) {
    ::PostMessageW(receiver, WM_CHAR, static_cast<WPARAM>(letter), 1);
    pump();
  }
}

void strikeMnemonic(HWND window, char letter) {
  constexpr LPARAM altDown = 0x20000001;
  const HWND focus = ::GetFocus();
  ::PostMessageW(focus != nullptr ? focus : window, WM_SYSCHAR, static_cast<WPARAM>(letter), altDown);
  pump();
}

bool isChecked(HWND window, int control) {
  return ::IsDlgButtonChecked(window, control) == BST_CHECKED;
}

int focusIn(HWND window) {
  if (::GetFocus() == nullptr) {
    ::SetForegroundWindow(window);  // the screen may have taken it; a dialog gives it back to its control
  }
  const HWND focus = ::GetFocus();
  return focus != nullptr && ::GetParent(focus) == window ? ::GetDlgCtrlID(focus) : 0;
}

COLORREF pixelOf(HWND window, int control, int x, int y) {
  const HWND shown = ::GetDlgItem(window, control);
  const HDC context = ::GetDC(shown);
  const COLORREF color = ::GetPixel(context, x, y);
  ::ReleaseDC(shown, context);
  return color;
}
