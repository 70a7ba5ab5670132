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

std::string dipolesText(int count) {
  return std::to_string(count) + (count == 1 ? " dipole" : " dipoles");
}

}  // namespace

SideLetters sideLetters(View view) {
  switch (view) {
    case View::axial:
      return {'R', 'L', 'A', 'P'};
    case View::coronal:
      return {'R', 'L', 'S', 'I'};
    case View::sagittal:
      break;
  }
  return {'P', 'A', 'S', 'I'};
}

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
  if (position == 0.0)
    return text + " (origin)";
  return text + " (" + sideWord(axesOf(view).slab, position > 0.0) + ")";
}

std::string countText(const OverlayReport& report) {
  const std::string count = std::to_string(report.drawn) + " of " + std::to_string(report.total);
  if (!report.shown)
    return "dipoles: " + count;
  return std::string("dipoles ") + axisName(report.view) + " " + formatMm(report.shown->from) + " .. " +
         formatMm(report.shown->to) + " mm: " + count;
}

std::vector<std::string> warningTexts(const OverlayReport& report) {
  std::vector<std::string> texts;
  if (!report.shown)
    texts.emplace_back("axial slices below y = 0 show no dipoles");
  if (report.withheld > 0)
    texts.push_back(dipolesText(report.withheld) + " close to this slice not drawn");
  if (report.outside > 0)
    texts.push_back(dipolesText(report.outside) + " outside of the picture, drawn at its edge");
  if (report.switchedOff > 0)
    texts.push_back(dipolesText(report.switchedOff) + " switched off");
  if (report.nowhere > 0)
    texts.push_back(dipolesText(report.nowhere) + " without a valid location");
  return texts;
}

}  // namespace host
