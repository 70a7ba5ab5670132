#include "host/exchange/Json.h"

#include <cmath>

#include "host/text/Numbers.h"

namespace host {

std::string indented(const Json& json) {
  constexpr int indent = 2;
  return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json jsonNumber(double value) {
  return std::isfinite(value) ? Json(value) : Json(exact(value));
}

Json jsonText(const std::string& text) {
  return text.empty() ? Json(nullptr) : Json(text);
}

}  // namespace host
