// The arguments of the commands that write a file: its name, and its format.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "host/exchange/SetExport.h"
#include "tool/ImportOptions.h"

namespace tool {

using OutputFormat = host::ExportFormat;

// Throws std::runtime_error when the file is there, and nobody forces it to go.
void refuseToReplace(const std::string& target, bool isForced);

class OutputOptions {
 public:
  // Adds the arguments to a command behind those of its input; both objects have to live as long as the
  // command.
  void addTo(CLI::App& command, ImportOptions& input);

  // Before anything is read. Throws UsageError when there is no target, or standard output without a format,
  // std::runtime_error when the name tells no format, or the file is there already and --force is not.
  void check() const;

  const std::string& target() const { return m_target; }
  bool isStandardOutput() const { return m_target == "-"; }

  // --to, else by the ending, whatever its case. Throws std::runtime_error that names the file and the
  // endings.
  OutputFormat format() const;

 private:
  std::string m_command;
  std::string m_target;
  bool m_force = false;
  std::string m_to;  // a name of a format, empty: the ending tells
};

}  // namespace tool
