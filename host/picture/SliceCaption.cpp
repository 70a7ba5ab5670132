#include "host/picture/SliceCaption.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace host {

namespace {

constexpr std::array<char, 3> axisNames{'x', 'y', 'z'};

const char* sideWord(int axis, bool positive) {
  switch (axis) {
    case 0:
      return positive ? "left" : "right";
    case 1:
      return positive ? "up" : "down";
    default:
      return positive ? "front" : "back";
  }
}

char axisName(View view) {
  return axisNames[static_cast<std::size_t>(axesOf(view).slab)];
}

}  // namespace

std::string formatMm(double mm) {
  const double hundredths = std::round(mm * 100.0);
  // Adding 0 turns -0 into 0.
  const double shown = hundredths / 100.0 + 0.0;
  const int decimals = std::fmod(hundredths, 10.0) == 0.0 ? 1 : 2;
  // The program's language must not change the point, so this is not left to printf.
  std::array<char, 64> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), shown, std::chars_format::fixed, decimals);
  return {text.data(), end.ptr};
}

std::string positionText(View view, double position) {
  const std::string text = std::string(1, axisName(view)) + " = " + formatMm(position) + " mm";
  if (position == 0.0) {
    return text + " (origin)";
  }
  return text + " (" + sideWord(axesOf(view).slab, position > 0.0) + ")";
}

}  // namespace host
