// JSON as every command of this program writes it.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace host {

using Json = nlohmann::ordered_json;

// UTF-8, indented, a line feed at its end.
std::string indented(const Json& json);
// The same in one line, without its end.
std::string inOneLine(const Json& json);

// Adds the text of an item to a list.
using AddItem = std::function<void(std::string_view)>;

// The text of an object, `indented`, in which the empty list `name` is filled with what `addAll` adds, an
// item a line. So a list of thousands need never be there as a tree.
std::string withItems(std::string text, const std::string& name,
                      const std::function<void(const AddItem&)>& addAll);

// A number with as few digits as give it back; "nan", "inf" or "-inf", a string, for what is none.
Json jsonNumber(double value);

// Null when the text is empty.
Json jsonText(const std::string& text);

}  // namespace host
