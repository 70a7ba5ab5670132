// What the program says of itself: read once out of its commands, and shown as help, as a manual page, and to
// shells that complete arguments.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// The group of options that a command asks for itself when they are not given.
inline constexpr const char* neededGroup = "Needed";

struct OptionText {
  std::vector<std::string> names;  // "-o", "--output"; none for what has no name, such as the files to read
  std::string argument;            // "FILE", "MM|all", "csv|tsv"; empty for a switch
  std::string text;                // with what holds when it is not given
  bool isRequired = false;

  // "-o, --output OUT"
  std::string heading() const;
  // The words that may stand for the argument: small letters are words, large ones a place for something.
  std::vector<std::string> words() const;
  // Whether a file may stand for the argument.
  bool takesFile() const;
};

// A piece of a text: to be filled into lines, or lines to be left as they are.
struct Paragraph {
  std::string text;
  bool isVerbatim = false;
};

struct CommandText {
  std::string name;  // "dipole sort"; "dipole" for the program itself
  std::string text;
  std::vector<OptionText> options;
  std::vector<Paragraph> notes;

  // "dipole sort [OPTIONS] FILE..."
  std::string usage() const;
};

CommandText textOf(const CLI::App& command);

// The commands of a program, in order.
std::vector<const CLI::App*> commandsOf(const CLI::App& program);

// For terminals of 80 columns.
std::string helpOf(const CLI::App& command);

}  // namespace tool
