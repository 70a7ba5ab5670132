#include "host/exchange/Json.h"

#include <cmath>

#include "host/text/Numbers.h"

namespace host {

std::string indented(const Json& json) {
  constexpr int indent = 2;
  return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string inOneLine(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string withItems(std::string text, const std::string& name,
                      const std::function<void(const AddItem&)>& addAll) {
  const std::string list = "\"" + name + "\": []";  // in a text a backslash stands before the quotes
  const std::size_t inside = text.find(list) + list.size() - 1;
  const std::string behind = text.substr(inside);
  text.resize(inside);
  addAll([&](std::string_view item) {
    text += text.size() == inside ? "\n" : ",\n";
    text += item;
  });
  text += (text.size() == inside ? "" : "\n") + behind;
  return text;
}

Json jsonNumber(double value) {
  return std::isfinite(value) ? Json(value) : Json(exact(value));
}

Json jsonText(const std::string& text) {
  return text.empty() ? Json(nullptr) : Json(text);
}

}  // namespace host
