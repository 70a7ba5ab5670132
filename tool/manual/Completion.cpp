#include "tool/manual/Completion.h"

#include <vector>

#include "tool/HelpText.h"

namespace tool {
namespace {

std::string joined(const std::vector<std::string>& words, const std::string& between) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : between) + word;
  }
  return text;
}

std::vector<std::string> namesOf(const CLI::App& program) {
  std::vector<std::string> names;
  for (const CLI::App* const command : commandsOf(program)) {
    names.push_back(command->get_name());
  }
  names.emplace_back("help");
  return names;
}

// What bash is told to offer behind an option.
std::string bashWords(const OptionText& option) {
  const std::vector<std::string> words = option.words();
  return (option.takesFile() ? "files " : "") + (words.empty() ? "" : "words " + joined(words, " "));
}

// One command: its options, and what follows each.
std::string bashCase(const CLI::App& command) {
  std::vector<std::string> names;
  std::string cases;
  for (const OptionText& option : textOf(command).options) {
    names.insert(names.end(), option.names.begin(), option.names.end());
    if (!option.names.empty() && !option.argument.empty()) {
      const std::string words = bashWords(option);
      cases += "        " + joined(option.names, "|") + ") " +
               (words.empty() ? "return" : "_dipole_" + words) + "; return ;;\n";
    }
  }
  return "    " + command.get_name() + ")\n      case $before in\n" + cases + "      esac\n      options=\"" +
         joined(names, " ") + "\" ;;\n";
}

// In single quotes, within which only one of them means anything, and in brackets.
std::string zshText(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '\'') {
      result += "'\\''";
    } else if (c == '[' || c == ']' || c == ':') {
      result += std::string("\\") + c;
    } else {
      result += c;
    }
  }
  return result;
}

std::string zshArgument(const OptionText& option) {
  const std::string words = joined(option.words(), " ");
  const std::string what = ":" + zshText(option.argument) + ":";
  if (option.takesFile()) {
    return what + "_files";
  }
  return what + (words.empty() ? " " : "(" + words + ")");
}

std::string zshOption(const OptionText& option) {
  if (option.names.empty()) {
    return "        '*" + zshArgument(option) + "'";
  }
  const std::string names =
      option.names.size() == 1 ? "'" + option.names.front() : "{" + joined(option.names, ",") + "}'";
  const std::string others = option.names.size() == 1 ? "" : "'(" + joined(option.names, " ") + ")'";
  return "        " + others + names + "[" + zshText(option.text) + "]" +
         (option.argument.empty() ? "" : zshArgument(option)) + "'";
}

std::string zshCase(const CLI::App& command) {
  std::string text = "    " + command.get_name() + ")\n      _arguments";
  for (const OptionText& option : textOf(command).options) {
    text += " \\\n" + zshOption(option);
  }
  return text + " ;;\n";
}

}  // namespace

std::string bashCompletion(const CLI::App& program) {
  std::string cases;
  for (const CLI::App* const command : commandsOf(program)) {
    cases += bashCase(*command);
  }
  const std::string names = joined(namesOf(program), " ");
  return R"(# bash completion for dipole, made of its help texts

_dipole_words() {
  mapfile -t COMPREPLY < <(compgen -W "$*" -- "$word")
}

# Also the words that may stand in the place of a file.
_dipole_files() {
  mapfile -t COMPREPLY < <(compgen -f -- "$word"; [ $# = 0 ] || compgen -W "${*:2}" -- "$word")
  compopt -o filenames 2>/dev/null
}

_dipole() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]} options
  COMPREPLY=()
  # --option=value comes as three words.
  if [ "$word" = "=" ]; then
    word=
  elif [ "$before" = "=" ]; then
    before=${COMP_WORDS[COMP_CWORD-2]}
  fi
  if [ "$COMP_CWORD" = 1 ] || { [ "$COMP_CWORD" = 2 ] && [ "$command" = help ]; }; then
    _dipole_words )" +
         names + R"( --help --version
    return
  fi
  case $command in
)" + cases +
         R"(    *) return ;;
  esac
  if [[ $word == -* ]]; then
    _dipole_words "$options"
  else
    _dipole_files
  fi
}

complete -F _dipole dipole
)";
}

std::string zshCompletion(const CLI::App& program) {
  std::string commands;
  std::string cases;
  for (const CLI::App* const command : commandsOf(program)) {
    commands += "    '" + command->get_name() + ":" + zshText(command->get_description()) + "'\n";
    cases += zshCase(*command);
  }
  return R"(#compdef dipole
# zsh completion for dipole, made of its help texts

_dipole() {
  local -a known
  known=(
)" + commands +
         R"(    'help:Tell more about a command'
  )
  if (( CURRENT == 2 )) || { (( CURRENT == 3 )) && [[ $words[2] == help ]] }; then
    _describe -t commands command known
    return
  fi
  local command=$words[2]
  shift words
  (( CURRENT-- ))
  case $command in
)" + cases +
         R"(  esac
}

_dipole "$@"
)";
}

}  // namespace tool
