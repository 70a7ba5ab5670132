#include "tool/ImportOptions.h"

namespace tool {

void ImportOptions::addTo(CLI::App& command) {
  command.add_option("FILE", m_files, "CTF dipole files (.dip)")->required()->type_name("");
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

}  // namespace tool
