// The arguments of the commands that write a file: its name, and its format.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "tool/ImportOptions.h"

namespace tool {

enum class OutputFormat { dipset, text, csv, tsv, json };

class OutputOptions {
 public:
  // Adds the arguments to a command behind those of its input, whose last name becomes the file to write;
  // both objects have to live as long as the command.
  void addTo(CLI::App& command, ImportOptions& input);

  const std::string& target() const { return m_target; }

  // --to, else by the ending, whatever its case. Throws std::runtime_error that names the file and the
  // endings.
  OutputFormat format() const;

 private:
  std::string m_target;
  std::string m_to;  // a name of a format, empty: the ending tells
};

}  // namespace tool
