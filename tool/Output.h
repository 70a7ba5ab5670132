// The result of a command, on standard output.
#pragma once

#include <string>

#include "host/exchange/Json.h"

namespace tool {

using host::Json;

// What a command returns to the shell.
enum ExitCode { exitDone = 0, exitFailure = 1, exitUsage = 2 };

// Writes all of the text. Throws std::runtime_error when standard output does not take it.
void writeResult(const std::string& text);
void writeResult(const Json& json);

// Whether a person reads it.
bool isResultOnTerminal();

}  // namespace tool
