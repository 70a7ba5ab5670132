#include "tool/OutputOptions.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <system_error>

#include "host/text/PathText.h"
#include "tool/UsageError.h"

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

void OutputOptions::addTo(CLI::App& command, ImportOptions& input) {
  input.addTo(command);
  m_command = command.get_name();
  command.add_option("-o,--output", m_target, "The file to write; - is standard output")->type_name("OUT");
  command.add_flag("--force", m_force, "Replace OUT when it is there already");
  command.add_option("--to", m_to, "Format of OUT, whatever its name: dipset, txt, csv, tsv or json")
      ->type_name("FORMAT")
      ->transform(CLI::IsMember(&formats(), CLI::ignore_case).description(""));
}

void OutputOptions::check() const {
  if (m_target.empty()) {
    throw UsageError(m_command + " needs -o OUT, the file to write");
  }
  if (isStandardOutput() && m_to.empty()) {
    throw UsageError("-o - needs --to: standard output has no name that tells a format");
  }
  (void)format();
  std::error_code error;
  if (!m_force && !isStandardOutput() && std::filesystem::is_regular_file(m_target, error)) {
    throw std::runtime_error("cannot write " + m_target + ": it is there already; --force replaces it");
  }
}

OutputFormat OutputOptions::format() const {
  const CString target = host::textOf(m_target);
  const auto found = std::find_if(formats().begin(), formats().end(), [&](const auto& format) {
    return m_to.empty() ? host::hasEnding(target, "." + format.first) : m_to == format.first;
  });
  if (found == formats().end()) {
    throw std::runtime_error(m_target +
                             ": the name tells no format; it ends in .dipset, .txt, .csv, .tsv or " +
                             ".json, or --to says what to write");
  }
  return found->second;
}

}  // namespace tool
