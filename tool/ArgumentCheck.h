// Checks of arguments while the command line is read.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <stdexcept>
#include <string>

#include "host/text/Numbers.h"
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

// Refuses what is no plain number from `least` to `most`, and, where `isWhole`, one with a fraction: CLI11
// itself would take "nan", " 5" and "0x10".
inline CLI::Validator numberBetween(double least, double most, bool isWhole = false) {
  return argumentCheck([=](const std::string& text) {
    const std::optional<double> value = host::numberOf(text);
    const bool isDigits = text.find_first_not_of("0123456789") == std::string::npos;
    if (!value || *value < least || *value > most || (isWhole && !isDigits)) {
      throw std::invalid_argument("\"" + text + "\": write a " + (isWhole ? "whole " : "") + "number from " +
                                  host::shortest(least) + " to " + host::shortest(most));
    }
  });
}

}  // namespace tool
