#include "tool/SliceList.h"

#include <cmath>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "host/head/Limits.h"
#include "host/text/Numbers.h"

namespace tool {
namespace {

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
  const std::optional<double> value = host::numberOf(text);
  if (!value) {
    fail(part, "the position is a number of millimetres");
  }
  if (std::abs(*value) > host::headReach) {
    const std::string reach = host::shortest(host::headReach);
    fail(part, "the position lies between -" + reach + " and " + reach + " mm");
  }
  return *value;
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
  if (slices.empty() || text.back() == ',') {
    throw std::invalid_argument("slices are separated by commas, such as axial:58,coronal:12");
  }
  return slices;
}

}  // namespace tool
