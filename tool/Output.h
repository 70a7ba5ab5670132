// The result of a command, on standard output.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tool {

using Json = nlohmann::ordered_json;

// What a command returns to the shell.
enum ExitCode { exitDone = 0, exitFailure = 1, exitUsage = 2 };

// Writes all of the text. Throws std::runtime_error when standard output does not take it.
void writeResult(const std::string& text);
void writeResult(const Json& json);

// A number for JSON, with as few digits as give it back; what is not finite is written as null.
Json jsonNumber(double value);

// A text for JSON; null when it is empty.
Json jsonText(const std::string& text);

}  // namespace tool
