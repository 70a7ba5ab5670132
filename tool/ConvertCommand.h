// `dipole convert`: dipole files as one file of another format.
#pragma once

#include <CLI/CLI.hpp>

#include "tool/ImportOptions.h"
#include "tool/OutputOptions.h"

namespace tool {

class ConvertCommand {
 public:
  // Adds the command to the program; this object has to live as long as the program's arguments.
  explicit ConvertCommand(CLI::App& program);
  ConvertCommand(const ConvertCommand&) = delete;
  ConvertCommand& operator=(const ConvertCommand&) = delete;

  bool isChosen() const { return m_command->parsed(); }

  // Returns an ExitCode. Throws std::runtime_error.
  int run() const;

 private:
  CLI::App* m_command;
  ImportOptions m_import;
  OutputOptions m_output;
};

}  // namespace tool
