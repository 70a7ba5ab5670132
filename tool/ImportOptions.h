// The arguments that every command shares: which files, of which format, and how questions are answered.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tool/InputFile.h"
#include "tool/TerminalOperator.h"

namespace tool {

class ImportOptions {
 public:
  // Adds the arguments to a command; this object has to live as long as the command. `argument` is what the
  // help calls the files.
  void addTo(CLI::App& command, const std::string& argument = "FILE");

  const std::vector<std::string>& names() const { return m_names; }

  // Takes the last name away, for commands whose last argument is the file to write. Throws
  // CLI::RequiredError when it is the only one.
  std::string takeLastName();

  Answers answers() const;

  // The files with their formats: --from, else by the ending, else CTF.
  std::vector<InputFile> files() const;

  // The same, but a name whose ending tells no format needs --from: throws std::runtime_error that names the
  // file and the endings.
  std::vector<InputFile> knownFiles() const;

 private:
  std::vector<std::string> m_names;
  std::string m_from;  // a name of a format, empty: the endings tell
  bool m_yes = false;
  bool m_no = false;
};

}  // namespace tool
