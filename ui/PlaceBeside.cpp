#include "ui/PlaceBeside.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <optional>

namespace {

using Places = std::vector<CRect>;

CRect movedTo(const CRect& window, LONG left, LONG top) {
  return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(left) + window.Width(),
          static_cast<int>(top) + window.Height()};
}

// A window larger than the screen keeps its upper left corner there.
CRect movedInto(const CRect& screen, const CRect& window) {
  const LONG left = (std::max)((std::min)(window.left, screen.right - window.Width()), screen.left);
  const LONG top = (std::max)((std::min)(window.top, screen.bottom - window.Height()), screen.top);
  return movedTo(window, left, top);
}

LONGLONG overlap(const CRect& a, const CRect& b) {
  const LONGLONG width = LONGLONG{(std::min)(a.right, b.right)} - (std::max)(a.left, b.left);
  const LONGLONG height = LONGLONG{(std::min)(a.bottom, b.bottom)} - (std::max)(a.top, b.top);
  return width > 0 && height > 0 ? width * height : 0;
}

bool isWithin(const CRect& window, const CRect& screen) {
  const CRect moved = movedInto(screen, window);
  return moved.left == window.left && moved.top == window.top;
}

// How far the middle of a window is from a screen; 0 inside.
LONGLONG squaredDistance(const CRect& window, const CRect& screen) {
  const LONGLONG x = (LONGLONG{window.left} + window.right) / 2;
  const LONGLONG y = (LONGLONG{window.top} + window.bottom) / 2;
  const LONGLONG dx = x - std::clamp(x, LONGLONG{screen.left}, LONGLONG{screen.right});
  const LONGLONG dy = y - std::clamp(y, LONGLONG{screen.top}, LONGLONG{screen.bottom});
  return dx * dx + dy * dy;
}

// Beside each of the first `count` others, moved onto the screen.
Places sides(const CRect& window, const Places& others, std::size_t count, const CRect& screen) {
  Places places;
  for (std::size_t i = 0; i < count; ++i) {
    const CRect& other = others[i];
    for (const CRect& side :
         {movedTo(window, other.right, other.top), movedTo(window, other.left - window.Width(), other.top),
          movedTo(window, other.left, other.bottom),
          movedTo(window, other.left, other.top - window.Height())}) {
      places.push_back(movedInto(screen, side));
    }
  }
  return places;
}

std::optional<CRect> freePlace(const CRect& window, const Places& others, std::size_t count,
                               const CRect& screen) {
  for (const CRect& place : sides(window, others, count, screen)) {
    const auto covered = [&](const CRect& other) { return overlap(place, other) > 0; };
    if (std::none_of(others.begin(), others.begin() + static_cast<std::ptrdiff_t>(count), covered)) {
      return place;
    }
  }
  return std::nullopt;
}

CRect leastCovering(const CRect& window, const Places& others, const CRect& screen) {
  const Places places = sides(window, others, 1, screen);
  return *std::min_element(places.begin(), places.end(), [&](const CRect& a, const CRect& b) {
    return overlap(a, others.front()) < overlap(b, others.front());
  });
}

}  // namespace

CRect placeBeside(const CRect& window, const Places& others, Places screens) {
  if (others.empty() || screens.empty()) {
    return window;
  }
  std::stable_sort(screens.begin(), screens.end(), [&](const CRect& a, const CRect& b) {
    return squaredDistance(others.front(), a) < squaredDistance(others.front(), b);
  });
  for (std::size_t count = others.size(); count > 1; --count) {
    if (const auto place = freePlace(window, others, count, screens.front())) {
      return *place;
    }
  }
  for (const CRect& screen : screens) {
    if (const auto place = freePlace(window, others, 1, screen)) {
      return *place;
    }
  }
  return leastCovering(window, others, screens.front());
}

bool isWellPlaced(const CRect& window, const Places& others, const Places& screens) {
  return (others.empty() || overlap(window, others.front()) == 0) &&
         std::any_of(screens.begin(), screens.end(),
                     [&](const CRect& screen) { return isWithin(window, screen); });
}
