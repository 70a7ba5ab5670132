#include "tool/SliceList.h"

#include <charconv>
#include <cmath>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace tool {
namespace {

constexpr double farthest = 300.0;  // mm: no head is larger
constexpr std::size_t mostViews = 3;

[[noreturn]] void fail(const std::string& part, const std::string& cause) {
  throw std::invalid_argument("slice \"" + part + "\": " + cause);
}

host::View viewOf(const std::string& part, std::string_view name) {
  if (name == "axial") {
    return host::View::axial;
  }
  if (name == "coronal") {
    return host::View::coronal;
  }
  if (name == "sagittal") {
    return host::View::sagittal;
  }
  fail(part, "the view is axial, coronal or sagittal");
}

double positionOf(const std::string& part, std::string_view text) {
  double value = 0.0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
    fail(part, "the position is a number of millimetres");
  }
  if (!(std::abs(value) <= farthest)) {
    fail(part, "the position lies between -300 and 300 mm");
  }
  return value;
}

host::SliceRequest parseSlice(const std::string& part) {
  const std::size_t colon = part.find(':');
  if (colon == std::string::npos) {
    fail(part, "write VIEW:MM, such as axial:58");
  }
  const std::string_view text = part;
  return {viewOf(part, text.substr(0, colon)), positionOf(part, text.substr(colon + 1))};
}

}  // namespace

std::vector<host::SliceRequest> parseSlices(const std::string& text) {
  std::vector<host::SliceRequest> slices;
  std::istringstream parts(text);
  for (std::string part; std::getline(parts, part, ',');) {
    slices.push_back(parseSlice(part));
  }
  if (slices.empty() || slices.size() > mostViews || text.back() == ',') {
    throw std::invalid_argument("one to three slices can be drawn, separated by commas");
  }
  return slices;
}

}  // namespace tool
