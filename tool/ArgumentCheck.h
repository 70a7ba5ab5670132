// Checks of arguments while the command line is read.
#pragma once

#include <CLI/CLI.hpp>
#include <stdexcept>
#include <string>

#include "tool/Text.h"

namespace tool {

// Refuses what `parse` throws std::invalid_argument about, and says what that says.
template <typename Parse>
CLI::Validator argumentCheck(Parse parse) {
  return CLI::Validator(
      [parse](const std::string& text) {
        try {
          (void)parse(text);
          return std::string();
        } catch (const std::invalid_argument& error) {
          return printable(error.what());
        }
      },
      "");
}

}  // namespace tool
