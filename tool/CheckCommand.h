// `dipole check`: what the audit of each of the files finds, and nothing else.
#pragma once

#include <CLI/CLI.hpp>

#include "tool/ImportOptions.h"

namespace tool {

class CheckCommand {
 public:
  // Adds the command to the program; this object has to live as long as the program's arguments.
  explicit CheckCommand(CLI::App& program);
  CheckCommand(const CheckCommand&) = delete;
  CheckCommand& operator=(const CheckCommand&) = delete;

  bool isChosen() const { return m_command->parsed(); }

  // Returns an ExitCode. Throws std::runtime_error.
  int run() const;

 private:
  CLI::App* m_command;
  ImportOptions m_import;
  bool m_json = false;
};

}  // namespace tool
