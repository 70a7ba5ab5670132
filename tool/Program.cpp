#include "tool/Program.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <new>
#include <numeric>
#include <sstream>
#include <string_view>
#include <utility>

#include "tool/HelpText.h"
#include "tool/Output.h"
#include "tool/TerminalOperator.h"
#include "tool/UsageError.h"

namespace tool {
namespace {

constexpr const char* help =
    "Read the results of dipole fits (CTF .dip files, 4D/MSI tables, dipole sets), list them, draw them on "
    "an "
    "MRI, and write them in other formats";
constexpr const char* moreHelp = R"("dipole help COMMAND" tells more about a command.

The result goes to standard output or the named file, everything else to standard error. Each file is
checked for what arrives otherwise than it says. Exit status: 0 when nothing is wrong, 1 when something
wrong is neither repaired (--repair, --unit) nor accepted (--accept), a file brought no dipole or something
failed, 2 for wrong arguments.

The examples of the commands run in a folder that holds those of the package and, for an MRI, ch2.nii.gz of
the package mricron-data.)";

// As the parser takes them, the last one first. It would take a file name in square brackets for a list; a
// name that begins with its folder is only a name.
void turnForParser(std::vector<std::string>& arguments) {
  for (std::string& argument : arguments) {
    if (argument.starts_with('[') && argument.ends_with(']')) {
      argument.insert(0, "./");
    }
  }
  std::reverse(arguments.begin(), arguments.end());
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

// What the parser says of wrong arguments: its first line; more is "Run with --help".
std::string withoutAdvice(const std::string& refusal) {
  return refusal.substr(0, refusal.find('\n')) + " (--help tells more)";
}

}  // namespace

Program::Program() : m_app(help, "dipole") {
  m_app.formatter_fn(
      [](const CLI::App* app, const std::string&, CLI::AppFormatMode) { return helpOf(*app); });
  m_app.allow_windows_style_options(false);  // a name that begins with a slash is a name
  m_app.set_help_flag("-h,--help", "Print this help and end");
  m_app.set_version_flag("--version", "dipole " DIPOLE_VERSION, "Print the version and end");
  m_app.footer(moreHelp);
  m_app.require_subcommand(1);
  for (const auto make :
       {makeInfoCommand, makeListCommand, makeClustersCommand, makeCheckCommand, makeDrawCommand,
        makePageCommand, makeConvertCommand, makeSortCommand, makeRegisterCommand, makeHeadCommand}) {
    m_commands.push_back(make(m_app));
  }
}

int Program::run(std::vector<std::string> arguments) {
  if (!arguments.empty() && arguments.front() == "help") {  // "help COMMAND" is "COMMAND --help"
    arguments.erase(arguments.begin());
    arguments.emplace_back("--help");
  }
  const std::string problem = arguments.empty() ? "" : whyNoCommand(m_app, arguments.front());
  if (!problem.empty()) {
    tell(problem);
    return exitUsage;
  }
  turnForParser(arguments);
  try {
    m_app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    std::ostringstream result;
    std::ostringstream refusal;
    if (m_app.exit(error, result, refusal) == 0) {
      writeResult(result.str());
      return exitDone;
    }
    tell(withoutAdvice(refusal.str()));
    return exitUsage;
  }
  const auto isChosen = [](const std::unique_ptr<Command>& command) { return command->isChosen(); };
  return (*std::find_if(m_commands.begin(), m_commands.end(), isChosen))->run();  // the parser requires one
}

int runProgram(std::vector<std::string> arguments) {
  try {
    return Program().run(std::move(arguments));
  } catch (const UsageError& error) {
    tell(error.what());
    return exitUsage;
  } catch (const std::bad_alloc&) {
    tell("not enough memory");
  } catch (const std::exception& error) {
    tell(error.what());
  }
  return exitFailure;
}

}  // namespace tool
