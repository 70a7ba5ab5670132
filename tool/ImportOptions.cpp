#include "tool/ImportOptions.h"

#include <map>
#include <stdexcept>

namespace tool {

void ImportOptions::addTo(CLI::App& command, const std::string& argument) {
  const std::map<std::string, InputFormat> formats = {
      {"ctf", InputFormat::ctf}, {"4d", InputFormat::msi}, {"dipset", InputFormat::dipset}};
  command
      .add_option(argument, m_names,
                  "CTF dipole files (.dip), 4D/MSI dipole tables (.txt), dipole sets (.dipset)")
      ->required()
      ->type_name("");
  command.add_option("--from", m_from, "Format of the files, whatever their names: ctf, 4d or dipset")
      ->type_name("FORMAT")
      ->transform(CLI::CheckedTransformer(formats, CLI::ignore_case).description(""));
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
  std::vector<InputFile> files;
  for (const std::string& name : m_names) {
    files.push_back({name, m_from.value_or(inputFormatOf(name).value_or(InputFormat::ctf))});
  }
  return files;
}

std::vector<InputFile> ImportOptions::knownFiles() const {
  for (const std::string& name : m_names) {
    if (!m_from && !inputFormatOf(name)) {
      throw std::runtime_error(name + ": the name tells no format; it ends in .dip (CTF), .txt (4D/MSI) or " +
                               ".dipset, or --from ctf, 4d or dipset says what it is");
    }
  }
  return files();
}

}  // namespace tool
