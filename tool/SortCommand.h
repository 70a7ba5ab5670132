// `dipole sort`: the dipoles of the files in the order of one of their values, as a file.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "tool/ImportOptions.h"
#include "tool/OutputOptions.h"

namespace tool {

class SortCommand {
 public:
  // Adds the command to the program; this object has to live as long as the program's arguments.
  explicit SortCommand(CLI::App& program);
  SortCommand(const SortCommand&) = delete;
  SortCommand& operator=(const SortCommand&) = delete;

  bool isChosen() const { return m_command->parsed(); }

  // Returns an ExitCode. Throws std::runtime_error.
  int run() const;

 private:
  CLI::App* m_command;
  ImportOptions m_import;
  OutputOptions m_output;
  std::string m_key;
  bool m_isDescending = false;
};

}  // namespace tool
