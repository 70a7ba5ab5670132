// The arguments that every command shares: which files, of which format, how questions are answered, and what
// happens to what the audit finds.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tool/ImportSession.h"
#include "tool/InputFile.h"

namespace tool {

class ImportOptions {
 public:
  // Adds the arguments to a command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  const std::vector<std::string>& names() const { return m_names; }

  // Throws UsageError when a repair needs a unit that is not said.
  ImportChoices choices() const;

  // The files with their formats: --from, else by the ending, else CTF. What can be read only once is read
  // here. Throws UsageError when standard input has no --from or is named twice, and std::runtime_error when
  // there is too much of it.
  std::vector<InputFile> files() const;

  // The same, but a name whose ending tells no format needs --from: throws std::runtime_error that names the
  // file and the endings.
  std::vector<InputFile> knownFiles() const;

 private:
  std::vector<std::string> m_names;
  std::string m_from;  // a name of a format, empty: the endings tell
  std::string m_repair;
  std::string m_accept;
  std::string m_unit;
  bool m_yes = false;
  bool m_no = false;
};

}  // namespace tool
