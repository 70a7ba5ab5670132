#include "tests/platform/windows/HandleCount.h"

namespace {

// Windows and menus have even numbers from the first on, and a test has few of them; each asks the server.
constexpr INT_PTR windowIndices = 0x2000;
constexpr INT_PTR gdiIndices = 0x10000;

template <class IsHandle>
int count(DWORD kind, INT_PTR indices, INT_PTR step, IsHandle isHandle) {
  const DWORD told = ::GetGuiResources(::GetCurrentProcess(), kind);
  int found = 0;
  for (INT_PTR i = 0; told == 0 && i < indices; i += step) {
    found += isHandle(i) ? 1 : 0;
  }
  return told != 0 ? static_cast<int>(told) : found;
}

}  // namespace

int windowHandles() {
  return count(GR_USEROBJECTS, windowIndices, 2, [](INT_PTR index) {
    DWORD process = 0;
    const HWND window = reinterpret_cast<HWND>(index);
    if (::IsWindow(window) != FALSE) {
      ::GetWindowThreadProcessId(window, &process);
    }
    return process == ::GetCurrentProcessId() || ::IsMenu(reinterpret_cast<HMENU>(index)) != FALSE;
  });
}

int gdiHandles() {
  return count(GR_GDIOBJECTS, gdiIndices, 1,
               [](INT_PTR index) { return ::GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0; });
}
