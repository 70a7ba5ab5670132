// How shells complete the arguments of the program: commands, options, the words of an option, files.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

// For bash to source; it needs nothing else.
std::string bashCompletion(const CLI::App& program);

// For a folder of zsh's fpath, as _dipole.
std::string zshCompletion(const CLI::App& program);

}  // namespace tool
