#include "ui/OpenBeside.h"

#include <vector>

#include "ui/PlaceBeside.h"

namespace {

std::vector<CRect> placesOf(std::initializer_list<HWND> windows) {
  std::vector<CRect> places;
  for (const HWND window : windows) {
    const HWND top = ::IsWindowVisible(window) ? ::GetAncestor(window, GA_ROOT) : nullptr;
    if (top != nullptr && !::IsIconic(top)) {
      ::GetWindowRect(top, &places.emplace_back());
    }
  }
  return places;
}

// What the task bar leaves of every screen.
std::vector<CRect> workAreas() {
  std::vector<CRect> areas;
  const auto take = [](HMONITOR screen, HDC /*context*/, LPRECT /*place*/, LPARAM parameter) -> BOOL {
    MONITORINFO information = {};
    information.cbSize = sizeof information;
    if (::GetMonitorInfo(screen, &information)) {
      reinterpret_cast<std::vector<CRect>*>(parameter)->emplace_back(information.rcWork);
    }
    return TRUE;
  };
  ::EnumDisplayMonitors(nullptr, nullptr, take, reinterpret_cast<LPARAM>(&areas));
  return areas;
}

}  // namespace

void moveBeside(CWnd& window, std::initializer_list<HWND> others, Move when) {
  CRect place;
  window.GetWindowRect(&place);
  const std::vector<CRect> screens = workAreas();
  const std::vector<CRect> keptClear = placesOf(others);
  if (when == Move::always || !isWellPlaced(place, keptClear, screens)) {
    const CRect best = placeBeside(place, keptClear, screens);
    window.MoveWindow(&best, FALSE);
  }
}
