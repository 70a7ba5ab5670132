// `dipole list`: every dipole of the files as a table, as CSV or as JSON.
#pragma once

#include <CLI/CLI.hpp>

#include "tool/ImportOptions.h"

namespace tool {

class ListCommand {
 public:
  // Adds the command to the program; this object has to live as long as the program's arguments.
  explicit ListCommand(CLI::App& program);
  ListCommand(const ListCommand&) = delete;
  ListCommand& operator=(const ListCommand&) = delete;

  bool isChosen() const { return m_command->parsed(); }

  // Returns an ExitCode. Throws std::runtime_error.
  int run() const;

 private:
  CLI::App* m_command;
  ImportOptions m_import;
  bool m_csv = false;
  bool m_json = false;
};

}  // namespace tool
