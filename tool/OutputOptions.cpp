#include "tool/OutputOptions.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <system_error>

#include "host/text/PathText.h"
#include "tool/Choice.h"
#include "tool/FileNames.h"
#include "tool/HelpText.h"
#include "tool/UsageError.h"

namespace tool {
namespace {

const std::map<std::string, OutputFormat>& formats() {
  static const std::map<std::string, OutputFormat> all = {
      {"dipset", OutputFormat::dipset}, {"txt", OutputFormat::text},
      {"csv", OutputFormat::csv},       {"tsv", OutputFormat::tsv},
      {"json", OutputFormat::json},     {"neuromag", OutputFormat::neuromag},
      {"bdip", OutputFormat::bdip},     {"ctf", OutputFormat::ctf},
      {"slicer", OutputFormat::slicer}, {"arrows", OutputFormat::slicerArrows},
      {"vtp", OutputFormat::vtp}};
  return all;
}

}  // namespace

void refuseToReplace(const std::string& target, bool isForced) {
  std::error_code error;
  if (!isForced && std::filesystem::is_regular_file(pathOf(target), error)) {
    throw std::runtime_error("cannot write " + target + ": it is there already; --force replaces it");
  }
}

void OutputOptions::addTo(CLI::App& command, ImportOptions& input) {
  input.addTo(command);
  m_command = command.get_name();
  command.add_option("-o,--output", m_target, "The file to write; - is standard output")
      ->type_name("OUT")
      ->group(neededGroup);
  command.add_flag("--force", m_force, "Replace OUT when it is there already");
  addChoice(command, "--to", m_to, "Format of OUT, whatever its name", formats());
}

void OutputOptions::check() const {
  if (m_target.empty()) {
    throw UsageError(m_command + " needs -o OUT, the file to write");
  }
  if (isStandardOutput() && m_to.empty()) {
    throw UsageError("-o - needs --to: standard output has no name that tells a format");
  }
  (void)format();
  if (!isStandardOutput()) {
    refuseToReplace(m_target, m_force);
  }
}

OutputFormat OutputOptions::format() const {
  const CString target = pathTextOf(m_target);
  if (m_to.empty() && host::hasEnding(target, ".dip")) {
    throw UsageError(m_target + ": a .dip is of Neuromag or of CTF; --to says which");
  }
  if (m_to.empty() && host::hasEnding(target, ".mrk.json")) {
    return OutputFormat::slicer;
  }
  const auto found = std::find_if(formats().begin(), formats().end(), [&](const auto& format) {
    return m_to.empty() ? host::hasEnding(target, "." + format.first) : m_to == format.first;
  });
  if (found == formats().end()) {
    throw UsageError(m_target + ": the name tells no format; it ends in .dipset, .txt, .csv, .tsv, " +
                     ".json, .bdip, .mrk.json or .vtp, or --to says what to write");
  }
  return found->second;
}

}  // namespace tool
