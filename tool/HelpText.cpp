#include "tool/HelpText.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <utility>

#include "host/audit/FileAudit.h"

namespace tool {
namespace {

constexpr std::size_t width = 79;
constexpr std::size_t column = 24;  // where the texts of options begin

std::string nameOf(const CLI::App& command) {
  const CLI::App* const program = command.get_parent();
  return (program == nullptr ? "" : program->get_name() + " ") + command.get_name();
}

OptionText textOf(const CLI::Option& option) {
  OptionText text;
  for (const std::string& name : option.get_snames()) {
    text.names.push_back("-" + name);
  }
  for (const std::string& name : option.get_lnames()) {
    text.names.push_back("--" + name);
  }
  const bool isFile = text.names.empty();
  text.argument = isFile ? option.get_name(true) + "..." : option.get_type_name();
  text.text = option.get_description();
  if (!option.get_default_str().empty()) {
    text.text += "; " + option.get_default_str() + " unless given";
  }
  text.isRequired = option.get_required() || option.get_group() == neededGroup;
  return text;
}

// Words in lines of the width; all lines but the first are indented.
std::string filled(const std::string& text, std::size_t indent) {
  std::string result;
  std::size_t used = indent;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (!result.empty() && used + 1 + word.size() > width) {
      result += "\n" + std::string(indent, ' ');
      used = indent;
    } else if (!result.empty()) {
      result += ' ';
      ++used;
    }
    result += word;
    used += word.size();
  }
  return result;
}

// A line of a table, "  word  text": what is too wide goes on below the text.
std::string fitted(const std::string& line) {
  const std::size_t word = line.find_first_not_of(' ');
  const std::size_t gap = line.find("  ", word);
  const std::size_t text = line.find_first_not_of(' ', gap);
  if (line.size() <= width || text == std::string::npos) {
    return line;
  }
  return line.substr(0, text) + filled(line.substr(text), text);
}

// Lines that begin with a blank stay lines, others are parts of a paragraph. An empty line ends both.
std::vector<Paragraph> paragraphsOf(const std::string& text) {
  std::vector<Paragraph> paragraphs;
  std::istringstream lines(text);
  bool isNew = true;
  for (std::string line; std::getline(lines, line);) {
    const bool isVerbatim = line.starts_with(' ');
    if (line.empty()) {
      isNew = true;
    } else if (isNew || paragraphs.back().isVerbatim != isVerbatim) {
      paragraphs.push_back({isVerbatim ? fitted(line) : line, isVerbatim});
      isNew = false;
    } else {
      paragraphs.back().text += isVerbatim ? "\n" + fitted(line) : " " + line;
    }
  }
  return paragraphs;
}

std::string inColumns(const std::string& heading, const std::string& text) {
  const std::string start = "  " + heading;
  const bool isShort = start.size() + 2 <= column;
  return start + (isShort ? std::string(column - start.size(), ' ') : "\n" + std::string(column, ' ')) +
         filled(text, column) + "\n";
}

bool isWord(const std::string& part) {
  return !part.empty() && std::all_of(part.begin(), part.end(), [](unsigned char c) {
    return std::islower(c) != 0 || std::isdigit(c) != 0;
  });
}

std::vector<std::string> partsOf(const std::string& argument) {
  std::vector<std::string> parts;
  std::istringstream stream(argument);
  for (std::string part; std::getline(stream, part, '|');) {
    parts.push_back(part);
  }
  return parts;
}

std::string optionsText(const CommandText& command) {
  std::string files;
  std::string options;
  for (const OptionText& option : command.options) {
    (option.names.empty() ? files : options) += inColumns(
        option.heading(), option.text + (option.names.empty() || !option.isRequired ? "" : " (needed)"));
  }
  return (files.empty() ? "" : "\n" + files) + "\nOptions:\n" + options;
}

}  // namespace

std::string OptionText::heading() const {
  std::string heading;
  for (const std::string& name : names) {
    heading += (heading.empty() ? "" : ", ") + name;
  }
  return heading + (heading.empty() || argument.empty() ? "" : " ") + argument;
}

std::vector<std::string> OptionText::words() const {
  std::vector<std::string> words = partsOf(argument);
  const bool isCode = std::find(words.begin(), words.end(), "CODE,...") != words.end();
  std::erase_if(words, [](const std::string& part) { return !isWord(part); });
  if (isCode) {
    for (const host::FindingCode code : host::allFindingCodes()) {
      words.emplace_back(host::nameOf(code));
    }
  }
  return words;
}

bool OptionText::takesFile() const {
  const std::vector<std::string> parts = partsOf(argument);
  return std::any_of(parts.begin(), parts.end(), [](const std::string& part) {
    return part.starts_with("FILE") || part == "OUT" || part == "HEAD";
  });
}

std::string CommandText::usage() const {
  std::string usage = name + " [OPTIONS]";
  for (const OptionText& option : options) {
    if (option.names.empty()) {
      usage += " " + option.argument;
    } else if (option.isRequired) {
      usage += " " + option.names.front() + " " + (option.words().empty() ? option.argument : "VALUE");
    }
  }
  return usage;
}

CommandText textOf(const CLI::App& command) {
  CommandText text{nameOf(command), command.get_description(), {}, paragraphsOf(command.get_footer())};
  for (const CLI::Option* const option : command.get_options()) {
    text.options.push_back(textOf(*option));
  }
  return text;
}

std::vector<const CLI::App*> commandsOf(const CLI::App& program) {
  return program.get_subcommands([](const CLI::App*) { return true; });
}

std::string helpOf(const CLI::App& command) {
  const CommandText text = textOf(command);
  const std::vector<const CLI::App*> commands = commandsOf(command);
  const std::string usage = commands.empty() ? text.usage() : text.name + " COMMAND [OPTIONS] FILE...";
  std::string help = filled(text.text + ".", 0) + "\n\nUsage: " + usage + "\n";
  if (!commands.empty()) {
    help += "\nCommands:\n";
    for (const CLI::App* const one : commands) {
      help += inColumns(one->get_name(), one->get_description());
    }
  }
  help += optionsText(text);
  bool isAfterText = false;
  for (const Paragraph& paragraph : text.notes) {
    help += paragraph.isVerbatim && isAfterText
                ? paragraph.text + "\n"
                : "\n" + (paragraph.isVerbatim ? paragraph.text : filled(paragraph.text, 0)) + "\n";
    isAfterText = !paragraph.isVerbatim;
  }
  return help;
}

}  // namespace tool
