// The manual page of the program.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

// For man(1), section 1.
std::string manPage(const CLI::App& program);

}  // namespace tool
