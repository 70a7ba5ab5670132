#include "tool/manual/ManPage.h"

#include <cctype>
#include <string_view>

#include "tool/HelpText.h"

namespace tool {
namespace {

// Text that the formatter takes for nothing but text.
std::string plain(std::string_view text) {
  std::string result;
  bool isLineStart = true;
  for (const char c : text) {
    if (isLineStart && (c == '.' || c == '\'')) {
      result += "\\&";
    }
    if (c == '\\') {
      result += "\\e";
    } else if (c == '-') {
      result += "\\-";
    } else if (c == '\'') {
      result += "\\(aq";
    } else {
      result += c;
    }
    isLineStart = c == '\n';
  }
  return result;
}

std::string heading(std::string_view name) {
  return ".SH " + std::string(name) + "\n";
}

std::string line(std::string_view text) {
  return plain(text) + "\n";
}

std::string paragraphs(const CommandText& command) {
  std::string page;
  for (const Paragraph& paragraph : command.notes) {
    page +=
        paragraph.isVerbatim ? ".PP\n.nf\n" + line(paragraph.text) + ".fi\n" : ".PP\n" + line(paragraph.text);
  }
  return page;
}

std::string options(const CommandText& command) {
  std::string page;
  for (const OptionText& option : command.options) {
    page += ".TP\n\\fB" + plain(option.heading()) + "\\fR\n" + line(option.text + ".");
  }
  return page;
}

std::string capitals(std::string text) {
  for (char& c : text) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return text;
}

}  // namespace

std::string manPage(const CLI::App& program) {
  const CommandText self = textOf(program);
  std::string page =
      ".TH " + capitals(self.name) + " 1 \"\" \"" + program.version() + "\" \"User Commands\"\n";
  page += heading("NAME") + self.name + " \\- keep, list, convert and draw equivalent current dipoles\n";
  page += heading("SYNOPSIS");
  for (const CLI::App* const command : commandsOf(program)) {
    page += line(textOf(*command).usage()) + ".br\n";
  }
  page += line(self.name + " help [COMMAND]");
  page += heading("DESCRIPTION") + line(self.text + ".") + paragraphs(self);
  page += heading("OPTIONS") + options(self);
  page += heading("COMMANDS");
  for (const CLI::App* const command : commandsOf(program)) {
    const CommandText text = textOf(*command);
    page += ".SS " + plain(text.usage()) + "\n" + line(text.text + ".") + options(text) + paragraphs(text);
  }
  return page;
}

}  // namespace tool
