// The program's commands: what each is told, and how it is run.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace tool {

class Command {
 public:
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;
  virtual ~Command() = default;

  bool isChosen() const { return m_options.parsed(); }

  // Returns an ExitCode. Throws std::exception.
  virtual int run() const = 0;

 protected:
  // Adds the command to the program. It has to live as long as the program's arguments.
  Command(CLI::App& program, const std::string& name, const std::string& summary, const std::string& help)
      : m_options(*program.add_subcommand(name, summary)) {
    m_options.footer(help);
  }

  CLI::App& options() { return m_options; }

 private:
  CLI::App& m_options;
};

// What each of the files holds, as text or as JSON.
std::unique_ptr<Command> makeInfoCommand(CLI::App& program);

// Every dipole of the files as a table, as CSV or as JSON.
std::unique_ptr<Command> makeListCommand(CLI::App& program);

// The dipoles of the files that lie together, as text, as CSV or as JSON.
std::unique_ptr<Command> makeClustersCommand(CLI::App& program);

// What the audit of each of the files finds, and nothing else.
std::unique_ptr<Command> makeCheckCommand(CLI::App& program);

// Slices through an MRI with the dipoles over them, or a 3D picture of them, as a PNG picture.
std::unique_ptr<Command> makeDrawCommand(CLI::App& program);

// The head, the dipoles and all that is known of them as a page for any browser.
std::unique_ptr<Command> makePageCommand(CLI::App& program);

// Dipole files as one file of another format.
std::unique_ptr<Command> makeConvertCommand(CLI::App& program);

// The dipoles of the files in the order of one of their values, as a file.
std::unique_ptr<Command> makeSortCommand(CLI::App& program);

// What the files of heads hold, as text or as JSON, and one of them as NIfTI.
std::unique_ptr<Command> makeHeadCommand(CLI::App& program);

// Registers the dipoles of the files to an MRI, as a viewer does after an import, and writes what came out.
std::unique_ptr<Command> makeRegisterCommand(CLI::App& program);

}  // namespace tool
