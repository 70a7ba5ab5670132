#include "tool/ImportOptions.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "host/text/PathText.h"
#include "tool/UsageError.h"

namespace tool {

namespace {

const std::map<std::string, host::DipoleFormat>& formats() {
  static const std::map<std::string, host::DipoleFormat> all = {
      {"csv", host::DipoleFormat::csv},   {"tsv", host::DipoleFormat::tsv},
      {"json", host::DipoleFormat::json}, {"ctf", host::DipoleFormat::ctf},
      {"4d", host::DipoleFormat::msi},    {"dipset", host::DipoleFormat::set}};
  return all;
}

}  // namespace

void ImportOptions::addTo(CLI::App& command) {
  command
      .add_option(
          "FILE", m_names,
          "CTF dipole files (.dip), 4D/MSI dipole tables (.txt), dipole sets (.dipset), tables that this "
          "program wrote (.csv, .tsv, .json); - is standard input")
      ->required()
      ->type_name("");
  command
      .add_option("--from", m_from,
                  "Format of the files, whatever their names: ctf, 4d, dipset, csv, tsv or json")
      ->type_name("FORMAT")
      ->transform(CLI::IsMember(&formats(), CLI::ignore_case).description(""));
  command.add_flag_callback(
      "-q,--quiet", [] { setQuiet(true); }, "Tell warnings and failures only");
  CLI::Option* yes = command.add_flag("--yes", m_yes, "Answer every question with yes");
  command.add_flag("--no", m_no, "Answer every question with no (the default without a terminal)")
      ->excludes(yes);
}

Answers ImportOptions::answers() const {
  if (m_yes) {
    return Answers::yes;
  }
  return m_no ? Answers::no : Answers::ask;
}

std::vector<InputFile> ImportOptions::files() const {
  const auto streams = std::count(m_names.begin(), m_names.end(), "-");
  if (streams > 0 && m_from.empty()) {
    throw UsageError("standard input (-) has no name that tells its format: --from does");
  }
  if (streams > 1) {
    throw UsageError("standard input (-) can be read only once");
  }
  std::vector<InputFile> files;
  for (const std::string& name : m_names) {
    const auto byEnding = host::dipoleFormatOf(host::textOf(name)).value_or(host::DipoleFormat::ctf);
    files.push_back({name, m_from.empty() ? byEnding : formats().at(m_from), nullptr});
    copyStream(files.back());
  }
  return files;
}

std::vector<InputFile> ImportOptions::knownFiles() const {
  for (const std::string& name : m_names) {
    if (m_from.empty() && !host::dipoleFormatOf(host::textOf(name))) {
      throw std::runtime_error(name + ": the name tells no format; it ends in .dip (CTF), .txt (4D/MSI), " +
                               ".dipset, .csv, .tsv or .json, or --from says what it is");
    }
  }
  return files();
}

}  // namespace tool
