#include "tests/ui/screens/Album.h"

#include <iostream>

#include "tests/platform/windows/Robot.h"
#include "tests/ui/screens/Picture.h"

namespace {

constexpr int corner = 20;         // pixels from the left and from the top of the screen
constexpr ULONGLONG drawing = 80;  // ms until everything has been drawn and has reached the screen

// Lets every window draw itself, and nothing else happen: an open menu takes the user's messages as its own.
void drawMenus() {
  const ULONGLONG end = ::GetTickCount64() + drawing;
  while (::GetTickCount64() < end) {
    MSG message = {};
    while (::PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE) != FALSE) {
      ::DispatchMessageW(&message);
    }
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_PAINT);
  }
  ::GdiFlush();
}

void drawWindows() {
  const ULONGLONG end = ::GetTickCount64() + drawing;
  while (::GetTickCount64() < end) {
    pump();
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
  ::GdiFlush();
}

RECT placeOf(HWND window) {
  RECT place = {};
  ::GetWindowRect(window, &place);
  return place;
}

}  // namespace

void Album::save(const RECT& place, const std::string& name, bool withPointer) {
  const std::string path = m_folder + name + ".bmp";
  if (!savePicture(place, path, withPointer)) {
    std::cerr << path << " could not be written\n";
    m_isComplete = false;
  }
}

void Album::take(HWND window, const std::string& name) {
  ::SetWindowPos(window, HWND_TOP, corner, corner, 0, 0, SWP_NOSIZE);
  ::SetForegroundWindow(window);
  takeInPlace(window, name);
}

void Album::takeInPlace(HWND window, const std::string& name) {
  takeArea(placeOf(window), name);
}

void Album::takeArea(const RECT& area, const std::string& name) {
  drawWindows();
  save(area, name);
}

void Album::takeWithPointer(const RECT& area, const std::string& name) {
  drawWindows();
  save(area, name, true);
}

void Album::takeMenu(HWND menu, HWND owner, const std::string& name) {
  drawMenus();
  const RECT ofMenu = placeOf(menu);
  const RECT ofOwner = placeOf(owner);
  RECT both = {};
  ::UnionRect(&both, &ofMenu, &ofOwner);
  save(both, name);
}
