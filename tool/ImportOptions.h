// The arguments that every command shares: which files, and how questions are answered.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tool/TerminalOperator.h"

namespace tool {

class ImportOptions {
 public:
  // Adds the arguments to a command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  const std::vector<std::string>& files() const { return m_files; }
  Answers answers() const;

 private:
  std::vector<std::string> m_files;
  bool m_yes = false;
  bool m_no = false;
};

}  // namespace tool
