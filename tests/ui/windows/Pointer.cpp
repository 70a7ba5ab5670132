#include "tests/ui/windows/Pointer.h"

namespace {

INPUT button(DWORD flags) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  return input;
}

INPUT key(WORD code, DWORD flags) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = code;
  input.ki.dwFlags = flags;
  return input;
}

void dispatch(MSG& message) {
  if (!AfxPreTranslateMessage(&message)) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

}  // namespace

POINT placeOfRow(const Host& host, int row) {
  RECT cell = {};
  cell.left = LVIR_LABEL;
  ::SendMessageW(host.list(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
  POINT place = {cell.left + 5, (cell.top + cell.bottom) / 2};
  ::ClientToScreen(host.list(), &place);
  return place;
}

void movePointer(POINT place) {
  ::SetCursorPos(place.x, place.y);
}

int rest(HWND window, DWORD milliseconds) {
  int told = 0;
  const ULONGLONG end = ::GetTickCount64() + milliseconds;
  for (ULONGLONG now = ::GetTickCount64(); now < end; now = ::GetTickCount64()) {
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    MSG message = {};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
      told += message.hwnd == window && message.message == WM_MOUSEHOVER ? 1 : 0;
      dispatch(message);
    }
  }
  return told;
}

void clickThere(bool control, bool shift) {
  std::vector<INPUT> inputs;
  const WORD held = control ? VK_CONTROL : VK_SHIFT;
  if (control || shift) {
    inputs.push_back(key(held, 0));
  }
  inputs.push_back(button(MOUSEEVENTF_LEFTDOWN));
  inputs.push_back(button(MOUSEEVENTF_LEFTUP));
  if (control || shift) {
    inputs.push_back(key(held, KEYEVENTF_KEYUP));
  }
  ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
  pump();
}
