// JSON as every command of this program writes it.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace host {

using Json = nlohmann::ordered_json;

// UTF-8, indented, a line feed at its end.
std::string indented(const Json& json);

// A number with as few digits as give it back; "nan", "inf" or "-inf", a string, for what is none.
Json jsonNumber(double value);

// Null when the text is empty.
Json jsonText(const std::string& text);

}  // namespace host
