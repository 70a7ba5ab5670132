#include "tool/OutputOptions.h"

#include <map>
#include <stdexcept>

#include "tool/InputFile.h"

namespace tool {
namespace {

const std::map<std::string, OutputFormat>& formats() {
  static const std::map<std::string, OutputFormat> all = {{"dipset", OutputFormat::dipset},
                                                          {"txt", OutputFormat::text},
                                                          {"csv", OutputFormat::csv},
                                                          {"tsv", OutputFormat::tsv},
                                                          {"json", OutputFormat::json}};
  return all;
}

}  // namespace

// The parser would give a list of names every last one; so OUT is taken from it afterwards, and the help is
// told.
void OutputOptions::addTo(CLI::App& command, ImportOptions& input) {
  input.addTo(command, "IN");
  command.callback([this, &input] { m_target = input.takeLastName(); });
  command.formatter_fn([](const CLI::App* app, const std::string& name, CLI::AppFormatMode mode) {
    std::string text = CLI::Formatter().make_help(app, name, mode);
    const std::string names = " IN...\n";
    const std::size_t usage = text.find(names);
    return usage == std::string::npos ? text : text.replace(usage, names.size(), " IN... OUT\n");
  });
  command.add_option("--to", m_to, "Format of OUT, whatever its name: dipset, txt, csv, tsv or json")
      ->type_name("FORMAT")
      ->transform(CLI::IsMember(&formats(), CLI::ignore_case).description(""));
}

OutputFormat OutputOptions::format() const {
  const std::string ending = endingOf(m_target);
  const auto found = formats().find(!m_to.empty() || ending.empty() ? m_to : ending.substr(1));
  if (found == formats().end()) {
    throw std::runtime_error(m_target +
                             ": the name tells no format; it ends in .dipset, .txt, .csv, .tsv or " +
                             ".json, or --to says what to write");
  }
  return found->second;
}

}  // namespace tool
