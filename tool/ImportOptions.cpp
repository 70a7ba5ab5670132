#include "tool/ImportOptions.h"

#include <map>
#include <stdexcept>

namespace tool {

namespace {

const std::map<std::string, InputFormat>& formats() {
  static const std::map<std::string, InputFormat> all = {
      {"ctf", InputFormat::ctf}, {"4d", InputFormat::msi},  {"dipset", InputFormat::dipset},
      {"csv", InputFormat::csv}, {"tsv", InputFormat::tsv}, {"json", InputFormat::json}};
  return all;
}

}  // namespace

void ImportOptions::addTo(CLI::App& command, const std::string& argument) {
  command
      .add_option(argument, m_names,
                  "CTF dipole files (.dip), 4D/MSI dipole tables (.txt), dipole sets (.dipset), tables that "
                  "this program wrote (.csv, .tsv, .json)")
      ->required()
      ->type_name("");
  command
      .add_option("--from", m_from,
                  "Format of the files, whatever their names: ctf, 4d, dipset, csv, tsv or json")
      ->type_name("FORMAT")
      ->transform(CLI::IsMember(&formats(), CLI::ignore_case).description(""));
  CLI::Option* yes = command.add_flag("--yes", m_yes, "Answer every question with yes");
  command.add_flag("--no", m_no, "Answer every question with no (the default without a terminal)")
      ->excludes(yes);
}

std::string ImportOptions::takeLastName() {
  if (m_names.size() < 2) {
    throw CLI::RequiredError("OUT");
  }
  std::string last = m_names.back();
  m_names.pop_back();
  return last;
}

Answers ImportOptions::answers() const {
  if (m_yes) {
    return Answers::yes;
  }
  return m_no ? Answers::no : Answers::ask;
}

std::vector<InputFile> ImportOptions::files() const {
  std::vector<InputFile> files;
  for (const std::string& name : m_names) {
    const InputFormat byEnding = inputFormatOf(name).value_or(InputFormat::ctf);
    files.push_back({name, m_from.empty() ? byEnding : formats().at(m_from)});
  }
  return files;
}

std::vector<InputFile> ImportOptions::knownFiles() const {
  for (const std::string& name : m_names) {
    if (m_from.empty() && !inputFormatOf(name)) {
      throw std::runtime_error(name + ": the name tells no format; it ends in .dip (CTF), .txt (4D/MSI), " +
                               ".dipset, .csv, .tsv or .json, or --from says what it is");
    }
  }
  return files();
}

}  // namespace tool
