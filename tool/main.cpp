// The command line program: reads dipole files and shows what they hold, without windows.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <clocale>
#include <csignal>
#include <exception>
#include <new>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tool/CheckCommand.h"
#include "tool/ConvertCommand.h"
#include "tool/DrawCommand.h"
#include "tool/InfoCommand.h"
#include "tool/ListCommand.h"
#include "tool/Output.h"
#include "tool/RegisterCommand.h"
#include "tool/SortCommand.h"
#include "tool/TerminalOperator.h"
#include "tool/UsageError.h"

namespace {

constexpr const char* help =
    "Read the results of dipole fits (CTF .dip files, 4D/MSI tables, dipole sets), list them, draw them on "
    "an\n"
    "MRI, and write them in other formats.";
constexpr const char* moreHelp = R"("dipole help COMMAND" tells more about a command.

The result goes to standard output or the named file, everything else to standard error. Each file is
checked for what arrives otherwise than it says. Exit status: 0 when nothing is wrong, 1 when something
wrong is neither repaired (--repair, --unit) nor accepted (--accept), a file brought no dipole or something
failed, 2 for wrong arguments.)";

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

// How many letters have to be put in, left out or changed to make one word of the other.
std::size_t distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> costs(other.size() + 1);
  std::iota(costs.begin(), costs.end(), std::size_t{0});
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t corner = std::exchange(costs[0], i + 1);
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t changed = corner + (one[i] == other[j] ? 0 : 1);
      corner = costs[j + 1];
      costs[j + 1] = (std::min)({changed, costs[j] + 1, corner + 1});
    }
  }
  return costs.back();
}

// What to say of a first argument that is neither an option nor a command; empty when it is one of them.
std::string whyNoCommand(const CLI::App& program, const std::string& word) {
  std::string nearest;
  std::size_t least = 3;  // more is another word
  for (const CLI::App* command : program.get_subcommands(nullptr)) {
    const std::size_t away = distance(word, command->get_name());
    if (away == 0 || word.starts_with('-')) {
      return {};
    }
    if (away < least) {
      least = away;
      nearest = command->get_name();
    }
  }
  const std::string advice =
      nearest.empty() ? "\"dipole help\" lists all" : "did you mean \"" + nearest + "\"?";
  return "there is no command \"" + word + "\"; " + advice;
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
  tool::CheckCommand check(program);
  tool::DrawCommand draw(program);
  tool::ConvertCommand convert(program);
  tool::SortCommand sort(program);
  tool::RegisterCommand registration(program);
  std::vector<std::string> arguments = argumentsFromLast(argc, argv);
  if (!arguments.empty() && arguments.back() == "help") {  // "help COMMAND" is "COMMAND --help"
    arguments.pop_back();
    arguments.insert(arguments.begin(), "--help");
  }
  const std::string problem = arguments.empty() ? "" : whyNoCommand(program, arguments.back());
  if (!problem.empty()) {
    tool::tell(problem);
    return tool::exitUsage;
  }
  try {
    program.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? tool::exitDone : tool::exitUsage;
  }
  return runChosen(info, list, check, draw, convert, sort, registration);
}

}  // namespace

int main(int argc, char** argv) {
  (void)std::setlocale(LC_ALL, "");
  (void)std::signal(SIGXFSZ, SIG_IGN);  // a file that grows too large is an error like a full disk
  try {
    return runProgram(argc, argv);
  } catch (const tool::UsageError& error) {
    tool::tell(error.what());
    return tool::exitUsage;
  } catch (const std::bad_alloc&) {
    tool::tell("not enough memory");
  } catch (const std::exception& error) {
    tool::tell(error.what());
  }
  return tool::exitFailure;
}
