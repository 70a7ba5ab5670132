// The command line program: reads dipole files and shows what they hold, without windows.

#include <CLI/CLI.hpp>
#include <clocale>
#include <csignal>
#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "tool/ConvertCommand.h"
#include "tool/DrawCommand.h"
#include "tool/InfoCommand.h"
#include "tool/ListCommand.h"
#include "tool/Output.h"
#include "tool/RegisterCommand.h"
#include "tool/SortCommand.h"
#include "tool/TerminalOperator.h"

namespace {

constexpr const char* help =
    "Read the results of dipole fits (CTF .dip files, 4D/MSI tables, dipole sets), list them, draw them on "
    "an\n"
    "MRI, and write them in other formats.";
constexpr const char* moreHelp = R"("dipole COMMAND --help" tells more about a command.

The result goes to standard output or the named file, everything else to standard error. Exit status: 0 when
all went well, 1 when no dipole was imported or something failed, 2 for wrong arguments.)";

// The arguments, the last one first, as the parser takes them. It would take a file name in square brackets
// for a list; a name that begins with its folder is only a name.
std::vector<std::string> argumentsFromLast(int argc, char** argv) {
  std::vector<std::string> arguments;
  for (int i = argc - 1; i > 0; --i) {
    const std::string_view argument = argv[i];
    const bool isBracketed = argument.starts_with('[') && argument.ends_with(']');
    arguments.push_back((isBracketed ? "./" : "") + std::string(argument));
  }
  return arguments;
}

// Runs the one command that the arguments chose.
template <typename... Command>
int runChosen(const Command&... commands) {
  int code = tool::exitUsage;
  ((commands.isChosen() ? void(code = commands.run()) : void()), ...);
  return code;
}

int runProgram(int argc, char** argv) {
  CLI::App program(help, "dipole");
  program.set_version_flag("--version", "dipole " DIPOLE_VERSION);
  program.footer(moreHelp);
  program.require_subcommand(1);
  tool::InfoCommand info(program);
  tool::ListCommand list(program);
  tool::DrawCommand draw(program);
  tool::ConvertCommand convert(program);
  tool::SortCommand sort(program);
  tool::RegisterCommand registration(program);
  try {
    program.parse(argumentsFromLast(argc, argv));
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? tool::exitDone : tool::exitUsage;
  }
  return runChosen(info, list, draw, convert, sort, registration);
}

}  // namespace

int main(int argc, char** argv) {
  (void)std::setlocale(LC_ALL, "");
  (void)std::signal(SIGXFSZ, SIG_IGN);  // a file that grows too large is an error like a full disk
  try {
    return runProgram(argc, argv);
  } catch (const std::bad_alloc&) {
    tool::tell("not enough memory");
  } catch (const std::exception& error) {
    tool::tell(error.what());
  }
  return tool::exitFailure;
}
