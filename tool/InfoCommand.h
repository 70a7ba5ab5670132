// `dipole info`: what each of the files holds, as text or as JSON.
#pragma once

#include <CLI/CLI.hpp>

#include "tool/ImportOptions.h"

namespace tool {

class InfoCommand {
 public:
  // Adds the command to the program; this object has to live as long as the program's arguments.
  explicit InfoCommand(CLI::App& program);
  InfoCommand(const InfoCommand&) = delete;
  InfoCommand& operator=(const InfoCommand&) = delete;

  bool isChosen() const { return m_command->parsed(); }

  // Returns an ExitCode. Throws std::runtime_error.
  int run() const;

 private:
  CLI::App* m_command;
  ImportOptions m_import;
  bool m_json = false;
};

}  // namespace tool
