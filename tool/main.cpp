// The command line program: reads dipole files and shows what they hold, without windows.

#include <CLI/CLI.hpp>
#include <clocale>
#include <exception>
#include <new>

#include "tool/DrawCommand.h"
#include "tool/InfoCommand.h"
#include "tool/ListCommand.h"
#include "tool/Output.h"
#include "tool/TerminalOperator.h"

namespace {

constexpr const char* help =
    R"(Read the results of dipole fits (CTF .dip files), list them and draw them on an MRI.

The result goes to standard output, everything else to standard error. Exit status: 0 when
all went well, 1 when no dipole was imported or something failed, 2 for wrong arguments.)";

int runProgram(int argc, char** argv) {
  CLI::App program(help, "dipole");
  program.set_version_flag("--version", "dipole " DIPOLE_VERSION);
  program.require_subcommand(1);
  tool::InfoCommand info(program);
  tool::ListCommand list(program);
  tool::DrawCommand draw(program);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? tool::exitDone : tool::exitUsage;
  }
  if (info.isChosen()) {
    return info.run();
  }
  return list.isChosen() ? list.run() : draw.run();
}

}  // namespace

int main(int argc, char** argv) {
  (void)std::setlocale(LC_ALL, "");
  try {
    return runProgram(argc, argv);
  } catch (const std::bad_alloc&) {
    tool::tell("not enough memory");
  } catch (const std::exception& error) {
    tool::tell(error.what());
  }
  return tool::exitFailure;
}
