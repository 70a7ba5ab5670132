// The command line program: its commands, and how it is run.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "tool/Commands.h"

namespace tool {

// The commands with their arguments and help texts.
class Program {
 public:
  Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  const CLI::App& app() const { return m_app; }

  // Returns an ExitCode. `arguments` are UTF-8, without the program's name. Throws std::exception.
  int run(std::vector<std::string> arguments);

 private:
  CLI::App m_app;
  std::vector<std::unique_ptr<Command>> m_commands;
};

// The same with what it throws told.
int runProgram(std::vector<std::string> arguments);

}  // namespace tool
